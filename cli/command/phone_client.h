#pragma once

#include "cli/command/output.h"
#include "phone/supervisor/phone_directory.h"

#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

/// The command's end of a running phone's bus.

namespace cli {

/// Connects to the phone's bus. False when the phone isn't up or can't be reached.
bool connectToPhone(const phone::PhoneDirectory& directory);

/// Why it couldn't, for people.
std::string whyNotConnected(const phone::PhoneDirectory& directory);

/// Asks a process of the phone, or its supervisor. The answer is an object with "ok"; where nobody answered
/// in time it says so in "error".
nlohmann::json askPhone(std::string_view peer, const nlohmann::json& request);

/// The same, connected first where it is needed.
nlohmann::json askPhone(const phone::PhoneDirectory& directory, std::string_view peer, const nlohmann::json& request);

/// Asks, and says what `describe` makes of the answer; refuses with the error where there is no good one.
ExitStatus tellAnswer(const phone::PhoneDirectory& directory, std::string_view peer, const nlohmann::json& request,
    const std::function<std::string(const nlohmann::json& answer)>& describe);

/// The same, with what this computer knows of it added to the answer first.
ExitStatus tellAnswer(const phone::PhoneDirectory& directory, std::string_view peer, const nlohmann::json& request,
    const std::function<void(nlohmann::json& answer)>& enrich,
    const std::function<std::string(const nlohmann::json& answer)>& describe);

/// The same of work that may take long: waited for as long as the peer shows that it is there, and on a terminal it is
/// said meanwhile what is being done ("Clearing") and for how long.
ExitStatus tellLongWork(const phone::PhoneDirectory& directory, std::string_view peer, const nlohmann::json& request,
    std::string_view what, const std::function<std::string(const nlohmann::json& answer)>& describe);

} // namespace cli
