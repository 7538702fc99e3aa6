#pragma once

#include "platform/foundation/hash_index.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/encoding.h"

#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

/// The C++ classes behind the values, for the files of this folder alone.

namespace platform::detail {

extern const ClassDefinition NSByteCountFormatter_class;
extern const ClassDefinition NSCharacterSet_class;
extern const ClassDefinition NSNotificationCenter_class;
extern const ClassDefinition NSNotification_class;
extern const ClassDefinition NSNumber_class;
extern const ClassDefinition NSData_class;
extern const ClassDefinition NSDate_class;
extern const ClassDefinition NSError_class;
extern const ClassDefinition NSIndexPath_class;
extern const ClassDefinition NSIndexSet_class;
extern const ClassDefinition NSURL_class;

/// `stringByAddingPercentEncodingWithAllowedCharacters:`. Nil for what is no NSCharacterSet.
id percentEncoded(std::string_view text, const id& allowed);

/// The object as `T` when that is its very C++ class; cheaper than as().
template <class T> const T* exactly(const id& object)
{
    const NSObject* const candidate = object.get();
    return candidate && typeid(*candidate) == typeid(T) ? static_cast<const T*>(candidate) : nullptr;
}

/// Raises NSInvalidArgumentException when an argument that must be an object is nil.
void requireObject(const id& argument, const char* message);

[[noreturn]] void raiseRange(std::size_t index, std::size_t count);

/// A number is read from the start of the text, after white space and a sign, as far as it goes; 0 when
/// there is none. Integers are held to the range of 64 bits.
std::int64_t integerFromText(std::string_view text);
double doubleFromText(std::string_view text);

/// The shortest decimal text that reads back as the same number; "1" or "0" for a bool.
std::string numberText(const id& number);

class String final : public NSObject {
public:
    static const ClassDefinition definition;
    String() = default;
    explicit String(std::string text)
        : text(std::move(text))
    {
    }

    bool isEqualTo(const NSObject& other) const noexcept override;
    std::size_t hashValue() const noexcept override { return hashOfText(text); }
    static std::size_t hashOfText(std::string_view text) noexcept { return std::hash<std::string_view> {}(text); }

    const std::string text;
};

class Array : public NSObject {
public:
    static const ClassDefinition definition;
    Array() = default;
    explicit Array(std::vector<id> items)
        : items_(std::move(items))
    {
    }

    bool isEqualTo(const NSObject& other) const noexcept override;
    std::size_t hashValue() const noexcept override { return items_.size(); }

    NSUInteger count() const noexcept { return items_.size(); }
    id objectAtIndex(NSUInteger index) const;
    id firstObject() const { return items_.empty() ? nil : items_.front(); }
    id lastObject() const { return items_.empty() ? nil : items_.back(); }
    bool containsObject(const id& object) const;
    NSUInteger indexOfObject(const id& object) const;
    id arrayByAddingObject(const id& object) const;
    id arrayByAddingObjectsFromArray(const id& others) const;
    id mutableCopy() const;

    const std::vector<id>& items() const noexcept { return items_; }

protected:
    std::vector<id> items_;
};

/// The array, mutable or not, that the object is; null for any other.
const Array* arrayIn(const id& object) noexcept;

class MutableArray final : public Array {
public:
    static const ClassDefinition definition;
    using Array::Array;

    id copy() const;
    void addObject(const id& object);
    void addObjectsFromArray(const id& others);
    void insertObjectAtIndex(const id& object, NSUInteger index);
    void replaceObjectAtIndex(NSUInteger index, const id& object);
    void removeObject(const id& object);
    void removeObjectAtIndex(NSUInteger index);
    void removeLastObject();
    void removeAllObjects();
};

class Dictionary : public NSObject {
public:
    using Pair = DictionaryValue::Pair;
    static const ClassDefinition definition;
    Dictionary() = default;
    explicit Dictionary(std::vector<Pair> pairs);

    bool isEqualTo(const NSObject& other) const noexcept override;
    std::size_t hashValue() const noexcept override { return pairs_.size(); }

    NSUInteger count() const noexcept { return pairs_.size(); }
    id objectForKey(const id& key) const;
    id objectForText(std::string_view key) const;
    id allKeys() const;
    id allValues() const;
    id mutableCopy() const;

    const std::vector<Pair>& pairs() const noexcept { return pairs_; }

protected:
    std::size_t find(const id& key) const;
    void set(const id& key, const id& value);

    std::vector<Pair> pairs_;
    HashIndex index_;
};

class MutableDictionary final : public Dictionary {
public:
    static const ClassDefinition definition;
    using Dictionary::Dictionary;

    id copy() const;
    void setObjectForKey(const id& value, const id& key);
    void setObjectForKeyedSubscript(const id& value, const id& key);
    void removeObjectForKey(const id& key);
    void removeAllObjects();
    void addEntriesFromDictionary(const id& others);
};

class Set : public NSObject {
public:
    static const ClassDefinition definition;
    Set() = default;
    explicit Set(std::vector<id> items);

    bool isEqualTo(const NSObject& other) const noexcept override;
    std::size_t hashValue() const noexcept override { return items_.size(); }

    NSUInteger count() const noexcept { return items_.size(); }
    bool containsObject(const id& object) const;
    id member(const id& object) const;
    id anyObject() const { return items_.empty() ? nil : items_.front(); }
    id allObjects() const;
    id mutableCopy() const;

    const std::vector<id>& items() const noexcept { return items_; }

protected:
    std::size_t find(const id& object) const;
    void add(const id& object);

    std::vector<id> items_;
    HashIndex index_;
};

class MutableSet final : public Set {
public:
    static const ClassDefinition definition;
    using Set::Set;

    id copy() const;
    void addObject(const id& object);
    void removeObject(const id& object);
    void removeAllObjects();
};

/// The hash by which dictionaries and sets find an object: what it answers to `hash`.
std::size_t hashOfObject(const id& object);

} // namespace platform::detail
