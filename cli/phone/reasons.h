#pragma once

#include "cli/command/transition_options.h"
#include "phone/supervisor/phone_directory.h"

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

/// Why the phone did what it did, by the code that decides, on the lists that the process which decided has read.
/// Each adds to a report "rule", the key that decided (null where none did), and "why", for people; where nothing was
/// refused, neither.

namespace cli {

/// Of a launch that didn't open what it was to open, or prompts, or was declined. `isOfSpotlight`: it was asked for
/// there.
void addLaunchReason(nlohmann::json& report, const phone::PhoneDirectory& directory,
    const std::vector<std::string>& applications, bool isOfSpotlight,
    const std::optional<std::string>& authenticated = std::nullopt);

/// Of a transition from one application to another.
void addRedirectReason(
    nlohmann::json& report, const phone::PhoneDirectory& directory, const nlohmann::json& transition);

/// Of a notification that was dropped, or arrived without its sound or its alert.
void addPushReason(nlohmann::json& report, const phone::PhoneDirectory& directory, const std::string& application,
    const std::string& roadMethod, bool hasSound);

/// Of purchases that were refused.
void addPurchaseReason(nlohmann::json& report, const phone::PhoneDirectory& directory,
    const std::vector<std::string>& applications, const std::string& roadMethod);

/// Of something about one application that a list of that key decides: whether it is on it.
bool isListed(const phone::PhoneDirectory& directory, std::string_view key, const std::string& application);
void addListReason(nlohmann::json& report, std::string_view key, const std::string& application);

/// "Why: …", with a space in front; "" where the report has no reason.
std::string whyText(const nlohmann::json& report);

} // namespace cli
