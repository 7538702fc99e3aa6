#pragma once

#include "phone/control/answers.h"

/// The device's own settings, which applications and the owner change. In SpringBoard "volume" and "brightness": with a
/// number as "level", sets it as the owner would; the answer has the device's state and what happened.

namespace phone {

/// "volume", "brightness", the reasons that keep the screen awake ("assertions"), and the last showing of the
/// volume's display ("hud": "volume" and "secondsAgo", or null).
Json deviceState();

/// As the owner would, from 0 to 1, and lets what comes of it happen.
void turnVolumeTo(double level);
void turnBrightnessTo(double level);

} // namespace phone
