#pragma once

#include "phone/control/answers.h"

/// The device's own settings, which applications and the owner change, for SpringBoard's answers.

namespace phone {

/// "volume", "brightness", the reasons that keep the screen awake ("assertions"), and the last showing of the
/// volume's display ("hud": "volume" and "secondsAgo", or null).
Json deviceState();

/// The verbs "volume" and "brightness": with a number as "level", sets it as the owner would. The answer has
/// the device's state and what happened.
Json volume(const Json& request);
Json brightness(const Json& request);

} // namespace phone
