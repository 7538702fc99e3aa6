#pragma once

#include "platform/runtime/object.h"

#include <string>
#include <vector>

/// The cards of the applications that were in front. Main thread.

namespace phone {

/// Puts a card of these applications, the primary one first, at the front of the row. They have no other.
void addCard(const std::vector<platform::id>& applications);

/// The application has no card any more; others with which it shared one keep theirs.
void removeFromCards(const platform::id& application);

/// One application of a card.
struct SwitcherCard {
    std::string application; ///< its bundle identifier
    std::string name;
    std::vector<std::string> sharedWith; ///< the others of the same card
    bool killable; ///< whether a swipe ends the card
    bool running;
    bool foreground; ///< its scene believes that it is in front
};

/// Opens the switcher: its cards, the one used last first.
std::vector<SwitcherCard> presentSwitcher();

enum class SwipeOutcome { Killed, NotKillable, NoSuchCard };

/// Swipes the application's card away, which ends all the applications of the card.
SwipeOutcome swipeCardAway(const std::string& bundleIdentifier);

} // namespace phone
