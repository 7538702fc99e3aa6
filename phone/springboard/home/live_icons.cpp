#include "phone/springboard/home/live_icons.h"

#include "phone/springboard/icons/icon_list.h"
#include "phone/system/wall_clock.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <memory>

namespace phone {

using namespace platform;

namespace {

/// The system's news of its own, with the icon that has changed.
void tellOfChange(const id& icon)
{
    ask<"iconImageDidUpdate:", void>(icon, icon);
}

id applicationIcon(const char* identifier)
{
    return send<"applicationIconForBundleIdentifier:">(iconModel(), string(identifier));
}

void tellOfDay()
{
    tellOfChange(applicationIcon("com.apple.mobilecal"));
    const id icons = send<"leafIcons">(iconModel());
    for (const id& icon : itemsOf(icons))
        if (isKindOfClass(icon, classNamed<"SBWidgetIcon">()))
            tellOfChange(icon);
}

} // namespace

void keepLiveIcons()
{
    const LocalTime begin = localTime();
    everyMinute([shown = std::make_shared<LocalTime>(begin)] {
        const LocalTime now = localTime();
        if (now.minute != shown->minute || now.hour != shown->hour)
            tellOfChange(applicationIcon("com.apple.mobiletimer"));
        if (now.day != shown->day)
            tellOfDay();
        *shown = now;
    });
}

} // namespace phone
