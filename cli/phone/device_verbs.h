#pragma once

#include "cli/command/output.h"
#include "phone/supervisor/phone_directory.h"

#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

namespace CLI {
class App;
}

/// `appledger phone launch`, `volume` and `brightness`: an application comes to the front, and what the device
/// is set to.

namespace cli {

struct DeviceOptions {
    std::string identifier;
    std::optional<double> level;
};

using DeviceAction = std::function<ExitStatus(const phone::PhoneDirectory& directory)>;

/// Adds the verbs; `chosen` gets what a command line asks for. `options` must outlive the command.
void addDeviceVerbs(CLI::App& phone, DeviceOptions& options, const std::function<void(DeviceAction)>& chosen);

/// The device's state in one or two sentences.
std::string describeDevice(const nlohmann::json& device);

} // namespace cli
