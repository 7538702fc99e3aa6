#include "cli/history/value_change.h"

#include "cli/history/value_text.h"

#include <algorithm>

namespace cli {

using Json = nlohmann::json;

namespace {

constexpr const char* muteFile = "mute";
constexpr const char* brightnessFile = "brightness";

bool isListOrAbsent(const Json& value)
{
    return value.is_array() || value.is_null();
}

bool isTableOrAbsent(const Json& value)
{
    return value.is_object() || value.is_null();
}

bool holds(const Json& list, const Json& item)
{
    return std::ranges::any_of(list, [&item](const Json& each) { return isSameValue(each, item); });
}

bool partIs(const Json& list, std::size_t start, const Json& part)
{
    return start + part.size() <= list.size()
        && std::equal(part.begin(), part.end(), list.begin() + static_cast<std::ptrdiff_t>(start), isSameValue);
}

/// Takes off what is in `from` alone and adds what is in `to` alone.
Json itemByItem(const Json& present, const Json& from, const Json& to)
{
    Json list = Json::array();
    for (const Json& item : present)
        if (!holds(from, item) || holds(to, item))
            list.push_back(item);
    for (const Json& item : to)
        if (!holds(from, item) && !holds(list, item))
            list.push_back(item);
    return list;
}

Json entryByEntry(const Json& present, const Json& to)
{
    Json table = present.is_object() ? present : Json::object();
    for (const auto& [key, value] : to.items()) {
        if (value.is_null())
            table.erase(key);
        else
            table[key] = value;
    }
    return table;
}

Json nameJson(const ValueName& name)
{
    return name.place == ValueName::Place::Domain ? Json { { "key", name.key } } : Json { { "file", name.key } };
}

std::optional<ValueName> nameFrom(const Json& object)
{
    if (const auto key = object.find("key"); key != object.end() && key->is_string())
        return ValueName::ofKey(key->get<std::string>());
    const auto file = object.find("file");
    if (file == object.end())
        return std::nullopt;
    if (*file == muteFile)
        return ValueName::muteList();
    return *file == brightnessFile ? std::optional(ValueName::brightnessTable()) : std::nullopt;
}

/// Null for an entry that isn't there, or of a table that isn't.
Json entryOf(const Json& table, const std::string& key)
{
    return table.is_object() ? table.value(key, Json()) : Json();
}

std::string textOf(const Json& item)
{
    return item.is_string() ? item.get<std::string>() : item.dump();
}

} // namespace

std::optional<ValueChange> ValueChange::between(ValueName name, const Json& before, const Json& after)
{
    if (isSameValue(before, after))
        return std::nullopt;
    ValueChange change;
    change.name_ = std::move(name);
    if (before.is_array() && after.is_array()) {
        change.kind_ = Kind::ListPart;
        const std::size_t shorter = std::min(before.size(), after.size());
        std::size_t start = 0;
        while (start < shorter && isSameValue(before[start], after[start]))
            ++start;
        std::size_t end = 0;
        while (end < shorter - start && isSameValue(before[before.size() - 1 - end], after[after.size() - 1 - end]))
            ++end;
        const auto part = [start, end](const Json& list) {
            return Json(Json::array_t(
                list.begin() + static_cast<std::ptrdiff_t>(start), list.end() - static_cast<std::ptrdiff_t>(end)));
        };
        change.start_ = start;
        change.size_ = before.size();
        change.before_ = part(before);
        change.after_ = part(after);
    } else if (before.is_object() && after.is_object()) {
        change.kind_ = Kind::TableEntries;
        change.before_ = change.after_ = Json::object();
        const auto note = [&](const std::string& key) {
            const Json former = before.value(key, Json());
            const Json next = after.value(key, Json());
            if (!isSameValue(former, next)) {
                change.before_[key] = former;
                change.after_[key] = next;
            }
        };
        for (const auto& [key, value] : before.items())
            note(key);
        for (const auto& [key, value] : after.items())
            note(key);
    } else {
        change.before_ = before;
        change.after_ = after;
    }
    return change;
}

std::optional<Json> ValueChange::carriedOut(const Json& present, Direction direction, Clash clash) const
{
    const bool isForward = direction == Direction::Forward;
    const Json& from = isForward ? before_ : after_;
    const Json& to = isForward ? after_ : before_;
    const auto unlessSame
        = [&present](Json next) { return isSameValue(next, present) ? std::nullopt : std::optional(std::move(next)); };
    if (kind_ == Kind::TableEntries) {
        if (present.is_object() || (present.is_null() && clash == Clash::Override))
            return unlessSame(entryByEntry(present, to));
        return std::nullopt;
    }
    if (kind_ == Kind::ListPart) {
        if (!isListOrAbsent(present))
            return std::nullopt;
        const Json list = present.is_null() ? Json::array() : present;
        const std::size_t sizeAfter = size_ - before_.size() + after_.size();
        const std::size_t sizeFrom = isForward ? size_ : sizeAfter;
        const std::size_t sizeTo = isForward ? sizeAfter : size_;
        if (list.size() == sizeTo && partIs(list, start_, to))
            return std::nullopt;
        if (list.size() != sizeFrom || !partIs(list, start_, from))
            return unlessSame(itemByItem(list, from, to));
        Json::array_t items(list.begin(), list.begin() + static_cast<std::ptrdiff_t>(start_));
        items.insert(items.end(), to.begin(), to.end());
        items.insert(items.end(), list.begin() + static_cast<std::ptrdiff_t>(start_ + from.size()), list.end());
        return Json(std::move(items));
    }
    if (isSameValue(present, to))
        return std::nullopt;
    if (isSameValue(present, from))
        return to;
    if (isListOrAbsent(from) && isListOrAbsent(to) && present.is_array())
        return unlessSame(
            itemByItem(present, from.is_null() ? Json::array() : from, to.is_null() ? Json::array() : to));
    if (isTableOrAbsent(from) && isTableOrAbsent(to) && present.is_object()) {
        Json entries = to.is_null() ? Json::object() : to;
        for (const auto& [key, value] : from.items())
            if (!entries.contains(key))
                entries[key] = nullptr;
        return unlessSame(entryByEntry(present, entries));
    }
    return clash == Clash::Override ? std::optional(to) : std::nullopt;
}

std::vector<ItemChange> ValueChange::items() const
{
    std::vector<ItemChange> changes;
    const bool areLists = isListOrAbsent(before_) && isListOrAbsent(after_);
    const bool areTables = isTableOrAbsent(before_) && isTableOrAbsent(after_);
    if (areLists) {
        for (std::size_t index = 0; index < before_.size(); ++index)
            if (!holds(after_, before_[index]))
                changes.push_back({ name_, textOf(before_[index]), true, nullptr, start_ + index });
        for (std::size_t index = 0; index < after_.size(); ++index)
            if (!holds(before_, after_[index]))
                changes.push_back({ name_, textOf(after_[index]), nullptr, true, start_ + index });
    } else if (areTables) {
        for (const auto& [key, value] : before_.items())
            if (!isSameValue(value, entryOf(after_, key)))
                changes.push_back({ name_, key, value, entryOf(after_, key) });
        for (const auto& [key, value] : after_.items())
            if (!before_.contains(key))
                changes.push_back({ name_, key, nullptr, value });
    }
    // A list in another order, or with an item more than once.
    if (changes.empty())
        changes.push_back({ name_, std::nullopt, before_, after_ });
    return changes;
}

Json ValueChange::toJson() const
{
    Json object = nameJson(name_);
    object["before"] = before_;
    object["after"] = after_;
    if (kind_ == Kind::ListPart) {
        object["start"] = start_;
        object["size"] = size_;
    } else if (kind_ == Kind::TableEntries) {
        object["entries"] = true;
    }
    return object;
}

std::optional<ValueChange> ValueChange::fromJson(const Json& object)
{
    if (!object.is_object() || !object.contains("before") || !object.contains("after"))
        return std::nullopt;
    auto name = nameFrom(object);
    if (!name)
        return std::nullopt;
    ValueChange change;
    change.name_ = std::move(*name);
    change.before_ = object["before"];
    change.after_ = object["after"];
    if (object.contains("start")) {
        const Json size = object.value("size", Json());
        if (!change.before_.is_array() || !change.after_.is_array() || !object["start"].is_number_unsigned()
            || !size.is_number_unsigned() || size.get<std::size_t>() < change.before_.size()
            || object["start"].get<std::size_t>() > size.get<std::size_t>() - change.before_.size())
            return std::nullopt;
        change.kind_ = Kind::ListPart;
        change.start_ = object["start"];
        change.size_ = size;
    } else if (object.contains("entries")) {
        if (!change.before_.is_object() || !change.after_.is_object())
            return std::nullopt;
        change.kind_ = Kind::TableEntries;
    }
    return change;
}

Json withItem(const Json& present, const ItemChange& item, const Json& wanted)
{
    if (!item.item)
        return wanted;
    const bool isOfList = item.before == true || item.after == true;
    if (present.is_object() || (!isOfList && present.is_null()))
        return entryByEntry(present, { { *item.item, wanted } });
    if (!isListOrAbsent(present))
        return present;
    Json::array_t items = present.is_null() ? Json::array_t() : present.get<Json::array_t>();
    const auto isIt = [&item](const Json& each) { return textOf(each) == *item.item; };
    if (wanted.is_null())
        std::erase_if(items, isIt);
    else if (std::ranges::none_of(items, isIt))
        items.insert(items.begin() + static_cast<std::ptrdiff_t>(std::min(item.place, items.size())), *item.item);
    return Json(std::move(items));
}

} // namespace cli
