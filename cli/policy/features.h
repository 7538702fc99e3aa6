#pragma once

#include "cli/history/value_change.h"
#include "core/policies.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

/// What can be decided about an application, in words: a pair of verbs for each, and what they change.

namespace cli {

struct Feature {
    enum class Kind {
        List, ///< the application is on the list of that key
        Flag, ///< the key with its identifier behind it is true
        MuteFile,
    };

    std::string_view onVerb; ///< "policy block"
    std::string_view offVerb;
    std::string_view key; ///< "mute" of the file
    std::string_view onDescription; ///< what --help says
    std::string_view offDescription;
    std::string_view holds; ///< of one for which it holds: "doesn't open"
    std::string_view doesNotHold; ///< "opens"
    Kind kind = Kind::List;

    ValueName valueName(const std::string& application) const;
};

namespace feature {

using namespace appledger;

inline constexpr Feature block { "policy block", "policy allow", policy::blockedLaunch.key,
    "have applications not open any more", "have them open again", "doesn't open", "opens" };
inline constexpr Feature lock { "policy lock", "policy unlock", policy::requireAuth.key,
    "have applications open after authentication alone", "have them open without", "asks for authentication first",
    "opens without authentication" };
inline constexpr Feature hide { "policy hide", "policy unhide", policy::hidden.key,
    "take applications off the Home Screen, and have them not open", "have them back", "is hidden", "isn't hidden" };
inline constexpr Feature protect { "policy protect", "policy unprotect", policy::blockedUninstall.key,
    "have applications not be removed", "have them be removable again", "can't be removed", "can be removed" };
inline constexpr Feature freeze { "policy freeze", "policy unfreeze", policy::blockedUpdate.key,
    "keep updates of applications away", "let their updates come", "gets no updates", "gets its updates" };
inline constexpr Feature silence { "policy silence", "policy unsilence", policy::mutedNotifications.key,
    "have notifications of applications arrive without a sound", "with their sound again", "notifies without a sound",
    "notifies with its sound" };
inline constexpr Feature hush { "policy hush", "policy unhush", policy::blockedNotifications.key,
    "have no notification of applications arrive", "have them arrive again", "doesn't notify", "notifies" };
inline constexpr Feature mute { "policy mute", "policy unmute", "mute",
    "take the volume away while an application is in front", "leave it the volume", "is silent while it is in front",
    "keeps the volume while it is in front", Feature::Kind::MuteFile };
inline constexpr Feature clean { "policy clean", "policy keep-caches", policy::autoClear.key,
    "clear the caches of applications at each exit", "leave their caches alone", "has its caches cleared at each exit",
    "keeps its caches" };
inline constexpr Feature keepAwake { "policy keep-awake", "policy let-sleep", policy::keepAwake.key,
    "keep the screen on while an application is in front", "let it go dark", "keeps the screen on while it is in front",
    "lets the screen go dark" };
inline constexpr Feature keepAlive { "policy keep-alive", "policy let-go", "ALImmortalForegroundApps",
    "keep applications running in the background", "let the system suspend them", "is kept running in the background",
    "is suspended in the background" };
inline constexpr Feature hold { "policy hold", "policy release", "ALImmortalLockedApps",
    "have the switcher not kill applications", "have it kill them again", "can't be killed in the switcher",
    "can be killed in the switcher" };
inline constexpr Feature push { "policy push", "policy no-push", "ALImmortalNotifApps",
    "have those that are kept running notify as if they weren't", "as if they were in front",
    "notifies while it is kept running", "doesn't notify while it is kept running" };
inline constexpr Feature confine { "policy confine", "policy unconfine", redirectKey::forbiddenSource,
    "have applications open no other ones", "let them open others", "opens no other application",
    "may open other applications", Feature::Kind::Flag };
inline constexpr Feature shield { "policy shield", "policy unshield", redirectKey::forbiddenDestination,
    "have no other application open these", "let others open them", "is opened by no other application",
    "may be opened by others", Feature::Kind::Flag };
inline constexpr Feature noStore { "policy no-store", "policy to-store", redirectKey::forbiddenSourceForAppStore,
    "have applications not lead to the App Store", "let them lead there", "doesn't lead to the App Store",
    "may lead to the App Store", Feature::Kind::Flag };
inline constexpr Feature noSafari { "policy no-safari", "policy to-safari", redirectKey::forbiddenSourceForSafari,
    "have applications not lead to Safari", "let them lead there", "doesn't lead to Safari", "may lead to Safari",
    Feature::Kind::Flag };
inline constexpr Feature lenient { "policy lenient", "policy strict", redirectKey::lenientSource,
    "lift what an application may not open 10 seconds after its launch", "have it hold for as long as it runs",
    "may open others 10 seconds after its launch", "is held to its rules for as long as it runs", Feature::Kind::Flag };
inline constexpr Feature pretend { "policy pretend", "policy admit", redirectKey::simulatedSource,
    "tell applications that what they may not open has opened", "tell them that it was declined",
    "is told that what is refused has opened", "is told of refusals", Feature::Kind::Flag };

} // namespace feature

/// All of them, in the order of the usage.
std::span<const Feature* const> features() noexcept;

/// Of that key, a prefix without what follows; null when no feature is its.
const Feature* featureOf(std::string_view key) noexcept;

} // namespace cli
