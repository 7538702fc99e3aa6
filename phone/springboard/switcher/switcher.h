#pragma once

#include "platform/runtime/object.h"

#include <string>
#include <vector>

/// The cards of the applications that were in front. Main thread.

namespace phone {

/// The application's card goes to the front of the row; a new one where it has none.
void addCard(const platform::id& application);

struct SwitcherCard {
    std::string application; ///< its bundle identifier
    std::string name;
    bool killable; ///< whether a swipe ends it
    bool running;
    bool foreground; ///< its scene believes that it is in front
};

/// Opens the switcher: its cards, the one used last first.
std::vector<SwitcherCard> presentSwitcher();

enum class SwipeOutcome { Killed, NotKillable, NoSuchCard };

/// Swipes the application's card away, which ends the application.
SwipeOutcome swipeCardAway(const std::string& bundleIdentifier);

} // namespace phone
