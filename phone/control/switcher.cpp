#include "phone/springboard/switcher/switcher.h"

#include "phone/control/answers.h"
#include "phone/control/request_rows.h"
#include "phone/springboard/roads.h"

namespace phone {

namespace {

/// "switcher": {"ok", "cards": [{"application", "name", "sharedWith", "killable", "running",
/// "foreground"}]}, an entry for each application of a card.
Json switcherCards(const Json&)
{
    Json cards = Json::array();
    for (const SwitcherCard& card : presentSwitcher())
        cards.push_back({ { "application", card.application }, { "name", card.name }, { "killable", card.killable },
            { "sharedWith", card.sharedWith }, { "running", card.running }, { "foreground", card.foreground } });
    return { { "ok", true }, { "cards", cards } };
}

/// "swipe": the card of "application" away.
Json swipe(const Json& request)
{
    const std::string identifier = text(request, "application");
    const SwipeOutcome outcome = swipeCardAway(identifier);
    if (outcome == SwipeOutcome::NoSuchCard)
        return failure("the switcher has no card of " + identifier);
    settle();
    return { { "ok", true }, { "killed", outcome == SwipeOutcome::Killed }, { "front", frontmostApplication() },
        { "journal", toJson(takeJournal()) } };
}

constexpr RequestRow rows[] {
    { "switcher", switcherCards },
    { "swipe", swipe },
};

} // namespace

extern const RequestRows switcherRequests { rows };

} // namespace phone
