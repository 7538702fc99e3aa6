#include "panel/icon_image_view_hooks.h"

#include "icons/home_screen_refresh.h"

namespace appledger {

namespace {

using SwipeGestureRecognizer
    = AddedProperty<"SBIconImageView", "alSwipeGestureRecognizer", R"(@"UISwipeGestureRecognizer")">;
using SwipeDownGestureRecognizer
    = AddedProperty<"SBIconImageView", "alSwipeDownGestureRecognizer", R"(@"UISwipeGestureRecognizer")">;

/// Sent when what the owner sees of the icon may have changed.
struct PreferencesChanged : AddedMethod<PreferencesChanged, "SBIconImageView", "appLedgerPreferencesChanged", void()> {
    static void implementation(const platform::id& self, platform::SEL) { refreshIconOfImageView(self); }
};

constexpr HookRow rows[] {
    SwipeGestureRecognizer::row(),
    SwipeDownGestureRecognizer::row(),
    PreferencesChanged::row(),
};

} // namespace

const HookRows iconImageViewRows { rows };

} // namespace appledger
