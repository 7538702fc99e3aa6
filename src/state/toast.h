#pragma once

#include "platform/runtime/object.h"

namespace appledger {

/// Shows a toast: two lines of text and, unless it is nil, a picture. It takes the place of one that shows
/// and leaves after `autoHide` seconds; 0 or less: it stays. Nothing where the process can show none. Main
/// queue.
void presentToast(const platform::id& title, const platform::id& subtitle, const platform::id& icon, long autoHide);

} // namespace appledger
