#include "state/running_indicator_hooks.h"

namespace appledger {

namespace {

constexpr HookRow rows[] {
    addProperty<"al_runningDot">("SBIconView", "setAl_runningDot:", "@\"UIView\""),
};

} // namespace

const HookGroup RunningIndicatorHooks { "RunningIndicatorHooks", rows };

} // namespace appledger
