#pragma once

#include "cli/command/output.h"
#include "cli/command/transition_options.h"
#include "phone/supervisor/phone_directory.h"

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

/// `appledger explain …`: what would happen, and which rule says so.

namespace cli {

class ExplainPolicies;

struct ExplainOptions {
    std::string preferences; ///< property list on this machine; "" for the phone's domain
    std::string destination; ///< the application in question; "" to answer records
    std::vector<std::string> purchases; ///< what is to be bought; none to answer records
    std::string road; ///< one road; "" for all
    std::optional<std::string> bypass;
    std::optional<double> secondsSinceLaunch;
    TransitionOptions transition;
};

using ExplainAction = std::function<ExitStatus(const phone::PhoneDirectory& directory)>;

/// Adds the kinds of `explain`; `chosen` gets what a command line asks for. `options` must
/// outlive the command.
void addExplain(CLI::App& command, ExplainOptions& options, const std::function<void(ExplainAction)>& chosen);

ExitStatus explainLaunches(const phone::PhoneDirectory& directory, const ExplainOptions& options);
ExitStatus explainRedirects(const phone::PhoneDirectory& directory, const ExplainOptions& options);
ExitStatus explainNotifications(const phone::PhoneDirectory& directory, const ExplainOptions& options);
ExitStatus explainPurchases(const phone::PhoneDirectory& directory, const ExplainOptions& options);

/// The verdict on one line of records, as one line of JSON without its end. A line that isn't a record gets
/// {"error": …}.
std::string explainLaunchLine(std::string_view line, const ExplainPolicies& policies);
std::string explainRedirectLine(std::string_view line, const ExplainPolicies& policies);
std::string explainNotificationLine(std::string_view line, const ExplainPolicies& policies);
std::string explainPurchaseLine(std::string_view line, const ExplainPolicies& policies);

} // namespace cli
