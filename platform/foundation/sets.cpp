#include "platform/foundation/value_objects.h"

#include <algorithm>

namespace platform {

namespace detail {

namespace {

id Set_self(const id& self, SEL)
{
    return self;
}

id Set_set(const id& self, SEL)
{
    return id::adopt(static_cast<ClassObject&>(*self).allocate());
}

constexpr MethodDefinition setMethods[] {
    method<"allObjects", &Set::allObjects>(),
    method<"anyObject", &Set::anyObject>(),
    method<"containsObject:", &Set::containsObject>(),
    method<"copy", &Set_self>(),
    method<"count", &Set::count>(),
    method<"member:", &Set::member>(),
    method<"mutableCopy", &Set::mutableCopy>(),
    classMethod<"set", &Set_set>(),
};

constexpr MethodDefinition mutableSetMethods[] {
    method<"addObject:", &MutableSet::addObject>(),
    method<"copy", &MutableSet::copy>(),
    method<"removeAllObjects", &MutableSet::removeAllObjects>(),
    method<"removeObject:", &MutableSet::removeObject>(),
};

const Set* setIn(const id& object) noexcept
{
    if (const auto* const found = exactly<Set>(object))
        return found;
    return exactly<MutableSet>(object);
}

} // namespace

const ClassDefinition Set::definition { .name = "NSSet", .allocate = allocate<Set>, .methods = setMethods };
const ClassDefinition MutableSet::definition { .name = "NSMutableSet",
    .superclass = &Set::definition,
    .allocate = allocate<MutableSet>,
    .methods = mutableSetMethods };

Set::Set(std::vector<id> items)
{
    items_.reserve(items.size());
    for (const id& item : items)
        if (item)
            add(item);
}

bool Set::isEqualTo(const NSObject& other) const noexcept
{
    const auto* const set = dynamic_cast<const Set*>(&other);
    return set && set->items_.size() == items_.size()
        && std::ranges::all_of(items_, [&](const id& item) { return set->containsObject(item); });
}

std::size_t Set::find(const id& object) const
{
    return index_.find(hashOfObject(object), [&](std::size_t position) { return isEqual(items_[position], object); });
}

void Set::add(const id& object)
{
    if (find(object) != HashIndex::npos)
        return;
    items_.push_back(object);
    index_.append(hashOfObject(object));
}

bool Set::containsObject(const id& object) const
{
    return object && find(object) != HashIndex::npos;
}

id Set::member(const id& object) const
{
    const std::size_t position = object ? find(object) : HashIndex::npos;
    return position != HashIndex::npos ? items_[position] : nil;
}

id Set::allObjects() const
{
    return array(items_);
}

id Set::mutableCopy() const
{
    return make<MutableSet>(items_);
}

id MutableSet::copy() const
{
    return make<Set>(items_);
}

void MutableSet::addObject(const id& object)
{
    requireObject(object, "addObject:");
    add(object);
}

void MutableSet::removeObject(const id& object)
{
    const std::size_t position = object ? find(object) : HashIndex::npos;
    if (position == HashIndex::npos)
        return;
    const id removed = std::move(items_[position]);
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(position));
    index_.erase(position);
}

void MutableSet::removeAllObjects()
{
    std::vector<id> removed;
    items_.swap(removed);
    index_.clear();
}

} // namespace detail

id set(std::vector<id> items)
{
    return make<detail::Set>(std::move(items));
}

id mutableSet(std::vector<id> items)
{
    return make<detail::MutableSet>(std::move(items));
}

std::optional<ArrayValue> asSet(const id& object)
{
    const detail::Set* const found = detail::setIn(object);
    return found ? std::optional<ArrayValue>(std::in_place, object, found->items()) : std::nullopt;
}

ArrayValue itemsOf(const id& collection)
{
    if (auto items = asArray(collection))
        return *items;
    return asSet(collection).value_or(ArrayValue(nil, {}));
}

} // namespace platform
