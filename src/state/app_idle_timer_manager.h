#pragma once

#include "platform/runtime/object.h"

#include <string>
#include <string_view>

namespace appledger {

/// Keeps the screen awake while a listed application (`ALKeepAwakeApps`) is in front. One instance, on the
/// main queue.
class AppIdleTimerManager {
public:
    static AppIdleTimerManager& sharedManager();

    /// The application came to the front, or went to the background. The work is queued on the main queue;
    /// an empty identifier is ignored.
    void processAppForeground(std::string_view bundleIdentifier);
    void processAppBackground(std::string_view bundleIdentifier);

    const std::string& lastFrontmostBundleID() const noexcept { return lastFrontmostBundleID_; }
    bool isAssertionActive() const noexcept { return isAssertionActive_; }

    /// Queues the assertion's acquisition, or its release, on the main queue.
    void setIdleTimerDisabled(bool disabled);

private:
    AppIdleTimerManager();

    void acquire(const platform::id& coordinator);
    void release();

    std::string lastFrontmostBundleID_;
    platform::id disableAssertion_;
    bool isAssertionActive_ = false;
};

} // namespace appledger
