#pragma once

#include <optional>
#include <string>

/// One application opens another: the transition that SpringBoard makes of it.

namespace phone {

enum class AppToAppAction { None, OpenUrl, ContinueActivity };

struct AppToAppTransition {
    struct Source {
        std::optional<std::string> bundleIdentifier {}; ///< empty: the scene is no application's
        AppToAppAction action = AppToAppAction::None;
    };

    std::string destination;
    std::optional<std::string> label {};
    std::optional<Source> source {}; ///< empty: the request names no scene that it starts from
    std::string requesterName {}; ///< of the process that asks; "" for none
    std::string requesterBundleIdentifier {};
    std::optional<std::string> previousScene {}; ///< empty: that of what is in front
};

struct AppToAppAnswer {
    enum class Asked { Workspace, NobodyForUnknownDestination, NobodyForUnknownSource };

    Asked asked = Asked::Workspace;
    bool executed = false;
    bool wentToBackground = false; ///< someone asked for the background, also where the request was then declined
    std::optional<std::string> reason {}; ///< why it was declined, where that was said
};

/// Makes the transition and has the workspace execute it. What happened on the way is in the journal.
AppToAppAnswer openFromApplication(const AppToAppTransition& transition);

} // namespace phone
