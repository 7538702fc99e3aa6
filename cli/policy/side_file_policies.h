#pragma once

#include "cli/command/output.h"
#include "phone/supervisor/phone_directory.h"

#include <iosfwd>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

/// `appledger policy mute`, `unmute` and `brightness`: the two policies that have a file of their own.

namespace cli {

ExitStatus mutePolicy(const phone::PhoneDirectory& directory, const std::string& bundleIdentifier, bool muted);

/// `value`: a level, or "off" (or one below 0) to take it away.
ExitStatus brightnessPolicy(
    const phone::PhoneDirectory& directory, const std::string& bundleIdentifier, const std::string& value);

/// Why one of the two files of the open device can't be read; empty when both can.
std::optional<std::string> sideFileProblem();

/// What the two files of the open device say about the application, added to a report.
void describeSideFiles(const std::string& bundleIdentifier, std::ostream& text, nlohmann::json& object);

} // namespace cli
