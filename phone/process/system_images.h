#pragma once

#include "platform/darwin/system.h"

namespace phone {

/// Declares the private frameworks and libraries that the phone has on that version, with the functions that
/// others look up in them.
void declareSystemImages(const platform::SystemVersion& version);

} // namespace phone
