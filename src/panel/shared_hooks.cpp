#include "panel/shared_hooks.h"

namespace appledger {

namespace {

constexpr HookRow rows[] {
    addProperty<"alSwipeGestureRecognizer">(
        "SBIconImageView", "setAlSwipeGestureRecognizer:", "@\"UISwipeGestureRecognizer\""),
    addProperty<"alSwipeDownGestureRecognizer">(
        "SBIconImageView", "setAlSwipeDownGestureRecognizer:", "@\"UISwipeGestureRecognizer\""),
};

} // namespace

const HookGroup SHARED_HOOKS { "SHARED_HOOKS", rows };

} // namespace appledger
