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

using Card = std::vector<id>; // of applications, the primary one first

std::vector<Card>& cards()
{
    static auto* const present = new std::vector<Card>;
    return *present;
}

std::string identifierOf(const id& application)
{
    return textOf(send<"bundleIdentifier">(application));
}

/// A card as it is shown: any may be killed, as far as the system is concerned.
bool isKillable(const Card& card)
{
    std::vector<id> identifiers;
    for (const id& application : card)
        identifiers.push_back(send<"bundleIdentifier">(application));
    const id layout = send<"new">(id(classNamed<"SBAppLayout">()));
    send<"setBundleIdentifiers:", void>(layout, array(std::move(identifiers)));
    const id container = send<"new">(id(classNamed<"SBFluidSwitcherItemContainer">()));
    send<"setAppLayout:", void>(container, layout);
    send<"setKillable:", void>(container, true);
    return send<"isKillable", bool>(container);
}

} // namespace

void addCard(const std::vector<id>& applications)
{
    for (const id& application : applications)
        removeFromCards(application);
    if (!applications.empty())
        cards().insert(cards().begin(), applications);
}

void removeFromCards(const id& application)
{
    for (Card& card : cards())
        std::erase(card, application);
    std::erase_if(cards(), [](const Card& card) { return card.empty(); });
}

std::vector<SwitcherCard> presentSwitcher()
{
    std::vector<SwitcherCard> shown;
    for (const Card& card : cards()) {
        const bool killable = isKillable(card);
        for (const id& application : card) {
            std::vector<std::string> others;
            for (const id& other : card)
                if (other != application)
                    others.push_back(identifierOf(other));
            shown.push_back({ identifierOf(application), textOf(send<"displayName">(application)), std::move(others),
                killable, static_cast<bool>(send<"processState">(application)), isSceneInForeground(application) });
        }
    }
    return shown;
}

SwipeOutcome swipeCardAway(const std::string& bundleIdentifier)
{
    const auto found = std::ranges::find_if(cards(),
        [&](const Card& card) { return std::ranges::find(card, bundleIdentifier, identifierOf) != card.end(); });
    if (found == cards().end())
        return SwipeOutcome::NoSuchCard;
    const Card card = *found;
    if (!isKillable(card))
        return SwipeOutcome::NotKillable;
    cards().erase(found);
    for (const id& application : card)
        endProcessOf(identifierOf(application));
    return SwipeOutcome::Killed;
}

} // namespace phone
