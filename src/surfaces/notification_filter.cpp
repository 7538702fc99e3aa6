#include "surfaces/notification_filter.h"

#include "core/policies.h"
#include "platform/runtime/message.h"

namespace appledger {

using namespace platform;

namespace {

id identifierOf(const id& holder)
{
    for (const std::string_view selector : notificationIdentifierSelectors) {
        id identifier = ALMsgSendObject(holder, sel_registerName(selector));
        if (const auto text = asString(identifier); text && !text->view().empty())
            return identifier;
    }
    return nil;
}

} // namespace

id ALMsgSendObject(const id& object, SEL selector)
{
    return respondsToSelector(object, selector) ? sendSelector(object, selector) : nil;
}

id ALExtractNotificationBundleID(const id& object)
{
    id identifier = identifierOf(object);
    for (const std::string_view wrapper : notificationWrapperSelectors) {
        if (identifier)
            break;
        identifier = identifierOf(ALMsgSendObject(object, sel_registerName(wrapper)));
    }
    return identifier;
}

NotificationVerdict notificationVerdict(const id& object, NotificationRoad road, const id& section)
{
    const auto identifier = asString(ALExtractNotificationBundleID(object));
    const auto sectionText = asString(section);
    const PolicyCache::Reading blocked = blockedAppsCache.read();
    const PolicyCache::Reading muted = mutedNotifAppsCache.read();
    const PolicyCache::Reading hidden = g_hiddenApps.read();
    return decideNotification(identifier, road, { blocked.list(), muted.list(), hidden.list() }, sectionText);
}

bool ALIsNotificationBlocked(const id& object)
{
    return notificationVerdict(object, NotificationRoad::Bulletin).outcome == NotificationOutcome::Drop;
}

bool ALIsNotificationMuted(const id& object)
{
    const auto identifier = asString(ALExtractNotificationBundleID(object));
    return identifier && mutedNotifAppsCache.contains(*identifier);
}

void ALStripNotificationSound(const id& object)
{
    ask<"setSound:", void>(object, nil);
    ask<"setSound:", void>(askObject<"bulletin">(object), nil);
}

} // namespace appledger
