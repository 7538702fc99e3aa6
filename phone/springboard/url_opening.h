#pragma once

#include "platform/runtime/object.h"

/// URLs that SpringBoard is asked to open.

namespace phone {

/// Whether an installed application takes URLs of that scheme.
bool canOpenUrl(const platform::id& url);

/// Opens the application that takes the URL; the completion, if there is one, gets on the main queue whether it came
/// up.
void openUrl(const platform::id& url, const platform::id& completion);

} // namespace phone
