#include "platform/foundation/value_objects.h"
#include "platform/runtime/message.h"

#include <algorithm>

namespace platform {

namespace detail {

namespace {

id Dictionary_self(const id& self, SEL)
{
    return self;
}

id Dictionary_dictionary(const id& self, SEL)
{
    return id::adopt(static_cast<ClassObject&>(*self).allocate());
}

constexpr MethodDefinition dictionaryMethods[] {
    method<"allKeys", &Dictionary::allKeys>(),
    method<"allValues", &Dictionary::allValues>(),
    method<"copy", &Dictionary_self>(),
    method<"count", &Dictionary::count>(),
    classMethod<"dictionary", &Dictionary_dictionary>(),
    method<"mutableCopy", &Dictionary::mutableCopy>(),
    method<"objectForKey:", &Dictionary::objectForKey>(),
    method<"objectForKeyedSubscript:", &Dictionary::objectForKey>(),
};

constexpr MethodDefinition mutableDictionaryMethods[] {
    method<"addEntriesFromDictionary:", &MutableDictionary::addEntriesFromDictionary>(),
    method<"copy", &MutableDictionary::copy>(),
    method<"removeAllObjects", &MutableDictionary::removeAllObjects>(),
    method<"removeObjectForKey:", &MutableDictionary::removeObjectForKey>(),
    method<"setObject:forKey:", &MutableDictionary::setObjectForKey>(),
    method<"setObject:forKeyedSubscript:", &MutableDictionary::setObjectForKeyedSubscript>(),
};

const Dictionary* dictionaryIn(const id& object) noexcept
{
    if (const auto* const found = exactly<Dictionary>(object))
        return found;
    return exactly<MutableDictionary>(object);
}

std::vector<Dictionary::Pair> keyedByText(std::initializer_list<std::pair<std::string_view, id>> pairs)
{
    std::vector<Dictionary::Pair> result;
    result.reserve(pairs.size());
    for (const auto& [key, value] : pairs)
        result.emplace_back(string(key), value);
    return result;
}

} // namespace

const ClassDefinition Dictionary::definition {
    .name = "NSDictionary", .allocate = allocate<Dictionary>, .methods = dictionaryMethods
};
const ClassDefinition MutableDictionary::definition { .name = "NSMutableDictionary",
    .superclass = &Dictionary::definition,
    .allocate = allocate<MutableDictionary>,
    .methods = mutableDictionaryMethods };

std::size_t hashOfObject(const id& object)
{
    if (const auto* const text = exactly<String>(object))
        return text->hashValue();
    return send<"hash", NSUInteger>(object);
}

Dictionary::Dictionary(std::vector<Pair> pairs)
{
    pairs_.reserve(pairs.size());
    for (const auto& [key, value] : pairs)
        if (key && value)
            set(key, value);
}

bool Dictionary::isEqualTo(const NSObject& other) const noexcept
{
    const auto* const dictionary = dynamic_cast<const Dictionary*>(&other);
    return dictionary && dictionary->pairs_.size() == pairs_.size()
        && std::ranges::all_of(
            pairs_, [&](const Pair& pair) { return isEqual(dictionary->objectForKey(pair.first), pair.second); });
}

std::size_t Dictionary::find(const id& key) const
{
    return index_.find(hashOfObject(key), [&](std::size_t position) { return isEqual(pairs_[position].first, key); });
}

void Dictionary::set(const id& key, const id& value)
{
    const std::size_t position = find(key);
    if (position != HashIndex::npos) {
        pairs_[position].second = value;
        return;
    }
    pairs_.emplace_back(key, value);
    index_.append(hashOfObject(key));
}

id Dictionary::objectForKey(const id& key) const
{
    const std::size_t position = key ? find(key) : HashIndex::npos;
    return position != HashIndex::npos ? pairs_[position].second : nil;
}

id Dictionary::objectForText(std::string_view key) const
{
    const std::size_t position = index_.find(String::hashOfText(key), [&](std::size_t candidate) {
        const auto* const text = exactly<String>(pairs_[candidate].first);
        return text && text->text == key;
    });
    return position != HashIndex::npos ? pairs_[position].second : nil;
}

id Dictionary::allKeys() const
{
    std::vector<id> keys;
    keys.reserve(pairs_.size());
    for (const Pair& pair : pairs_)
        keys.push_back(pair.first);
    return array(std::move(keys));
}

id Dictionary::allValues() const
{
    std::vector<id> values;
    values.reserve(pairs_.size());
    for (const Pair& pair : pairs_)
        values.push_back(pair.second);
    return array(std::move(values));
}

id Dictionary::mutableCopy() const
{
    return make<MutableDictionary>(pairs_);
}

id MutableDictionary::copy() const
{
    return make<Dictionary>(pairs_);
}

void MutableDictionary::setObjectForKey(const id& value, const id& key)
{
    requireObject(value, "setObject:forKey:");
    requireObject(key, "setObject:forKey:");
    set(key, value);
}

void MutableDictionary::setObjectForKeyedSubscript(const id& value, const id& key)
{
    requireObject(key, "setObject:forKeyedSubscript:");
    if (value)
        set(key, value);
    else
        removeObjectForKey(key);
}

void MutableDictionary::removeObjectForKey(const id& key)
{
    const std::size_t position = key ? find(key) : HashIndex::npos;
    if (position == HashIndex::npos)
        return;
    const Pair removed = std::move(pairs_[position]);
    pairs_.erase(pairs_.begin() + static_cast<std::ptrdiff_t>(position));
    index_.erase(position);
}

void MutableDictionary::removeAllObjects()
{
    std::vector<Pair> removed;
    pairs_.swap(removed);
    index_.clear();
}

void MutableDictionary::addEntriesFromDictionary(const id& others)
{
    const Dictionary* const more = dictionaryIn(others);
    if (!more || more == this)
        return;
    for (const auto& [key, value] : more->pairs())
        set(key, value);
}

} // namespace detail

id dictionary(std::vector<std::pair<id, id>> pairs)
{
    return make<detail::Dictionary>(std::move(pairs));
}

id dictionary(std::initializer_list<std::pair<std::string_view, id>> pairs)
{
    return make<detail::Dictionary>(detail::keyedByText(pairs));
}

id mutableDictionary(std::vector<std::pair<id, id>> pairs)
{
    return make<detail::MutableDictionary>(std::move(pairs));
}

std::optional<DictionaryValue> asDictionary(const id& object)
{
    const detail::Dictionary* const found = detail::dictionaryIn(object);
    return found ? std::optional<DictionaryValue>(std::in_place, object, found->pairs()) : std::nullopt;
}

id DictionaryValue::operator[](std::string_view key) const
{
    return object_ ? static_cast<const detail::Dictionary&>(*object_).objectForText(key) : nil;
}

id DictionaryValue::operator[](const id& key) const
{
    return object_ ? static_cast<const detail::Dictionary&>(*object_).objectForKey(key) : nil;
}

id dictionaryBySetting(const id& object, std::string_view key, const id& value)
{
    std::vector<DictionaryValue::Pair> pairs;
    if (const detail::Dictionary* const former = detail::dictionaryIn(object))
        pairs = former->pairs();
    const id name = string(key);
    if (value)
        pairs.emplace_back(name, value);
    else
        std::erase_if(pairs, [&](const DictionaryValue::Pair& pair) { return isEqual(pair.first, name); });
    return make<detail::Dictionary>(std::move(pairs));
}

DictionaryValue pairsOf(const id& object)
{
    return asDictionary(object).value_or(DictionaryValue(nil, {}));
}

} // namespace platform
