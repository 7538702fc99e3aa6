#include "phone/springboard/home/home_screen.h"
#include "platform/foundation/block.h"
#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// What lays the icons of the model out.
class SBHIconManager : public NSObject {
public:
    id iconModel;
};

void enumerateKnown(const id&, SEL, const id& block)
{
    forEachKnownIconView([&](const id& view) { callBlock(block, view); });
}

void enumerateDisplayed(const id&, SEL, const id& block)
{
    forEachDisplayedIconView([&](const id& view) { callBlock(block, view); });
}

constexpr MethodDefinition methods[] {
    method<"enumerateDisplayedIconViewsUsingBlock:", &enumerateDisplayed>(),
    method<"enumerateKnownIconViewsUsingBlock:", &enumerateKnown>(),
    getter<"iconModel", &SBHIconManager::iconModel>(),
    setter<"setIconModel:", &SBHIconManager::iconModel>(),
};

} // namespace

extern const ClassDefinition SBHIconManager_class {
    .name = "SBHIconManager", .allocate = allocate<SBHIconManager>, .methods = methods, .versions = { .first = 13 }
};

} // namespace phone
