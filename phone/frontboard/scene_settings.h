#pragma once

#include "platform/runtime/object.h"

/// What a scene is told about itself, as an object of the class FBSMutableSceneSettings.

namespace phone {

platform::id makeSceneSettings(bool foreground);
bool isForeground(const platform::id& settings);

} // namespace phone
