#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// An entry of an icon's quick-action menu.
class SBSApplicationShortcutItem : public NSObject {
public:
    id type;
    id localizedTitle;
    id bundleIdentifierToLaunch;
};

constexpr MethodDefinition methods[] {
    getter<"bundleIdentifierToLaunch", &SBSApplicationShortcutItem::bundleIdentifierToLaunch>(),
    getter<"localizedTitle", &SBSApplicationShortcutItem::localizedTitle>(),
    setter<"setBundleIdentifierToLaunch:", &SBSApplicationShortcutItem::bundleIdentifierToLaunch>(),
    setter<"setLocalizedTitle:", &SBSApplicationShortcutItem::localizedTitle>(),
    setter<"setType:", &SBSApplicationShortcutItem::type>(),
    getter<"type", &SBSApplicationShortcutItem::type>(),
};

} // namespace

extern const ClassDefinition SBSApplicationShortcutItem_class {
    .name = "SBSApplicationShortcutItem", .allocate = allocate<SBSApplicationShortcutItem>, .methods = methods
};

} // namespace phone
