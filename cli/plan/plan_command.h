#pragma once

#include "cli/command/output.h"
#include "platform/darwin/system.h"

#include <string>
#include <vector>

namespace cli {

struct PlanOptions {
    std::string bundleIdentifier;
    std::string processName;
    platform::SystemVersion version { 16, 0, 0 };
    std::vector<std::string> absentClasses;
};

/// `appledger plan`: the library's load into a process of that name, step by step, and for each row of a
/// hook group whether its target exists there.
ExitStatus printPlan(const PlanOptions& options);

} // namespace cli
