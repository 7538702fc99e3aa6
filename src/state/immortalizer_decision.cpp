#include "state/immortalizer_decision.h"

#include <algorithm>

namespace appledger {

bool leavesForeground(const SceneDirection& direction)
{
    if (direction.isForeground)
        return !*direction.isForeground;
    return direction.isBackgrounded.value_or(false);
}

bool isCardKillable(
    bool killable, std::span<const std::string_view> applications, const IdentifierList& lockedApplications)
{
    return killable && std::ranges::none_of(applications, [&](std::string_view application) {
        return lockedApplications.contains(application);
    });
}

ApplicationState toldState(bool allowsPush)
{
    return allowsPush ? ApplicationState::Background : ApplicationState::Running;
}

} // namespace appledger
