#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// Something in the store's views. It is asked for its properties by their paths, and for nothing else.
class SKUIItem : public NSObject {
public:
    id properties;

    id valueForProperty(const id& path) const { return pairsOf(properties)[path]; }
};

constexpr MethodDefinition methods[] {
    setter<"setProperties:", &SKUIItem::properties>(),
    method<"valueForProperty:", &SKUIItem::valueForProperty>(),
};

} // namespace

extern const ClassDefinition SKUIItem_class { .name = "SKUIItem", .allocate = allocate<SKUIItem>, .methods = methods };

} // namespace phone
