#pragma once

#include "cli/command/output.h"
#include "core/list_change.h"
#include "phone/supervisor/phone_directory.h"

#include <optional>
#include <string>

/// `appledger policy …`: reads and writes the preference domain of a phone, running or not, as the panel
/// would: write, synchronize, then post the change notification.

namespace cli {

/// Opens the phone's directory, for writing made where it is missing. Empty, or what went wrong.
std::optional<std::string> openForReading(const phone::PhoneDirectory& directory);
std::optional<std::string> openForWriting(const phone::PhoneDirectory& directory);

/// What to say where a damaged file was set aside, with a space in front; "" where none was.
std::string describeSetAside(const std::string& setAside);

/// Every key that has a value, and what it is.
ExitStatus listPolicies(const phone::PhoneDirectory& directory);

/// Every key that there is: what it takes, its default, and whom a change of it is told.
ExitStatus listKeys(const phone::PhoneDirectory& directory);

/// What the policies say about one application.
ExitStatus showPolicies(const phone::PhoneDirectory& directory, const std::string& bundleIdentifier);

using appledger::ListChange;

/// Changes whether a list holds the application.
ExitStatus changePolicyList(const phone::PhoneDirectory& directory, ListChange change, const std::string& key,
    const std::string& bundleIdentifier);

/// Sets a key to a value given as text, or removes it.
ExitStatus setPolicy(const phone::PhoneDirectory& directory, const std::string& key, const std::string& value);
ExitStatus unsetPolicy(const phone::PhoneDirectory& directory, const std::string& key);

} // namespace cli
