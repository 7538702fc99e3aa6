#include "phone/springboard/switcher/switcher.h"

#include "phone/springboard/applications/application_process.h"
#include "phone/springboard/scenes/front_display.h"
#include "phone/system/text.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <algorithm>

namespace phone {

using namespace platform;

namespace {

std::vector<id>& cards()
{
    static auto* const applications = new std::vector<id>;
    return *applications;
}

/// A card as it is shown: any may be killed, as far as the system is concerned.
bool isKillable(const id& application)
{
    const id layout = send<"new">(id(classNamed<"SBAppLayout">()));
    send<"setBundleIdentifiers:", void>(layout, array({ send<"bundleIdentifier">(application) }));
    const id container = send<"new">(id(classNamed<"SBFluidSwitcherItemContainer">()));
    send<"setAppLayout:", void>(container, layout);
    send<"setKillable:", void>(container, true);
    return send<"isKillable", bool>(container);
}

} // namespace

void addCard(const id& application)
{
    std::erase(cards(), application);
    cards().insert(cards().begin(), application);
}

std::vector<SwitcherCard> presentSwitcher()
{
    std::vector<SwitcherCard> shown;
    for (const id& application : cards())
        shown.push_back({ textOf(send<"bundleIdentifier">(application)), textOf(send<"displayName">(application)),
            isKillable(application), static_cast<bool>(send<"processState">(application)),
            isSceneInForeground(application) });
    return shown;
}

SwipeOutcome swipeCardAway(const std::string& bundleIdentifier)
{
    const auto card = std::ranges::find_if(cards(),
        [&](const id& application) { return textOf(send<"bundleIdentifier">(application)) == bundleIdentifier; });
    if (card == cards().end())
        return SwipeOutcome::NoSuchCard;
    const id application = *card;
    if (!isKillable(application))
        return SwipeOutcome::NotKillable;
    cards().erase(card);
    endProcessOf(bundleIdentifier);
    return SwipeOutcome::Killed;
}

} // namespace phone
