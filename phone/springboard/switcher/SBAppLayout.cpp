#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// The applications that share one card of the switcher, each once, the primary one first.
class SBAppLayout : public NSObject {
public:
    id bundleIdentifiers;
    id rolesToItems; ///< dictionary, number to SBDisplayItem; the primary role is 1

    void setBundleIdentifiers(const id& identifiers)
    {
        const ArrayValue given = itemsOf(identifiers);
        const id once = set({ given.begin(), given.end() });
        bundleIdentifiers = send<"allObjects">(once);
        std::vector<std::pair<id, id>> roles;
        for (const id& identifier : itemsOf(once)) {
            id item = send<"new">(id(classNamed<"SBDisplayItem">()));
            send<"setBundleIdentifier:", void>(item, identifier);
            roles.emplace_back(number(static_cast<int>(roles.size()) + 1), std::move(item));
        }
        rolesToItems = dictionary(std::move(roles));
    }

    /// Each item with what the layout says of it: its role.
    id itemsToLayoutAttributesMap() const
    {
        std::vector<std::pair<id, id>> items;
        for (const auto& [role, item] : pairsOf(rolesToItems))
            items.emplace_back(item, role);
        return dictionary(std::move(items));
    }

    bool containsItem(const id& identifier) const
    {
        const auto identifiers = asArray(bundleIdentifiers);
        return identifiers && identifiers->contains(identifier);
    }
};

constexpr MethodDefinition methods[] {
    getter<"bundleIdentifiers", &SBAppLayout::bundleIdentifiers>(),
    method<"containsItemWithBundleIdentifier:", &SBAppLayout::containsItem>(),
    method<"itemsToLayoutAttributesMap", &SBAppLayout::itemsToLayoutAttributesMap>().since(16),
    method<"setBundleIdentifiers:", &SBAppLayout::setBundleIdentifiers>(),
};

constexpr InstanceVariableDefinition instanceVariables[] {
    instanceVariable<"_rolesToLayoutItemsMap", &SBAppLayout::rolesToItems>(),
};

} // namespace

extern const ClassDefinition SBAppLayout_class {
    .name = "SBAppLayout", .allocate = allocate<SBAppLayout>, .methods = methods, .instanceVariables = instanceVariables
};

} // namespace phone
