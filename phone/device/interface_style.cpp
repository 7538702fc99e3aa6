#include "phone/device/interface_style.h"

#include "platform/foundation/user_defaults.h"
#include "platform/foundation/values.h"

namespace phone {

using namespace platform;

namespace {

constexpr std::string_view suite = "com.apple.uikitservices.userInterfaceStyleMode";
constexpr std::string_view key = "UserInterfaceStyleMode";

} // namespace

InterfaceStyle interfaceStyle()
{
    return NSUserDefaults::suite(suite)->integerForKey(key) == static_cast<std::int64_t>(InterfaceStyle::Dark)
        ? InterfaceStyle::Dark
        : InterfaceStyle::Light;
}

bool setInterfaceStyle(InterfaceStyle style)
{
    const auto isKept = NSUserDefaults::suite(suite)->change(
        key, [style](const id&) { return std::optional(number(static_cast<std::int64_t>(style))); });
    if (!isKept.isDone())
        return false;
    showInterfaceStyle();
    return true;
}

void showInterfaceStyle()
{
    setScreenStyle(interfaceStyle());
}

} // namespace phone
