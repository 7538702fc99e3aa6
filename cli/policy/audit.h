#pragma once

#include "cli/command/application_names.h"
#include "cli/history/policy_values.h"

#include <string>
#include <vector>

namespace cli {

struct Finding {
    std::string kind; ///< "unknown-key", "wrong-type", "out-of-range", "shadowed", "without-effect", "gone"
    std::string key;
    std::string application; ///< "" for none
    std::string text; ///< for people
};

/// What is odd about the policies. `installed`: the applications of the phone; none where they aren't known.
std::vector<Finding> auditOf(const PolicyValues& values, const std::vector<KnownApplication>& installed);

} // namespace cli
