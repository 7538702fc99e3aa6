#include "cli/policy/policy_value.h"

#include "cli/history/value_text.h"
#include "platform/foundation/values.h"

#include <algorithm>
#include <charconv>
#include <nlohmann/json.hpp>

namespace cli {

using namespace platform;
using appledger::PreferenceType;
using Json = nlohmann::json;

namespace {

std::optional<id> parseBoolean(const std::string& text)
{
    constexpr std::string_view yes[] { "true", "yes", "on", "1" };
    constexpr std::string_view no[] { "false", "no", "off", "0" };
    if (std::ranges::find(yes, text) != std::end(yes))
        return boolean(true);
    if (std::ranges::find(no, text) != std::end(no))
        return boolean(false);
    return std::nullopt;
}

std::optional<id> parseInteger(const std::string& text)
{
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc {} && end == text.data() + text.size() ? std::optional(number(value)) : std::nullopt;
}

std::optional<id> parseList(const std::string& text)
{
    std::vector<id> items;
    if (text.starts_with('[')) {
        const Json parsed = Json::parse(text, nullptr, false);
        if (!parsed.is_array() || !std::ranges::all_of(parsed, [](const Json& item) { return item.is_string(); }))
            return std::nullopt;
        for (const Json& item : parsed)
            items.push_back(string(item.get<std::string>()));
        return array(std::move(items));
    }
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t comma = std::min(text.find(',', start), text.size());
        if (comma > start)
            items.push_back(string(std::string_view(text).substr(start, comma - start)));
        start = comma + 1;
    }
    return array(std::move(items));
}

id tableValue(const Json& value, PreferenceType type)
{
    if (type == PreferenceType::StringTable)
        return value.is_string() ? string(value.get<std::string>()) : nil;
    if (value.is_number_integer())
        return number(value.get<std::int64_t>());
    return value.is_number() ? real(value.get<double>()) : nil;
}

std::optional<id> parseTable(const std::string& text, PreferenceType type)
{
    const Json parsed = Json::parse(text, nullptr, false);
    if (!parsed.is_object())
        return std::nullopt;
    std::vector<std::pair<id, id>> pairs;
    for (const auto& [key, value] : parsed.items()) {
        id converted = tableValue(value, type);
        if (!converted)
            return std::nullopt;
        pairs.emplace_back(string(key), std::move(converted));
    }
    return dictionary(std::move(pairs));
}

} // namespace

std::optional<id> parsePolicyValue(PreferenceType type, const std::string& text)
{
    switch (type) {
    case PreferenceType::Boolean:
        return parseBoolean(text);
    case PreferenceType::Integer:
        return parseInteger(text);
    case PreferenceType::String:
        return string(text);
    case PreferenceType::IdentifierList:
    case PreferenceType::RowList:
        return parseList(text);
    case PreferenceType::NumberTable:
    case PreferenceType::StringTable:
        return parseTable(text, type);
    }
    return std::nullopt;
}

std::string_view expectedValue(PreferenceType type)
{
    switch (type) {
    case PreferenceType::Boolean:
        return "true or false";
    case PreferenceType::Integer:
        return "a whole number";
    case PreferenceType::String:
        return "a text";
    case PreferenceType::IdentifierList:
        return "bundle identifiers with commas between them, or a JSON array of them";
    case PreferenceType::RowList:
        return "row keys with commas between them, or a JSON array of them";
    case PreferenceType::NumberTable:
        return "a JSON object from bundle identifiers to numbers";
    case PreferenceType::StringTable:
        return "a JSON object from bundle identifiers to texts";
    }
    return "";
}

std::string_view allowedValues(const appledger::PreferenceKey& key)
{
    return key.range.text.empty() ? expectedValue(key.type) : key.range.text;
}

namespace {

bool isOfType(PreferenceType type, const Json& value)
{
    const auto isText = [](const Json& item) { return item.is_string(); };
    const auto isPlainNumber = [](const Json& item) { return item.is_number(); };
    switch (type) {
    case PreferenceType::Boolean:
        return value.is_boolean();
    case PreferenceType::Integer:
        return value.is_number_integer();
    case PreferenceType::String:
        return value.is_string();
    case PreferenceType::IdentifierList:
    case PreferenceType::RowList:
        return value.is_array() && std::ranges::all_of(value, isText);
    case PreferenceType::NumberTable:
        return value.is_object() && std::ranges::all_of(value, isPlainNumber);
    case PreferenceType::StringTable:
        return value.is_object() && std::ranges::all_of(value, isText);
    }
    return false;
}

std::optional<double> numberIn(std::string_view text)
{
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && number == number ? std::optional(number)
                                                                                        : std::nullopt;
}

} // namespace

std::optional<std::string> valueProblem(const appledger::PreferenceKey& key, const Json& value)
{
    const auto converted = isOfType(key.type, value) ? valueFromJson(value) : std::nullopt;
    const bool isAllowed = converted && (!key.range.contains || key.range.contains(*converted));
    return isAllowed ? std::nullopt : std::optional(std::string(allowedValues(key)));
}

std::optional<double> parseDuration(std::string_view text)
{
    constexpr double longest = 366.0 * 24 * 60 * 60;
    constexpr std::pair<char, double> units[] { { 's', 1 }, { 'm', 60 }, { 'h', 3600 }, { 'd', 86400 } };
    double unit = 1;
    for (const auto& [letter, seconds] : units)
        if (text.ends_with(letter)) {
            unit = seconds;
            text.remove_suffix(1);
            break;
        }
    const auto number = numberIn(text);
    const double seconds = number.value_or(0) * unit;
    return seconds > 0 && seconds <= longest ? std::optional(seconds) : std::nullopt;
}

} // namespace cli
