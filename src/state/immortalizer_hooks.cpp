#include "state/immortalizer_hooks.h"

#include "core/bundle_identifier.h"
#include "core/policies.h"
#include "core/text.h"
#include "platform/darwin/notify.h"
#include "platform/darwin/system.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "state/immortalizer.h"
#include "state/immortalizer_decision.h"
#include "state/toast.h"

namespace appledger {

using namespace platform;

namespace {

std::optional<StringValue> bundleIdentifierOf(const id& object)
{
    return asString(ask<"bundleIdentifier">(object));
}

bool isListed(const std::optional<StringValue>& identifier, const PolicyCache& list)
{
    return identifier && list.contains(*identifier);
}

// The display in front

struct FrontDisplayDidChange : Hook<FrontDisplayDidChange, "SpringBoard", "frontDisplayDidChange:", void(id)> {
    static void replacement(const id& self, SEL cmd, const id& display)
    {
        original(self, cmd, display);
        CFNotificationCenterPostNotification("com.lorvane.immortalizer.updatecc");
    }
};

// Scenes that stay in the foreground

SceneDirection directionOf(const id& settings)
{
    if (const auto foreground = ask<"isForeground", bool>(settings))
        return { .isForeground = foreground };
    return { .isBackgrounded = ask<"isBackgrounded", bool>(settings) };
}

bool isKeptInForeground(const id& scene, const id& settings, const id& context)
{
    if (!g_ImmortalEnabled)
        return false;
    const auto identifier = bundleIdentifierOf(askObject<"clientProcess">(scene));
    if (!isListed(identifier, g_ImmortalForegroundApps) || context)
        return false;
    return leavesForeground(directionOf(settings));
}

struct UpdateSettings
    : Hook<UpdateSettings, "FBScene", "updateSettings:withTransitionContext:completion:", void(id, id, id)> {
    static void replacement(const id& self, SEL cmd, const id& settings, const id& context, const id& completion)
    {
        if (!isKeptInForeground(self, settings, context))
            return original(self, cmd, settings, context, completion);
        // The update hasn't happened, so its completion isn't called either.
        dispatch_async(dispatch_get_main_queue(), [identifier = bundleIdentifierOf(askObject<"clientProcess">(self))] {
            refreshIconAccessories(*identifier);
        });
    }
};

/// Before the system reads them.
void clearDeactivationReasons(const id& owner, const id& settings)
{
    if (g_ImmortalEnabled && isListed(bundleIdentifierOf(askObject<"application">(owner)), g_ImmortalForegroundApps))
        ask<"setDeactivationReasons:", void>(settings, NSUInteger { 0 });
}

struct SetupSceneSettings
    : Hook<SetupSceneSettings, "SBApplicationSceneEntity", "_setupSceneSettings:transitionContext:", void(id, id)> {
    static void replacement(const id& self, SEL cmd, const id& settings, const id& context)
    {
        clearDeactivationReasons(self, settings);
        original(self, cmd, settings, context);
    }
};

struct ModifyApplicationSceneSettings
    : Hook<ModifyApplicationSceneSettings, "SBDeviceApplicationSceneHandle",
          "_modifyApplicationSceneSettings:fromRequestContext:entity:", void(id, id, id)> {
    static void replacement(const id& self, SEL cmd, const id& settings, const id& context, const id& entity)
    {
        clearDeactivationReasons(self, settings);
        original(self, cmd, settings, context, entity);
    }
};

// Label accessories

/// True while a folder opens or closes.
std::atomic<bool> g_isFolderTransitioning { false };

bool showsIndicator()
{
    return g_ImmortalEnabled && g_ImmortalIndicatorEnabled;
}

/// The accessory of an application that is kept alive, by whether it runs; empty for all others.
std::optional<NSInteger> immortalAccessory(const std::optional<StringValue>& identifier)
{
    if (!isListed(identifier, g_ImmortalForegroundApps))
        return std::nullopt;
    const id controller = askObject<"sharedInstance">(id(classNamed<"SBApplicationController">()));
    const auto state
        = ask<"processState">(askObject<"applicationWithBundleIdentifier:">(controller, identifier->object()));
    if (!state)
        return std::nullopt;
    return static_cast<NSInteger>(*state ? LabelAccessory::Running : LabelAccessory::NotRunning);
}

bool isInDock(const id& iconView)
{
    const auto location = asString(ask<"location">(iconView));
    return location && location->view().find("Dock") != std::string_view::npos;
}

struct LabelAccessoryTypeForIcon
    : Hook<LabelAccessoryTypeForIcon, "SBApplication", "labelAccessoryTypeForIcon:", NSInteger(id)> {
    static NSInteger replacement(const id& self, SEL cmd, const id& icon)
    {
        const NSInteger type = original(self, cmd, icon);
        return showsIndicator() ? immortalAccessory(bundleIdentifierOf(self)).value_or(type) : type;
    }
};

struct CurrentLabelAccessoryType
    : Hook<CurrentLabelAccessoryType, "SBIconView", "currentLabelAccessoryType", NSInteger()> {
    static NSInteger replacement(const id& self, SEL cmd)
    {
        NSInteger type = original(self, cmd);
        if (!showsIndicator())
            return type;
        if (isInDock(self))
            type = immortalAccessory(applicationOfIcon(self)).value_or(type);
        const id icon = askObject<"icon">(self);
        if (!isKindOfClass(icon, classNamed<"SBFolderIcon">()) || g_isFolderTransitioning)
            return type;
        // The last listed application of a folder decides, whatever the others do.
        for (const id& item : itemsOf(askObject<"icons">(askObject<"folder">(icon))))
            type = immortalAccessory(asString(ask<"applicationBundleID">(item))).value_or(type);
        return type;
    }
};

struct WillTransition : Hook<WillTransition, "SBFolderView", "willTransitionAnimated:withSettings:", void(bool, id)> {
    static void replacement(const id& self, SEL cmd, bool animated, const id& settings)
    {
        if (showsIndicator())
            g_isFolderTransitioning = true;
        original(self, cmd, animated, settings);
    }
};

struct DidTransition : Hook<DidTransition, "SBFolderView", "didTransitionAnimated:", void(bool)> {
    static void replacement(const id& self, SEL cmd, bool animated)
    {
        if (showsIndicator()) {
            g_isFolderTransitioning = false;
            ask<"_notifyAccessoriesDidUpdate", void>(askObject<"icon">(askObject<"folder">(self)));
        }
        original(self, cmd, animated);
    }
};

// Names

struct DisplayName : Hook<DisplayName, "SBApplication", "displayName", id()> {
    static id replacement(const id& self, SEL cmd)
    {
        id name = original(self, cmd);
        if (!g_ImmortalEnabled || !g_ImmortalLockIndicatorEnabled
            || !isListed(bundleIdentifierOf(self), g_ImmortalLockedApps))
            return name;
        const auto text = asString(name);
        return text ? string(text->text() + "🔒") : name;
    }
};

// Ends

id exitPicture()
{
    if (!isOperatingSystemAtLeastVersion(13, 0, 0))
        return nil;
    return askObject<"systemImageNamed:">(id(classNamed<"UIImage">()), string("exclamationmark.triangle.fill"));
}

void showExit(const StringValue& bundleIdentifier)
{
    constexpr long seconds = 3;
    const id icon = refreshIconAccessories(bundleIdentifier);
    if (!g_ImmortalForegroundApps.contains(bundleIdentifier) || !g_ImmortalToastEnabled)
        return;
    const auto name = ask<"displayName">(icon);
    presentToast(name ? *name : bundleIdentifier.object(), string(ALLoc("BG Stopped")), exitPicture(), seconds);
}

struct DidExit : Hook<DidExit, "SBApplication", "_didExitWithContext:", void(id)> {
    static void replacement(const id& self, SEL cmd, const id& context)
    {
        original(self, cmd, context);
        if (!g_ImmortalEnabled)
            return;
        if (const auto identifier = bundleIdentifierOf(self))
            dispatch_async(dispatch_get_main_queue(), [identifier = *identifier] { showExit(identifier); });
    }
};

// Notifications

struct WillPresentNotification
    : Hook<WillPresentNotification, "UNSUserNotificationServer",
          "willPresentNotification:forBundleIdentifier:withCompletionHandler:", void(id, id, id)> {
    static void replacement(
        const id& self, SEL cmd, const id& notification, const id& bundleIdentifier, const id& completion)
    {
        const auto identifier = asString(bundleIdentifier);
        if (g_ImmortalEnabled && isListed(identifier, g_ImmortalNotifApps))
            tellApplicationState(self, *identifier);
        original(self, cmd, notification, bundleIdentifier, completion);
    }
};

// Cards of the switcher

/// The items of a card's layout. Older versions tell of the one in the primary role only.
std::vector<id> itemsOfLayout(const id& layout)
{
    std::vector<id> items;
    if (isOperatingSystemAtLeastVersion(16, 0, 0)) {
        for (const auto& [item, attributes] : pairsOf(askObject<"itemsToLayoutAttributesMap">(layout)))
            items.push_back(item);
    } else {
        const id roles = object_getInstanceVariable(layout, "_rolesToLayoutItemsMap").value_or(nil);
        items.push_back(pairsOf(roles)[number(1)]);
    }
    return items;
}

bool isKillable(const id& card, bool killable)
{
    const id layout = askObject<"appLayout">(card);
    if (!g_ImmortalEnabled || !layout)
        return killable;
    std::vector<StringValue> texts;
    for (const id& item : itemsOfLayout(layout))
        if (auto identifier = bundleIdentifierOf(item))
            texts.push_back(std::move(*identifier));
    const std::vector<std::string_view> identifiers(texts.begin(), texts.end());
    const auto locked = g_ImmortalLockedApps.read();
    return isCardKillable(killable, identifiers, locked.list());
}

struct SetKillable : Hook<SetKillable, "SBFluidSwitcherItemContainer", "setKillable:", void(bool)> {
    static void replacement(const id& self, SEL cmd, bool killable) { original(self, cmd, isKillable(self, killable)); }
};

constexpr HookRow rows[] {
    FrontDisplayDidChange::row(),
    CurrentLabelAccessoryType::row(),
    UpdateSettings::row(),
    SetupSceneSettings::row(),
    ModifyApplicationSceneSettings::row(),
    LabelAccessoryTypeForIcon::row(),
    DisplayName::row(),
    DidExit::row(),
    WillTransition::row(),
    DidTransition::row(),
    WillPresentNotification::row(),
    SetKillable::row(),
};

} // namespace

const HookGroup ImmortalizerHooks { "ImmortalizerHooks", rows };

} // namespace appledger
