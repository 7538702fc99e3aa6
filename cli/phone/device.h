#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace cli {

/// The device's state in one or two sentences.
std::string describeDevice(const nlohmann::json& device);

} // namespace cli
