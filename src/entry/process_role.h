#pragma once

#include "platform/darwin/system.h"

namespace appledger {

/// What a process is, by its bundle identifier (the first three) or its process name. A process may be
/// none of these.
struct ProcessRole {
    bool isSpringBoard = false;
    bool isSpotlight = false;
    bool isAppStore = false;
    bool isAppstored = false;
    bool isItunesstored = false;

    bool isStore() const noexcept { return isSpringBoard || isAppStore || isAppstored || isItunesstored; }
};

/// Exact and case-sensitive.
ProcessRole processRole(const platform::ProcessFacts& facts) noexcept;

inline constexpr const char* springBoardBundleIdentifier = "com.apple.springboard";

} // namespace appledger
