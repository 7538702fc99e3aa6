#pragma once

#include "platform/runtime/object.h"

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The values that preferences, property lists and messages are made of: strings, numbers, arrays,
/// dictionaries, sets, data and dates. Each is an object whose C++ class stays hidden: code makes values
/// with the functions of this header, and asks of any object what it is. Asking never raises: nil, and an
/// object of another kind, give an empty optional.
///
/// Immutable values may be read from any thread. Mutable ones belong to one thread at a time.

namespace platform {

/// A string that was found in an object, which it keeps alive. UTF-8.
class StringValue {
public:
    StringValue(id object, std::string_view text) noexcept
        : object_(std::move(object))
        , text_(text)
    {
    }

    std::string_view view() const noexcept { return text_; }
    operator std::string_view() const noexcept { return text_; }
    std::string text() const { return std::string(text_); }
    bool empty() const noexcept { return text_.empty(); }
    const id& object() const noexcept { return object_; }

    friend bool operator==(const StringValue& left, std::string_view right) noexcept { return left.text_ == right; }
    friend bool operator==(const StringValue& left, const StringValue& right) noexcept
    {
        return left.text_ == right.text_;
    }

private:
    id object_;
    std::string_view text_;
};

/// An NSString of that text. Bytes that aren't UTF-8 become U+FFFD, one for each.
id string(std::string_view text);
std::optional<StringValue> asString(const id& object);
std::optional<StringValue> asString(const std::optional<id>& object);

/// An NSNumber. A number remembers whether it was made of a bool, an integer or a real, as a property
/// list does; equality is by value alone.
id boolean(bool value);
id number(std::int64_t value);
id real(double value);
inline id number(int value)
{
    return number(static_cast<std::int64_t>(value));
}

enum class NumberKind { Boolean, Integer, Real };

/// Any number, converted: a real to an integer towards zero (held to the range of 64 bits, a NaN to 0),
/// a number to a bool as whether it isn't zero.
std::optional<NumberKind> numberKind(const id& object);
std::optional<bool> asBool(const id& object);
std::optional<std::int64_t> asInteger(const id& object);
std::optional<double> asDouble(const id& object);

/// `boolValue`: of a number whether it isn't zero; of a string whether, after white space, a sign and
/// zeros, it goes on with a digit from 1 to 9 or with one of "YyTt"; of anything else, and of nil, false.
bool boolValue(const id& object);

/// What `indexOfObject:` answers when there is none.
constexpr unsigned long NSNotFound = 0x7FFFFFFFFFFFFFFF;

/// The items of an array, which it keeps alive. Of a mutable array: as they stand until it is changed.
class ArrayValue {
public:
    ArrayValue(id object, std::span<const id> items) noexcept
        : object_(std::move(object))
        , items_(items)
    {
    }

    std::size_t size() const noexcept { return items_.size(); }
    bool empty() const noexcept { return items_.empty(); }
    const id& operator[](std::size_t index) const noexcept { return items_[index]; }
    const id* begin() const noexcept { return items_.data(); }
    const id* end() const noexcept { return items_.data() + items_.size(); }

    /// `containsObject:`, by isEqual() from the first item on.
    bool contains(const id& object) const;
    bool contains(std::string_view text) const;
    const id& object() const noexcept { return object_; }

private:
    id object_;
    std::span<const id> items_;
};

/// An immutable NSArray. Nil items are left out.
id array(std::vector<id> items);
id array(std::initializer_list<std::string_view> texts);
const id& emptyArray();
std::optional<ArrayValue> asArray(const id& object);

/// The pairs of a dictionary in the order in which the keys were added; keeps it alive. Keys are objects;
/// those of a property list are strings. Of a mutable dictionary: as they stand until it is changed.
class DictionaryValue {
public:
    using Pair = std::pair<id, id>;
    DictionaryValue(id object, std::span<const Pair> pairs) noexcept
        : object_(std::move(object))
        , pairs_(pairs)
    {
    }

    std::size_t size() const noexcept { return pairs_.size(); }
    bool empty() const noexcept { return pairs_.empty(); }
    const Pair* begin() const noexcept { return pairs_.data(); }
    const Pair* end() const noexcept { return pairs_.data() + pairs_.size(); }

    /// The value under that key, or nil. Constant time.
    id operator[](std::string_view key) const;
    id operator[](const id& key) const;
    const id& object() const noexcept { return object_; }

private:
    id object_;
    std::span<const Pair> pairs_;
};

/// An immutable NSDictionary; of two equal keys the later value stands. Pairs with a nil are left out.
id dictionary(std::vector<std::pair<id, id>> pairs);
id dictionary(std::initializer_list<std::pair<std::string_view, id>> pairs);
std::optional<DictionaryValue> asDictionary(const id& object);

/// The dictionary with one pair set (`value` not nil) or removed (nil): a new immutable one.
id dictionaryBySetting(const id& dictionary, std::string_view key, const id& value);

/// An immutable NSSet; of equal items the first stands. Order as given.
id set(std::vector<id> items);
std::optional<ArrayValue> asSet(const id& object);

id data(std::string_view bytes);
/// The same for who has no more use for the bytes: nothing is copied.
id dataTaking(std::string bytes);
std::optional<StringValue> asData(const id& object);

/// Seconds since 2001-01-01 00:00:00 UTC, the platform's reference date.
id date(double secondsSinceReferenceDate);
std::optional<double> asDate(const id& object);

/// The mutable kinds, as the system hands them out: NSMutableArray, NSMutableDictionary, NSMutableSet
/// answer the mutating selectors (`addObject:`, `removeObject:`, `setObject:forKey:`, …) besides those of
/// the immutable kind, and are read with the same functions. As the system's, they raise
/// NSInvalidArgumentException when they are sent a nil to hold, and NSRangeException for an index that
/// isn't there.
id mutableArray(std::vector<id> items = {});
id mutableDictionary(std::vector<std::pair<id, id>> pairs = {});
id mutableSet(std::vector<id> items = {});

/// The items of an array or a set, and the pairs of a dictionary, for a loop; none for anything else. (A loop
/// over `*asArray(object)` would read the items after the optional that keeps them has gone.)
ArrayValue itemsOf(const id& collection);
DictionaryValue pairsOf(const id& dictionary);

/// For people and tests: strings quoted, ["a", 2, true] for an array, {"key": 1.5} for a dictionary,
/// {"a", "b"} for a set, any other object as <ClassName>, nil as nil.
std::string describe(const id& object);

} // namespace platform
