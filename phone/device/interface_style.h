#pragma once

#include "platform/screen/framework.h"

namespace phone {

/// Whether the system shows itself light or dark, as its owner has chosen it: light on a new phone. It outlives the
/// processes. Main thread.
platform::InterfaceStyle interfaceStyle();

/// False when the choice can't be kept; nothing changes then.
[[nodiscard]] bool setInterfaceStyle(platform::InterfaceStyle style);

/// Has the screen of this process show itself as the owner has chosen it.
void showInterfaceStyle();

} // namespace phone
