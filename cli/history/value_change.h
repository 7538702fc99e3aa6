#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What a change does to one value of the policies, in a form that can be carried out, taken back and told.

namespace cli {

/// A value of the policies: one key of the domain, or the whole of a file beside it.
struct ValueName {
    enum class Place { Domain, MuteFile, BrightnessFile };

    static ValueName ofKey(std::string_view key) { return { Place::Domain, std::string(key) }; }
    static ValueName muteList() { return { Place::MuteFile, "mute" }; }
    static ValueName brightnessTable() { return { Place::BrightnessFile, "brightness" }; }

    Place place = Place::Domain;
    std::string key {}; ///< what people call it

    friend auto operator<=>(const ValueName&, const ValueName&) = default;
};

/// One entry of a list or table, or a whole value, and what became of it. Of a list "true" says that it is on it.
struct ItemChange {
    ValueName name;
    std::optional<std::string> item {}; ///< empty: the whole value
    nlohmann::json before {}; ///< null: absent, or not on the list
    nlohmann::json after {};
    std::size_t place = 0; ///< in the list, where it was or is
};

/// Lists and tables that others change too are told by what differs, so that taking a change back leaves the others'
/// changes alone; and a list also by where, so that taken back it has its old order.
class ValueChange {
public:
    /// Empty when the two are the same. Null is an absent value.
    static std::optional<ValueChange> between(
        ValueName name, const nlohmann::json& before, const nlohmann::json& after);

    const ValueName& name() const noexcept { return name_; }

    enum class Direction { Forward, Back };
    /// What counts when the value is neither the one before nor the one after, and no list or table.
    enum class Clash { Override, Leave };

    /// What the value becomes, from what it is now. Empty where nothing is to be done: it is so already, or a clash is
    /// left.
    std::optional<nlohmann::json> carriedOut(const nlohmann::json& present, Direction direction, Clash clash) const;

    /// Item by item, for people and for what is to be taken back later.
    std::vector<ItemChange> items() const;

    nlohmann::json toJson() const;
    /// Empty for what toJson() doesn't give.
    static std::optional<ValueChange> fromJson(const nlohmann::json& object);

private:
    enum class Kind { Whole, ListPart, TableEntries };

    ValueName name_;
    Kind kind_ = Kind::Whole;
    nlohmann::json before_; ///< whole; or the part of the list; or the entries, null for an absent one
    nlohmann::json after_;
    std::size_t start_ = 0; ///< of the part, in the list
    std::size_t size_ = 0; ///< of the list before
};

/// The value with one item changed to `wanted` (null: taken away); a list's new item comes to stand at `place`.
nlohmann::json withItem(const nlohmann::json& present, const ItemChange& item, const nlohmann::json& wanted);

} // namespace cli
