#pragma once

#include "cli/command/output.h"
#include "phone/supervisor/phone_directory.h"

#include <optional>
#include <string>

/// `appledger policy …`: reads and writes the preference domain of a phone, running or not, as the panel
/// would: write, synchronize, then post the change notification.

namespace cli {

/// Makes the phone's directory where it is missing, and opens it. Empty, or what went wrong.
std::optional<std::string> openForWriting(const phone::PhoneDirectory& directory);

/// Every key that has a value, and what it is.
ExitStatus listPolicies(const phone::PhoneDirectory& directory);

/// What the policies say about one application.
ExitStatus showPolicies(const phone::PhoneDirectory& directory, const std::string& bundleIdentifier);

enum class ListChange { Add, Remove, Toggle };

/// Changes whether a list holds the application.
ExitStatus changePolicyList(const phone::PhoneDirectory& directory, ListChange change, const std::string& key,
    const std::string& bundleIdentifier);

/// Sets a key to a value given as text, or removes it.
ExitStatus setPolicy(const phone::PhoneDirectory& directory, const std::string& key, const std::string& value);
ExitStatus unsetPolicy(const phone::PhoneDirectory& directory, const std::string& key);

} // namespace cli
