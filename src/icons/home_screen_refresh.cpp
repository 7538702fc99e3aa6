#include "icons/home_screen_refresh.h"

#include "core/notification_names.h"
#include "platform/darwin/notify.h"
#include "platform/foundation/block.h"
#include "platform/foundation/key_value_coding.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class.h"
#include "platform/runtime/message.h"

namespace appledger {

using namespace platform;

namespace {

id imageViewOf(const id& iconView)
{
    if (const id view = askObject<"iconImageView">(iconView))
        return view;
    if (const id view = askObject<"_iconImageView">(iconView))
        return view;
    if (const auto view = object_getInstanceVariable(iconView, "_iconImageView"); view && *view)
        return *view;
    const id subviews = askObject<"subviews">(iconView);
    for (const id& view : itemsOf(subviews))
        if (isKindOfClass(view, classNamed<"SBIconImageView">()))
            return view;
    return nil;
}

/// What versions of the system call the throwing away of an icon's picture.
void purgeIcon(const id& icon)
{
    if (!ask<"reloadIconImage", void>(icon) && !ask<"purgeCachedImages", void>(icon))
        ask<"clearCachedImages", void>(icon);
    ask<"iconImageDidUpdate:", void>(icon, nil);
}

/// Whatever a cache of pictures calls it in some version.
void purgeCaches(const std::initializer_list<id>& caches)
{
    for (const char* const purge :
        { "purgeAllCachedImages", "removeAllObjects", "removeAllImages", "purgeCachedImages" })
        for (const id& cache : caches)
            if (respondsToSelector(cache, sel_registerName(purge)))
                sendSelector<void>(cache, sel_registerName(purge));
}

void reloadModel(const id& model)
{
    ask<"reloadIcons", void>(model);
    const id icons = askObject<"leafIcons">(model);
    for (const id& icon : itemsOf(icons)) {
        purgeIcon(icon);
        ask<"iconAccessoriesDidUpdate:", void>(icon, nil);
    }
}

void layOutIconViews(const id& manager)
{
    const id layOut = block([](const id& view) {
        ask<"_updateLabel", void>(view);
        ask<"_updateIconImageView", void>(view);
        ask<"setNeedsLayout", void>(view);
        ask<"layoutIfNeeded", void>(view);
    });
    if (!ask<"enumerateKnownIconViewsUsingBlock:", void>(manager, layOut))
        ask<"enumerateDisplayedIconViewsUsingBlock:", void>(manager, layOut);
    ask<"layoutIconListsWithAnimationType:forceRelayout:", void>(manager, NSInteger { 0 }, true);
}

} // namespace

void refreshIcon(const std::string& bundleIdentifier, const id& iconView)
{
    ask<"appLedgerPreferencesChanged", void>(imageViewOf(iconView));
    purgeIcon(askObject<"icon">(iconView));
    purgeApplication(bundleIdentifier);
    announceRefresh();
}

void refreshIconOfImageView(const id& imageView)
{
    const std::string_view name = class_getName(object_getClass(imageView));
    if (name.find("Clock") != std::string_view::npos || name.find("Calendar") != std::string_view::npos)
        return;
    ask<"clearCachedImages", void>(imageView);
    ask<"clearIconImageInfo", void>(imageView);
    ask<"iconImageDidUpdate:", void>(imageView, nil);
    ask<"updateImageAnimated:", void>(imageView, false);
    ask<"setNeedsDisplay", void>(imageView);
    ask<"setNeedsLayout", void>(imageView);
}

void purgeApplication(const std::string& bundleIdentifier)
{
    const id controller = askObject<"sharedInstance">(id(classNamed<"SBApplicationController">()));
    ask<"purgeCaches", void>(askObject<"applicationWithBundleIdentifier:">(controller, string(bundleIdentifier)));
}

void layOutEveryIcon()
{
    const id controller = askObject<"sharedInstance">(id(classNamed<"SBIconController">()));
    const id manager = askObject<"iconManager">(controller);
    purgeCaches({ askObject<"iconImageCache">(manager), askObject<"iconLabelImageCache">(manager) });
    reloadModel(askObject<"model">(controller));
    if (manager)
        layOutIconViews(manager);
}

void announceRefresh()
{
    CFNotificationCenterPostNotification(notification::forceRefresh);
    CFNotificationCenterPostNotification(notification::iconChanged);
}

} // namespace appledger
