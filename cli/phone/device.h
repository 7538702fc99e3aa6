#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace cli {

/// The device's state in one or two sentences.
std::string describeDevice(const nlohmann::json& device);

/// What a report's journal tells of volume and brightness, with a space in front: what they are now, where they
/// changed;
/// "" where they didn't.
std::string describeDeviceChanges(const nlohmann::json& report);

} // namespace cli
