#pragma once

#include "scenario/command.h"

#include <string>

namespace scenario {

/// Brings the phone up so that its processes end, as with a dead battery, at a write of the file of the name `written`
/// when the file `moment` is there and says at which, counted from then: "before 2" or "after 2".
void startMortal(const Phone& phone, const std::string& moment, const std::string& written);

} // namespace scenario
