#include "phone/iconservices/icon_pictures.h"
#include "phone/springboard/icons/icon_image_info.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// A widget of two by two places, which shows the day.
class SBWidgetIcon : public NSObject {
public:
    id leafIdentifier;

    id displayName() const { return string("Up Next"); }
    id image(SBIconImageInfo info) const { return pictureOfWidget(info.size); }
    bool isUninstallSupported() const { return false; } // it isn't an application
    bool isVisible() const { return true; }
};

constexpr MethodDefinition methods[] {
    method<"displayName", &SBWidgetIcon::displayName>(),
    method<"generateIconImageWithInfo:", &SBWidgetIcon::image>(),
    method<"isUninstallSupported", &SBWidgetIcon::isUninstallSupported>(),
    method<"isVisible", &SBWidgetIcon::isVisible>(),
    getter<"leafIdentifier", &SBWidgetIcon::leafIdentifier>(),
    setter<"setLeafIdentifier:", &SBWidgetIcon::leafIdentifier>(),
    method<"unmaskedIconImageWithInfo:", &SBWidgetIcon::image>(),
};

} // namespace

extern const ClassDefinition SBLeafIcon_class;
extern const ClassDefinition SBWidgetIcon_class { .name = "SBWidgetIcon",
    .superclass = &SBLeafIcon_class,
    .allocate = allocate<SBWidgetIcon>,
    .methods = methods,
    .versions = { .first = 14 } };

} // namespace phone
