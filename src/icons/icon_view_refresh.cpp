#include "icons/icon_view_refresh.h"

#include "core/notification_names.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <exception>

namespace appledger {

using namespace platform;

namespace {

id notificationCenter()
{
    return askObject<"defaultCenter">(id(classNamed<"NSNotificationCenter">()));
}

void redraw(const id& view)
{
    ask<"setNeedsLayout", void>(view);
    ask<"setNeedsDisplay", void>(view);
}

} // namespace

id followingRefreshes(id view)
{
    if (view)
        ask<"addObserver:selector:name:object:", void>(notificationCenter(), view,
            sel_registerName("al_forceRefreshUI"), string(notification::forceRefreshIcons), nil);
    return view;
}

void stopFollowingRefreshes(const id& view)
{
    ask<"removeObserver:name:object:", void>(notificationCenter(), view, string(notification::forceRefreshIcons), nil);
}

void refreshIconImageView(const id& view)
{
    try {
        ask<"clearCachedImages", void>(view);
        ask<"updateImageAnimated:", void>(view, false);
        redraw(view);
    } catch (const std::exception&) {
        // raised by the view: it shows what it had
    }
}

void refreshSearchImageView(const id& view)
{
    try {
        if (const id image = askObject<"currentImage">(view))
            ask<"updateWithImage:", void>(view, image);
        redraw(view);
    } catch (const std::exception&) {
        // raised by the view: it shows what it had
    }
}

} // namespace appledger
