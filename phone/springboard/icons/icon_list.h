#pragma once

#include "platform/runtime/object.h"

#include <string>
#include <vector>

/// The Home Screen as SpringBoard has laid it out.

namespace phone {

platform::id iconModel();
platform::id iconManager(); ///< nil where the version has none

struct HomeScreenIcon {
    std::string identifier; ///< of the application, the web clip or the widget
    std::string displayName;
    bool isShown = false; ///< stands on the Home Screen
    bool canBeRemoved = false; ///< offers its removal
};

/// The icons of all installed applications, and of web clips and widgets, in the order of the layout.
std::vector<HomeScreenIcon> homeScreenIcons();

} // namespace phone
