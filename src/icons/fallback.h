#pragma once

#include "platform/runtime/object.h"

#include <exception>
#include <optional>

namespace appledger {

/// What the system answers; nil when it raises.
template <class Ask> platform::id systemsAnswer(const Ask& ask)
{
    try {
        return ask();
    } catch (const std::exception&) {
        return platform::nil; // raised by the system: an icon of the owner's can still be shown
    }
}

/// What `custom` (std::optional<id>()) finds in the place of the system's answer.
template <class Custom> platform::id orElse(const platform::id& systems, const Custom& custom)
{
    try {
        std::optional<platform::id> found = custom();
        return found ? *found : systems;
    } catch (const std::exception&) {
        return systems; // raised by the system's objects on the way
    }
}

} // namespace appledger
