#pragma once

#include "phone/frontboard/open_request.h"

/// In SpringBoard "open" (a "road" and "applications"), "open-request" (from another process: an "application", and who
/// asks) and "home". The answers are launch reports with what is in front and the device's state.

namespace phone {

/// Asks SpringBoard to open an application, and writes what happened there into this process's journal. True when it
/// came up. Runs the loop until SpringBoard has answered, 2 seconds at most. Main thread.
bool forwardOpenRequest(const OpenRequest& request);

} // namespace phone
