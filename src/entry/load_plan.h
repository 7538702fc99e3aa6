#pragma once

#include "core/hook_group.h"
#include "platform/darwin/system.h"

#include <functional>
#include <string_view>
#include <vector>

/// The load of the library into a process, as a list of steps. The list is computed from facts alone and
/// then carried out; `appledger plan` prints it.

namespace appledger {

enum class LoadStepKind { LoadCache, CreateSingleton, AddObserver, InstallGroup };

struct LoadStep {
    LoadStepKind kind;
    std::string_view name; ///< of the reload function, the singleton's class, the callback, or the group
    void (*run)() = nullptr; ///< what a cache, a singleton or an observer calls
    std::string_view notification {}; ///< what an observer waits for
    const HookGroup* group = nullptr;
};

/// What the plan depends on: what the process is, and which classes the system has in it.
struct LoadFacts {
    platform::ProcessFacts process;
    std::function<bool(std::string_view className)> hasClass;
};

/// The steps for that process, in the order in which they are carried out.
std::vector<LoadStep> planLoad(const LoadFacts& facts);

/// On the thread that loads the library. Nothing is reported, and no failure ends the pass.
void carryOut(const std::vector<LoadStep>& steps);

} // namespace appledger
