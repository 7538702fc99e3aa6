#pragma once

#include "platform/runtime/class_definition.h"

namespace phone {

/// An application's scene in a transition, with the actions that it brings or receives.
class SceneEntity : public platform::NSObject {
public:
    platform::id application;
    platform::id actions; ///< set, or nil
    platform::NSUInteger deactivationReasons = 0; ///< as the settings gave them that it was set up with
};

} // namespace phone
