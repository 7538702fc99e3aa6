#include "cli/history/value_text.h"

#include "platform/foundation/values.h"

#include <cmath>
#include <limits>

namespace cli {

using namespace platform;
using Json = nlohmann::json;

namespace {

constexpr const char* dataKey = "$data";
constexpr const char* dateKey = "$date";
constexpr const char* realKey = "$real";
constexpr const char* tableKey = "$table";

std::string hexadecimal(std::string_view bytes)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += digits[byte >> 4U];
        text += digits[byte & 0xFU];
    }
    return text;
}

std::optional<std::string> bytesOf(const std::string& text)
{
    const auto digit = [](char c) -> int {
        if (c >= '0' && c <= '9')
            return c - '0';
        return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
    };
    if (text.size() % 2 != 0)
        return std::nullopt;
    std::string bytes;
    for (std::size_t index = 0; index < text.size(); index += 2) {
        const int high = digit(text[index]);
        const int low = digit(text[index + 1]);
        if (high < 0 || low < 0)
            return std::nullopt;
        bytes += static_cast<char>(high * 16 + low);
    }
    return bytes;
}

Json realJson(double value)
{
    if (std::isfinite(value))
        return value;
    return { { realKey, std::isnan(value) ? "nan" : value > 0 ? "inf" : "-inf" } };
}

std::optional<id> realNamed(const Json& name)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    if (name == "inf" || name == "-inf")
        return real(name == "inf" ? infinity : -infinity);
    return name == "nan" ? std::optional(real(std::numeric_limits<double>::quiet_NaN())) : std::nullopt;
}

Json tableJson(const DictionaryValue& pairs)
{
    Json object = Json::object();
    for (const auto& [key, item] : pairs) {
        const auto name = asString(key);
        object[name ? name->text() : describe(key)] = jsonFromValue(item);
    }
    const bool readsAsAnother = object.size() == 1 && object.begin().key().starts_with('$');
    return readsAsAnother ? Json { { tableKey, std::move(object) } } : object;
}

std::optional<id> tableOf(const Json& object)
{
    std::vector<DictionaryValue::Pair> pairs;
    for (const auto& [key, item] : object.items()) {
        auto value = valueFromJson(item);
        if (!value || !*value)
            return std::nullopt;
        pairs.emplace_back(string(key), std::move(*value));
    }
    return dictionary(std::move(pairs));
}

std::optional<id> objectValue(const Json& object)
{
    if (object.size() != 1 || !object.begin().key().starts_with('$'))
        return tableOf(object);
    const std::string& key = object.begin().key();
    const Json& content = object.begin().value();
    if (key == dataKey && content.is_string()) {
        const auto bytes = bytesOf(content.get_ref<const std::string&>());
        return bytes ? std::optional(platform::data(*bytes)) : std::nullopt;
    }
    if (key == dateKey && content.is_number())
        return platform::date(content.get<double>());
    if (key == realKey)
        return realNamed(content);
    return key == tableKey && content.is_object() ? tableOf(content) : std::nullopt;
}

} // namespace

Json jsonFromValue(const id& value)
{
    if (const auto text = asString(value))
        return text->view();
    if (const auto kind = numberKind(value)) {
        if (*kind == NumberKind::Boolean)
            return *asBool(value);
        return *kind == NumberKind::Integer ? Json(*asInteger(value)) : realJson(*asDouble(value));
    }
    if (const auto items = asArray(value)) {
        Json list = Json::array();
        for (const id& item : *items)
            list.push_back(jsonFromValue(item));
        return list;
    }
    if (const auto pairs = asDictionary(value))
        return tableJson(*pairs);
    if (const auto bytes = asData(value))
        return { { dataKey, hexadecimal(bytes->view()) } };
    if (const auto seconds = asDate(value))
        return { { dateKey, *seconds } };
    return nullptr;
}

std::optional<id> valueFromJson(const Json& json)
{
    switch (json.type()) {
    case Json::value_t::null:
        return nil;
    case Json::value_t::boolean:
        return boolean(json.get<bool>());
    case Json::value_t::number_integer:
        return number(json.get<std::int64_t>());
    case Json::value_t::number_unsigned:
        if (!std::in_range<std::int64_t>(json.get<std::uint64_t>()))
            return std::nullopt;
        return number(json.get<std::int64_t>());
    case Json::value_t::number_float:
        return real(json.get<double>());
    case Json::value_t::string: {
        const auto& text = json.get_ref<const std::string&>();
        return text.find('\0') == std::string::npos ? std::optional(string(text)) : std::nullopt;
    }
    case Json::value_t::array: {
        std::vector<id> items;
        for (const Json& item : json) {
            auto value = valueFromJson(item);
            if (!value || !*value)
                return std::nullopt;
            items.push_back(std::move(*value));
        }
        return array(std::move(items));
    }
    case Json::value_t::object:
        return objectValue(json);
    default:
        return std::nullopt;
    }
}

bool isSameValue(const Json& left, const Json& right)
{
    if (left.is_array() && right.is_array())
        return std::equal(left.begin(), left.end(), right.begin(), right.end(), isSameValue);
    const bool isNumber = left.is_number() || right.is_number();
    if (isNumber && left.is_number_float() != right.is_number_float())
        return false;
    if (left.is_object() && right.is_object())
        return std::equal(left.items().begin(), left.items().end(), right.items().begin(), right.items().end(),
            [](const auto& one, const auto& other) {
                return one.key() == other.key() && isSameValue(one.value(), other.value());
            });
    return left == right;
}

} // namespace cli
