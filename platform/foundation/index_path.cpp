#include "platform/foundation/index_path.h"

#include "platform/foundation/value_objects.h"

#include <compare>

namespace platform {

namespace detail {

namespace {

/// The way to a place in nested lists: in a table its section, and the row there.
class IndexPath final : public NSObject {
public:
    static constexpr const ClassDefinition& definition = NSIndexPath_class;

    std::vector<NSUInteger> indexes {};

    bool isEqualTo(const NSObject& other) const noexcept override
    {
        const auto* const path = dynamic_cast<const IndexPath*>(&other);
        return path && path->indexes == indexes;
    }
    std::size_t hashValue() const noexcept override
    {
        std::size_t hash = indexes.size();
        for (const NSUInteger index : indexes)
            hash = hash * 1000003 + index;
        return hash;
    }

    NSUInteger length() const noexcept { return indexes.size(); }
    NSUInteger indexAtPosition(NSUInteger position) const
    {
        return position < indexes.size() ? indexes[position] : NSNotFound;
    }
    NSInteger section() const { return static_cast<NSInteger>(indexAtPosition(0)); }
    NSInteger row() const { return static_cast<NSInteger>(indexAtPosition(1)); }

    NSInteger compare(const id& other) const
    {
        const auto* const path = as<IndexPath>(other);
        if (!path)
            return 0;
        const auto order = indexes <=> path->indexes;
        return order < 0 ? -1 : order > 0 ? 1 : 0;
    }

    id indexPathByAddingIndex(NSUInteger index) const
    {
        Ref<IndexPath> longer = make<IndexPath>();
        longer->indexes = indexes;
        longer->indexes.push_back(index);
        return longer;
    }
};

id pathOf(std::vector<NSUInteger> indexes)
{
    Ref<IndexPath> path = make<IndexPath>();
    path->indexes = std::move(indexes);
    return path;
}

id indexPathForRow(const id&, SEL, NSInteger row, NSInteger section)
{
    return pathOf({ static_cast<NSUInteger>(section), static_cast<NSUInteger>(row) });
}

id indexPathWithIndex(const id&, SEL, NSUInteger index)
{
    return pathOf({ index });
}

constexpr MethodDefinition methods[] {
    method<"compare:", &IndexPath::compare>(),
    method<"indexAtPosition:", &IndexPath::indexAtPosition>(),
    method<"indexPathByAddingIndex:", &IndexPath::indexPathByAddingIndex>(),
    classMethod<"indexPathForItem:inSection:", &indexPathForRow>(),
    classMethod<"indexPathForRow:inSection:", &indexPathForRow>(),
    classMethod<"indexPathWithIndex:", &indexPathWithIndex>(),
    method<"item", &IndexPath::row>(),
    method<"length", &IndexPath::length>(),
    method<"row", &IndexPath::row>(),
    method<"section", &IndexPath::section>(),
};

} // namespace

const ClassDefinition NSIndexPath_class { .name = "NSIndexPath", .allocate = allocate<IndexPath>, .methods = methods };

} // namespace detail

id indexPath(std::size_t section, std::size_t row)
{
    return detail::pathOf({ section, row });
}

std::optional<IndexPathValue> asIndexPath(const id& object)
{
    const auto* const path = as<detail::IndexPath>(object);
    if (!path || path->indexes.size() != 2)
        return std::nullopt;
    return IndexPathValue { path->indexes[0], path->indexes[1] };
}

} // namespace platform
