#pragma once

#include "cli/command/output.h"
#include "cli/history/policy_session.h"
#include "core/list_change.h"
#include "phone/supervisor/phone_directory.h"

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

/// What the verbs of `appledger policy` share: they read and write the policies of a phone, running or not, as the
/// panel would: write, synchronize, then post the change notification; and each change is in the history.

namespace cli {

/// Opens the phone's directory as the device, for one who reads; what others have left to be finished is finished
/// first, where that can be. Empty, or what went wrong.
std::optional<std::string> openForReading(const phone::PhoneDirectory& directory);

/// What to say where a damaged file was set aside, with a space in front; "" where none was.
std::string describeSetAside(const std::string& setAside);

/// "The phone isn't up, so nobody was told.", or who was, with a space in front.
std::string describePosting(const CommitReport& report);

/// Whom a row of the domain or of the files belongs to in what is said: the key, or "mute" and "brightness".
std::string nameText(const ValueName& name);

/// Adds to an answer what came of a commit: "changed", "change" (its number in the history), "notifications", "posted",
/// and "setAside" and "left" where there is such.
void addCommit(nlohmann::json& object, const CommitReport& report);

/// One line for one item: "ALBlockedLaunchApps: com.example.notes is on it now".
std::string describeItem(const ItemChange& item);
nlohmann::json itemJson(const ItemChange& item);

using appledger::ListChange;

/// Changes whether a list holds these, or whether the flag of that key is set for them.
ExitStatus changePolicyList(const phone::PhoneDirectory& directory, ListChange change, const std::string& key,
    const std::vector<std::string>& identifiers);

/// Sets a key to a value given as text, or removes it.
ExitStatus setPolicy(const phone::PhoneDirectory& directory, const std::string& key, const std::string& value);
ExitStatus unsetPolicy(const phone::PhoneDirectory& directory, const std::string& key);

} // namespace cli
