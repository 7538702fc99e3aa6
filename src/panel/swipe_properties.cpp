#include "panel/swipe_properties.h"

namespace appledger {

namespace {

constexpr HookRow rows[] {
    addProperty<"alSwipeGestureRecognizer">(
        "SBIconImageView", "setAlSwipeGestureRecognizer:", "@\"UISwipeGestureRecognizer\""),
    addProperty<"alSwipeDownGestureRecognizer">(
        "SBIconImageView", "setAlSwipeDownGestureRecognizer:", "@\"UISwipeGestureRecognizer\""),
};

} // namespace

const HookRows swipePropertyRows { rows };

} // namespace appledger
