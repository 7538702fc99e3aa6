#include "platform/foundation/value_objects.h"
#include "platform/runtime/exception.h"

#include <algorithm>

namespace platform {

namespace detail {

namespace {

std::ptrdiff_t offset(std::size_t index) noexcept
{
    return static_cast<std::ptrdiff_t>(index);
}

id Array_self(const id& self, SEL)
{
    return self;
}

id Array_array(const id& self, SEL)
{
    return id::adopt(static_cast<ClassObject&>(*self).allocate());
}

constexpr MethodDefinition arrayMethods[] {
    classMethod<"array", &Array_array>(),
    method<"arrayByAddingObject:", &Array::arrayByAddingObject>(),
    method<"arrayByAddingObjectsFromArray:", &Array::arrayByAddingObjectsFromArray>(),
    method<"containsObject:", &Array::containsObject>(),
    method<"copy", &Array_self>(),
    method<"count", &Array::count>(),
    method<"firstObject", &Array::firstObject>(),
    method<"indexOfObject:", &Array::indexOfObject>(),
    method<"lastObject", &Array::lastObject>(),
    method<"mutableCopy", &Array::mutableCopy>(),
    method<"objectAtIndex:", &Array::objectAtIndex>(),
    method<"objectAtIndexedSubscript:", &Array::objectAtIndex>(),
};

constexpr MethodDefinition mutableArrayMethods[] {
    method<"addObject:", &MutableArray::addObject>(),
    method<"addObjectsFromArray:", &MutableArray::addObjectsFromArray>(),
    method<"copy", &MutableArray::copy>(),
    method<"insertObject:atIndex:", &MutableArray::insertObjectAtIndex>(),
    method<"removeAllObjects", &MutableArray::removeAllObjects>(),
    method<"removeLastObject", &MutableArray::removeLastObject>(),
    method<"removeObject:", &MutableArray::removeObject>(),
    method<"removeObjectAtIndex:", &MutableArray::removeObjectAtIndex>(),
    method<"replaceObjectAtIndex:withObject:", &MutableArray::replaceObjectAtIndex>(),
};

} // namespace

const ClassDefinition Array::definition { .name = "NSArray", .allocate = allocate<Array>, .methods = arrayMethods };
const ClassDefinition MutableArray::definition { .name = "NSMutableArray",
    .superclass = &Array::definition,
    .allocate = allocate<MutableArray>,
    .methods = mutableArrayMethods };

void requireObject(const id& argument, const char* message)
{
    if (!argument)
        throw NSException("NSInvalidArgumentException", std::string(message) + " was sent a nil");
}

void raiseRange(std::size_t index, std::size_t count)
{
    throw NSException(
        "NSRangeException", "index " + std::to_string(index) + " of an array of " + std::to_string(count));
}

const Array* arrayIn(const id& object) noexcept
{
    if (const auto* const found = exactly<Array>(object))
        return found;
    return exactly<MutableArray>(object);
}

bool Array::isEqualTo(const NSObject& other) const noexcept
{
    const auto* const array = dynamic_cast<const Array*>(&other);
    return array && std::ranges::equal(items_, array->items_, [](const id& a, const id& b) { return isEqual(a, b); });
}

id Array::objectAtIndex(NSUInteger index) const
{
    if (index >= items_.size())
        raiseRange(index, items_.size());
    return items_[index];
}

bool Array::containsObject(const id& object) const
{
    return indexOfObject(object) != NSNotFound;
}

NSUInteger Array::indexOfObject(const id& object) const
{
    for (std::size_t index = 0; object && index < items_.size(); ++index)
        if (isEqual(items_[index], object))
            return index;
    return NSNotFound;
}

id Array::arrayByAddingObject(const id& object) const
{
    requireObject(object, "arrayByAddingObject:");
    std::vector<id> items(items_);
    items.push_back(object);
    return make<Array>(std::move(items));
}

id Array::arrayByAddingObjectsFromArray(const id& others) const
{
    std::vector<id> items(items_);
    if (const Array* const more = arrayIn(others))
        items.insert(items.end(), more->items_.begin(), more->items_.end());
    return make<Array>(std::move(items));
}

id Array::mutableCopy() const
{
    return make<MutableArray>(items_);
}

id MutableArray::copy() const
{
    return make<Array>(items_);
}

void MutableArray::addObject(const id& object)
{
    requireObject(object, "addObject:");
    items_.push_back(object);
}

void MutableArray::addObjectsFromArray(const id& others)
{
    if (const Array* const more = arrayIn(others)) {
        const std::vector<id> added(more->items());
        items_.insert(items_.end(), added.begin(), added.end());
    }
}

void MutableArray::insertObjectAtIndex(const id& object, NSUInteger index)
{
    requireObject(object, "insertObject:atIndex:");
    if (index > items_.size())
        raiseRange(index, items_.size());
    items_.insert(items_.begin() + offset(index), object);
}

void MutableArray::replaceObjectAtIndex(NSUInteger index, const id& object)
{
    requireObject(object, "replaceObjectAtIndex:withObject:");
    if (index >= items_.size())
        raiseRange(index, items_.size());
    items_[index] = object;
}

// What is removed is held until the list is whole again: its `dealloc` may use this array.

void MutableArray::removeObject(const id& object)
{
    const id wanted = object;
    std::vector<id> removed;
    std::vector<id> kept;
    for (const id& item : items_)
        (isEqual(item, wanted) ? removed : kept).push_back(item);
    items_.swap(kept);
}

void MutableArray::removeObjectAtIndex(NSUInteger index)
{
    if (index >= items_.size())
        raiseRange(index, items_.size());
    const id removed = std::move(items_[index]);
    items_.erase(items_.begin() + offset(index));
}

void MutableArray::removeLastObject()
{
    if (items_.empty())
        raiseRange(0, 0);
    removeObjectAtIndex(items_.size() - 1);
}

void MutableArray::removeAllObjects()
{
    std::vector<id> removed;
    items_.swap(removed);
}

} // namespace detail

id array(std::vector<id> items)
{
    std::erase(items, nil);
    return make<detail::Array>(std::move(items));
}

id array(std::initializer_list<std::string_view> texts)
{
    std::vector<id> items;
    items.reserve(texts.size());
    for (const std::string_view text : texts)
        items.push_back(string(text));
    return make<detail::Array>(std::move(items));
}

const id& emptyArray()
{
    static const id empty = make<detail::Array>();
    return empty;
}

id mutableArray(std::vector<id> items)
{
    std::erase(items, nil);
    return make<detail::MutableArray>(std::move(items));
}

std::optional<ArrayValue> asArray(const id& object)
{
    const detail::Array* const found = detail::arrayIn(object);
    return found ? std::optional<ArrayValue>(std::in_place, object, found->items()) : std::nullopt;
}

bool ArrayValue::contains(const id& object) const
{
    return object && std::ranges::any_of(items_, [&](const id& item) { return isEqual(item, object); });
}

bool ArrayValue::contains(std::string_view text) const
{
    return std::ranges::any_of(items_, [&](const id& item) {
        const auto* const candidate = detail::exactly<detail::String>(item);
        return candidate && candidate->text == text;
    });
}

} // namespace platform
