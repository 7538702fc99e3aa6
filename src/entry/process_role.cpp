#include "entry/process_role.h"

namespace appledger {

ProcessRole processRole(const platform::ProcessFacts& facts) noexcept
{
    return {
        .isSpringBoard = facts.bundleIdentifier == springBoardBundleIdentifier,
        .isSpotlight = facts.bundleIdentifier == "com.apple.Spotlight",
        .isAppStore = facts.bundleIdentifier == "com.apple.AppStore",
        .isAppstored = facts.processName == "appstored",
        .isItunesstored = facts.processName == "itunesstored",
    };
}

} // namespace appledger
