#pragma once

#include "platform/runtime/object.h"

namespace appledger {

/// The image in the colour of whoever shows it; as it is where the system has no such images. Nil for nil.
platform::id templateImage(const platform::id& image);

} // namespace appledger
