#pragma once

#include "platform/graphics/geometry.h"

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

/// Finds on the screen what a person names.

namespace phone {

struct PlaceOnScreen {
    std::optional<platform::CGPoint> point;
    std::string error; ///< where there is none, for people
};

/// "X,Y" in points, or a view that can be seen: by its identifier (an application's for its icon), else by its label as
/// it stands, else by the only label that has that in it, whatever the case. The middle of the part that is on the
/// screen. Of several the frontmost that a finger reaches.
PlaceOnScreen placeOnScreen(const nlohmann::json& name);

/// The view that a finger there would touch, as an object without its children; null for none.
nlohmann::json elementAt(platform::CGPoint point);

/// Whether a view of that identifier or label can be seen, or a text with that in it.
bool isSeen(const std::string& name);

} // namespace phone
