#include "panel/swipe_properties.h"

namespace appledger {

namespace {

using SwipeGestureRecognizer
    = AddedProperty<"SBIconImageView", "alSwipeGestureRecognizer", R"(@"UISwipeGestureRecognizer")">;
using SwipeDownGestureRecognizer
    = AddedProperty<"SBIconImageView", "alSwipeDownGestureRecognizer", R"(@"UISwipeGestureRecognizer")">;

constexpr HookRow rows[] {
    SwipeGestureRecognizer::row(),
    SwipeDownGestureRecognizer::row(),
};

} // namespace

const HookRows swipePropertyRows { rows };

} // namespace appledger
