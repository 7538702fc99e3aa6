#pragma once

#include "platform/runtime/object.h"

/// How views of icons hear inside their process that icons have changed, and show themselves anew.

namespace appledger {

/// The view, which from now on is sent `al_forceRefreshUI` for each "ALForceRefreshIconsNotification"; nil for nil.
platform::id followingRefreshes(platform::id view);
void stopFollowingRefreshes(const platform::id& view);

/// What the two kinds of views do then. An exception of the view's ends it quietly.
void refreshIconImageView(const platform::id& view);
void refreshSearchImageView(const platform::id& view);

} // namespace appledger
