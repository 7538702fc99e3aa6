#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace scenario {

/// Where an answer of the command, which ended with that status, doesn't keep to the table of docs/json.md; "" where it
/// does.
std::string problemOfAnswer(const nlohmann::json& answer, int status);

} // namespace scenario
