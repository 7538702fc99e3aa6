#include "state/app_mute_hooks.h"

#include "platform/foundation/key_value_coding.h"
#include "platform/foundation/values.h"
#include "platform/runtime/exception.h"
#include "platform/runtime/message.h"
#include "state/app_brightness_manager.h"
#include "state/app_idle_timer_manager.h"
#include "state/app_mute_manager.h"

namespace appledger {

using namespace platform;

namespace {

/// One event reaches all three, always in this order.
template <class Event> void sendToManagers(Event event)
{
    event(AppMuteManager::sharedManager());
    event(AppBrightnessManager::sharedManager());
    event(AppIdleTimerManager::sharedManager());
}

void sendForeground(std::string_view bundleIdentifier)
{
    sendToManagers([bundleIdentifier](auto& manager) { manager.processAppForeground(bundleIdentifier); });
}

void sendBackground(std::string_view bundleIdentifier)
{
    sendToManagers([bundleIdentifier](auto& manager) { manager.processAppBackground(bundleIdentifier); });
}

void sendBackgroundOfLast()
{
    sendToManagers([](auto& manager) { manager.processAppBackground(manager.lastFrontmostBundleID()); });
}

/// What the system's objects raise while they are read costs the event and nothing else.
template <class Decision> void dropExceptions(Decision decide)
{
    try {
        decide();
    } catch (const NSException&) {
    }
}

std::optional<StringValue> identifierOf(const id& display)
{
    if (auto identifier = ask<"applicationBundleID">(display))
        return asString(identifier);
    if (auto identifier = ask<"bundleIdentifier">(display))
        return asString(identifier);
    return asString(ask<"bundleIdentifier">(valueForKey(display, "application")));
}

std::optional<StringValue> identifierOfFrontMost(const id& springBoard)
{
    return asString(ask<"bundleIdentifier">(askObject<"_accessibilityFrontMostApplication">(springBoard)));
}

/// As the system numbers them.
enum class SceneVisibility : NSUInteger { Background = 1, Foreground = 2 };

struct NoteDidChangeToVisibility
    : Hook<NoteDidChangeToVisibility, "SBMainDisplaySceneManager",
          "_noteDidChangeToVisibility:previouslyExisted:forScene:", void(NSUInteger, bool, id)> {
    static void replacement(const id& self, SEL cmd, NSUInteger visibility, bool previouslyExisted, const id& scene)
    {
        original(self, cmd, visibility, previouslyExisted, scene);
        dropExceptions([&] {
            if (!respondsTo<"clientProcess">(scene))
                return;
            const auto identifier = asString(valueForKey(valueForKey(scene, "clientProcess"), "bundleIdentifier"));
            if (!identifier)
                return;
            if (SceneVisibility(visibility) == SceneVisibility::Foreground)
                sendForeground(*identifier);
            else if (SceneVisibility(visibility) == SceneVisibility::Background)
                sendBackground(*identifier);
        });
    }
};

struct FrontDisplayDidChange : Hook<FrontDisplayDidChange, "SpringBoard", "frontDisplayDidChange:", void(id)> {
    static void replacement(const id& self, SEL cmd, const id& display)
    {
        original(self, cmd, display);
        dropExceptions([&] {
            auto identifier = display ? identifierOf(display) : std::nullopt;
            if (!identifier)
                identifier = identifierOfFrontMost(self);
            if (identifier)
                sendForeground(*identifier);
            else
                sendBackgroundOfLast();
        });
    }
};

struct HandleApplicationProcessStateDidChange : Hook<HandleApplicationProcessStateDidChange, "SpringBoard",
                                                    "_handleApplicationProcessStateDidChangeNotification:", void(id)> {
    static void replacement(const id& self, SEL cmd, const id& notification)
    {
        original(self, cmd, notification);
        dropExceptions([&] {
            if (const auto identifier = identifierOfFrontMost(self))
                sendForeground(*identifier);
        });
    }
};

struct PresentVolumeHUD : Hook<PresentVolumeHUD, "SBVolumeControl", "_presentVolumeHUDWithVolume:", void(float)> {
    static void replacement(const id& self, SEL cmd, float volume)
    {
        if (!g_isMutingHUD)
            original(self, cmd, volume);
    }
};

struct PresentVolumeHUDIfDisplayable
    : Hook<PresentVolumeHUDIfDisplayable, "SBVolumeControl",
          "_presentVolumeHUDIfDisplayable:orRefreshIfPresentedWithReason:", void(bool, id)> {
    static void replacement(const id& self, SEL cmd, bool displayable, const id& reason)
    {
        if (!g_isMutingHUD)
            original(self, cmd, displayable, reason);
    }
};

constexpr HookRow rows[] {
    NoteDidChangeToVisibility::row(),
    FrontDisplayDidChange::row(),
    HandleApplicationProcessStateDidChange::row(),
    PresentVolumeHUD::row(),
    PresentVolumeHUDIfDisplayable::row(),
};

} // namespace

const HookGroup AppMuteHooks { "AppMuteHooks", rows };

} // namespace appledger
