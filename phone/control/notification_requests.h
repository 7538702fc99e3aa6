#pragma once

#include "phone/control/answers.h"

namespace phone {

/// {"application", "title", "body", "badge", "sound", "road"}: publishes, and says what came of it.
Json pushNotification(const Json& request);

/// What the notification centre holds, the oldest first.
Json listNotifications(const Json& request);

} // namespace phone
