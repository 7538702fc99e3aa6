#pragma once

#include "cli/command/output.h"
#include "phone/supervisor/phone_directory.h"

#include <string>
#include <vector>

namespace cli {

/// Opens applications on one of the phone's roads and says what came of it. Done also when the launch was
/// refused: the refusal is the answer.
ExitStatus openByRoad(
    const phone::PhoneDirectory& directory, const std::string& road, const std::vector<std::string>& identifiers);

} // namespace cli
