#include "icons/custom_icon.h"
#include "icons/fallback.h"
#include "icons/icon_hooks_elsewhere.h"
#include "icons/screen_scale.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace appledger {

using namespace platform;

namespace {

std::optional<StringValue> applicationOf(const id& request)
{
    if (const auto section = ask<"sectionIdentifier">(request); section && *section)
        return asString(*section);
    return asString(ask<"notificationIdentifier">(request));
}

CGSize sizeOfFirst(const id& images)
{
    constexpr CGSize usual { 38, 38 };
    const ArrayValue items = itemsOf(images);
    return items.empty() || !isKindOfClass(items[0], classNamed<"UIImage">())
        ? usual
        : ask<"size", CGSize>(items[0]).value_or(usual);
}

struct Icons : Hook<Icons, "NCNotificationRequestContentProvider", "icons", id()> {
    static id replacement(const id& self, SEL cmd)
    {
        const id systems = systemsAnswer([&] { return original(self, cmd); });
        return orElse(systems, [&]() -> std::optional<id> {
            const auto identifier = applicationOf(askObject<"notificationRequest">(self));
            if (!identifier)
                return std::nullopt;
            // All banners of an application share one image: the key has no size.
            auto custom = customIconElsewhere(
                *identifier, iconKey(*identifier, "notif"), sizeOfFirst(systems), mainScreenScale());
            return custom && *custom ? std::optional(array(std::vector { std::move(*custom) })) : std::nullopt;
        });
    }
};

constexpr HookRow rows[] { Icons::row() };

} // namespace

const HookGroup NotificationHooks_iOS15 { "NotificationHooks_iOS15", rows };

} // namespace appledger
