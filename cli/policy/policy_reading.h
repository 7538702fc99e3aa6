#pragma once

#include "cli/command/output.h"
#include "phone/supervisor/phone_directory.h"

#include <string>

/// What `appledger policy` shows: all that is set, what holds for one application, and the keys that there are.

namespace cli {

enum class Grouping { Application, Feature, Key };

/// All that is set, in the domain and in the two files beside it.
ExitStatus listPolicies(const phone::PhoneDirectory& directory, Grouping grouping);

/// Every key that there is: what it takes, its default, what it does, who reads it, and whom a change of it is told.
ExitStatus listKeys(const phone::PhoneDirectory& directory);

/// What the policies say about one application.
ExitStatus showPolicies(const phone::PhoneDirectory& directory, const std::string& bundleIdentifier);

} // namespace cli
