#pragma once

namespace appledger {

/// Which applications keep the screen awake while they are in front (`ALKeepAwakeApps`). One instance.
class AppIdleTimerManager {
public:
    static AppIdleTimerManager& sharedManager();

private:
    AppIdleTimerManager();
};

} // namespace appledger
