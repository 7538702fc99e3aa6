#pragma once

#include "core/policy_cache.h"

#include <optional>
#include <span>
#include <string_view>

/// What the Immortalizer decides, on plain values.

namespace appledger {

/// What the settings of a scene's update say. Versions differ in which of the two questions they answer.
struct SceneDirection {
    std::optional<bool> isForeground {};
    std::optional<bool> isBackgrounded {}; ///< counts only where the first is empty
};

/// Whether the update takes its scene out of the foreground; not where the settings answer neither question.
bool leavesForeground(const SceneDirection& direction);

/// Whether a switcher card may be killed that the system lets be killed or not: a card that holds a locked
/// application may not, and none may that the system refuses.
bool isCardKillable(
    bool killable, std::span<const std::string_view> applications, const IdentifierList& lockedApplications);

/// Label accessories, as the platform numbers them.
enum class LabelAccessory : long { NotRunning = 2, Running = 4 };

/// Application states, as the notification server numbers them.
enum class ApplicationState : unsigned { Background = 4, Running = 8 };

/// What the server is told of an application that is kept alive.
ApplicationState toldState(bool allowsPush);

} // namespace appledger
