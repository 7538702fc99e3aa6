#include "phone/springboard/home/home_screen.h"
#include "phone/springboard/icons/removal.h"
#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// What lays the icons of the model out, and takes them away.
class SBHIconManager : public NSObject {
public:
    id iconModel;
    const id iconImageCache = send<"new">(id(classNamed<"SBHIconImageCache">()));
    id iconLabelImageCache = send<"new">(id(classNamed<"SBHIconLabelImageCache">()));

    id imageCache() const { return iconImageCache; }

    void uninstallWithCompletion(const id& icon, bool, const id& completion)
    {
        const bool removed = removeApplicationOfIcon(icon);
        if (completion)
            callBlock<void>(completion, removed);
    }

    void uninstallAnimated(const id& icon, bool) { removeApplicationOfIcon(icon); }

    void uninstall(const id& icon) { removeApplicationOfIcon(icon); }
};

void enumerateKnown(const id&, SEL, const id& block)
{
    forEachKnownIconView([&](const id& view) { callBlock(block, view); });
}

void enumerateDisplayed(const id&, SEL, const id& block)
{
    forEachDisplayedIconView([&](const id& view) { callBlock(block, view); });
}

/// Moves nothing here, whatever the kind of animation.
void layoutIconLists(const id&, SEL, NSInteger, bool force)
{
    if (force)
        forEachKnownIconView([](const id& view) { send<"setNeedsLayout", void>(view); });
    layOutHomeScreen();
}

constexpr MethodDefinition methods[] {
    method<"enumerateDisplayedIconViewsUsingBlock:", &enumerateDisplayed>(),
    method<"enumerateKnownIconViewsUsingBlock:", &enumerateKnown>(),
    method<"iconImageCache", &SBHIconManager::imageCache>(),
    getter<"iconLabelImageCache", &SBHIconManager::iconLabelImageCache>(),
    getter<"iconModel", &SBHIconManager::iconModel>(),
    method<"layoutIconListsWithAnimationType:forceRelayout:", &layoutIconLists>(),
    setter<"setIconModel:", &SBHIconManager::iconModel>(),
    method<"uninstallIcon:", &SBHIconManager::uninstall>(),
    method<"uninstallIcon:animate:", &SBHIconManager::uninstallAnimated>(),
    method<"uninstallIcon:animate:completion:", &SBHIconManager::uninstallWithCompletion>(),
};

} // namespace

extern const ClassDefinition SBHIconManager_class {
    .name = "SBHIconManager", .allocate = allocate<SBHIconManager>, .methods = methods, .versions = { .first = 13 }
};

} // namespace phone
