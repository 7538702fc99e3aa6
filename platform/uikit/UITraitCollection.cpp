#include "platform/runtime/message.h"
#include "platform/uikit/views.h"
#include "platform/uikit/window.h"

namespace platform {

namespace {

/// The environment in which things are shown: here the screen's, the same for all.
class TraitCollectionObject : public NSObject {
public:
    NSInteger userInterfaceStyle() const { return static_cast<NSInteger>(screenFacts().style); }
    double displayScale() const { return screenFacts().scale; }
};

id currentTraitCollection(const id& self, SEL)
{
    static NSObject* const traits = send<"new">(self).leak();
    return traits;
}

constexpr MethodDefinition methods[] {
    classMethod<"currentTraitCollection", &currentTraitCollection>(),
    method<"displayScale", &TraitCollectionObject::displayScale>(),
    method<"userInterfaceStyle", &TraitCollectionObject::userInterfaceStyle>().since(12),
};

} // namespace

const ClassDefinition UITraitCollection_class {
    .name = "UITraitCollection", .allocate = allocate<TraitCollectionObject>, .methods = methods
};

} // namespace platform
