#pragma once

#include "platform/runtime/object.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace phone {

/// A change of what is in front, as the one who wants it describes it.
struct TransitionDescription {
    std::vector<platform::id> applications {}; ///< SBApplication objects, the primary one first
    std::optional<std::string_view> label; ///< the request's event label
    std::string requesterName = "SpringBoard"; ///< the process that asks; "" for none
    std::string requesterBundleIdentifier = "com.apple.springboard";
    platform::id sourceEntity {}; ///< the scene that the transition starts from, if it names one
    std::optional<std::string_view> previousScene {}; ///< empty: the scene of what is in front now
};

/// The scene of an application in a transition. `actions` is a set or nil.
platform::id makeSceneEntity(const platform::id& application, const platform::id& actions = platform::nil);

/// The request object for it.
platform::id makeTransitionRequest(const TransitionDescription& description);

/// Makes the request and has the workspace execute it, through the outermost method that this version of
/// the system has. True when it was carried out.
bool requestTransition(const TransitionDescription& description);

} // namespace phone
