#pragma once

#include "platform/runtime/object.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

/// How an application is removed from the Home Screen.

namespace phone {

/// A method of SBHIconManager that removes.
struct RemovalRoad {
    std::string_view name; ///< what a person calls it: "completion"
    std::string_view method;
};

std::span<const RemovalRoad> removalRoads() noexcept;

struct RemovalReport {
    bool isOffered = false; ///< what the icon says, before anything was sent
    bool isRemoved = false;
    std::optional<bool> completion; ///< whether the completion was called, on the road that takes one
};

/// Sends the road's message for an icon of the model. What else came of it is in the journal. An error for people
/// when there is no such road, application or, on this version, method.
struct RemovalOutcome {
    RemovalReport report {};
    std::string error {};
};
RemovalOutcome requestRemoval(std::string_view road, const std::string& identifier);

/// The system's own removal: the application ends, its folders go, and then its card, its notifications, and all that
/// SpringBoard knows of it. False for an icon of
/// no application or of one of the system's own.
bool removeApplicationOfIcon(const platform::id& icon);

/// Has SpringBoard know nothing more of an application that has ended and is removed.
void forgetRemovedApplication(const platform::id& application);

} // namespace phone
