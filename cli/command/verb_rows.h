#pragma once

#include "cli/command/output.h"

#include <functional>
#include <span>
#include <string_view>

namespace phone {
class PhoneDirectory;
}

/// A verb is one row, beside what it does.

namespace cli {

class Arguments;

/// What a command line asks for.
using Action = std::function<ExitStatus(const phone::PhoneDirectory& directory)>;

struct VerbRow {
    std::string_view words; ///< its groups and its name: "phone icons"
    std::string_view description;
    Action (*begin)(Arguments& arguments); ///< says what it takes, and gives what it does with that
    std::string_view request {}; ///< what it asks of the phone, a process's or the supervisor's; "" for nothing
    bool isHidden = false; ///< for programs: it stands in no usage
};

using VerbRows = std::span<const VerbRow>;

/// The `begin` of a verb that takes nothing.
template <ExitStatus (*Function)(const phone::PhoneDirectory& directory)> Action plain(Arguments&)
{
    return Function;
}

// Each stands in the file of its name.
// sorted
extern const VerbRows alertVerbs;
extern const VerbRows bundleVerbs;
extern const VerbRows completionVerbs;
extern const VerbRows customIconVerbs;
extern const VerbRows deviceVerbs;
extern const VerbRows explainVerbs;
extern const VerbRows featureVerbs;
extern const VerbRows fingerVerbs;
extern const VerbRows historyVerbs;
extern const VerbRows iconVerbs;
extern const VerbRows installVerbs;
extern const VerbRows launchVerbs;
extern const VerbRows lifeVerbs;
extern const VerbRows nameAndBadgeVerbs;
extern const VerbRows notificationVerbs;
extern const VerbRows operationVerbs;
extern const VerbRows permissionVerbs;
extern const VerbRows phoneListVerbs;
extern const VerbRows planVerbs;
extern const VerbRows policyVerbs;
extern const VerbRows profileVerbs;
extern const VerbRows recordVerbs;
extern const VerbRows screenVerbs;
extern const VerbRows searchVerbs;
extern const VerbRows storeVerbs;
extern const VerbRows switcherVerbs;
extern const VerbRows wholeSetVerbs;
// end sorted

/// All of them, in the order in which the usage shows them.
std::span<const VerbRows* const> allVerbs() noexcept;

} // namespace cli
