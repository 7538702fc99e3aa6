#include "platform/foundation/index_set.h"

#include "platform/foundation/value_objects.h"

namespace platform {

namespace detail {

namespace {

class IndexSet final : public NSObject {
public:
    static constexpr const ClassDefinition& definition = NSIndexSet_class;

    std::set<NSUInteger> indexes {};

    bool isEqualTo(const NSObject& other) const noexcept override
    {
        const auto* const same = dynamic_cast<const IndexSet*>(&other);
        return same && same->indexes == indexes;
    }
    std::size_t hashValue() const noexcept override { return indexes.size(); }

    NSUInteger count() const noexcept { return indexes.size(); }
    bool containsIndex(NSUInteger index) const { return indexes.contains(index); }
    NSUInteger firstIndex() const { return indexes.empty() ? NSNotFound : *indexes.begin(); }
    NSUInteger lastIndex() const { return indexes.empty() ? NSNotFound : *indexes.rbegin(); }
};

id none(const id&, SEL)
{
    return indexSet({});
}

id withIndex(const id&, SEL, NSUInteger index)
{
    return indexSet({ index });
}

id withRange(const id&, SEL, NSRange range)
{
    std::set<NSUInteger> indexes;
    for (NSUInteger offset = 0; offset < range.length; ++offset)
        indexes.insert(indexes.end(), range.location + offset);
    return indexSet(std::move(indexes));
}

constexpr MethodDefinition methods[] {
    method<"containsIndex:", &IndexSet::containsIndex>(),
    method<"count", &IndexSet::count>(),
    method<"firstIndex", &IndexSet::firstIndex>(),
    classMethod<"indexSet", &none>(),
    classMethod<"indexSetWithIndex:", &withIndex>(),
    classMethod<"indexSetWithIndexesInRange:", &withRange>(),
    method<"lastIndex", &IndexSet::lastIndex>(),
};

} // namespace

const ClassDefinition NSIndexSet_class { .name = "NSIndexSet", .allocate = allocate<IndexSet>, .methods = methods };

} // namespace detail

id indexSet(std::set<NSUInteger> indexes)
{
    Ref<detail::IndexSet> made = make<detail::IndexSet>();
    made->indexes = std::move(indexes);
    return made;
}

std::set<NSUInteger> indexesOf(const id& object)
{
    const auto* const found = as<detail::IndexSet>(object);
    return found ? found->indexes : std::set<NSUInteger>();
}

} // namespace platform
