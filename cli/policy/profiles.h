#pragma once

#include "phone/supervisor/phone_directory.h"

#include <map>
#include <nlohmann/json.hpp>
#include <string>

/// Sets of policies under names, in a file of the phone's folder. Who changes them holds a PolicySession.

namespace cli {

/// `problem`: why they can't be read, for people.
std::map<std::string, nlohmann::json> readProfiles(const phone::PhoneDirectory& directory, std::string& problem);

/// "" or what couldn't be done.
std::string writeProfiles(
    const phone::PhoneDirectory& directory, const std::map<std::string, nlohmann::json>& profiles);

/// Letters, digits, "-", "_" and ".", up to 64, and no "." or "-" in front.
bool isProfileName(const std::string& name);

} // namespace cli
