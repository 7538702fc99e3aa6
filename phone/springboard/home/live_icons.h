#pragma once

namespace phone {

/// Has the icons that show the time follow it: the Clock's at each minute, and at each day the Calendar's and those of
/// widgets. Once, when the Home Screen is there.
void keepLiveIcons();

} // namespace phone
