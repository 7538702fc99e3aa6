#pragma once

#include "phone/control/answers.h"

namespace phone {

/// The icons of all installed applications, and which of them stand on the Home Screen.
Json listIcons(const Json& request);

/// {"application", "road"}: asks the system to remove an application, and says what came of it.
Json uninstallApplication(const Json& request);

} // namespace phone
