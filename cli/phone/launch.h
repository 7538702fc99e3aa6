#pragma once

#include "cli/command/output.h"
#include "phone/supervisor/phone_directory.h"

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

namespace cli {

/// What became of an attempt to open something, in sentences.
std::string describeLaunch(const nlohmann::json& report, const std::string& wanted);

/// Opens applications on one of the phone's roads and says what came of it. Done also when the launch was
/// refused: the refusal is the answer.
ExitStatus openByRoad(
    const phone::PhoneDirectory& directory, const std::string& road, const std::vector<std::string>& identifiers);

} // namespace cli
