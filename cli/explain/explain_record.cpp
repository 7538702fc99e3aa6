#include "cli/explain/explain_record.h"

namespace cli {

using Json = nlohmann::json;

namespace {

std::string mistyped(std::string_view key, std::string_view expected)
{
    return std::string("\"").append(key).append("\" is ").append(expected);
}

} // namespace

const Json* RecordReader::find(const Json& object, std::string_view key)
{
    if (!object.is_object())
        return nullptr;
    const auto found = object.find(key);
    return found == object.end() || found->is_null() ? nullptr : &*found;
}

std::optional<double> RecordReader::number(std::string_view key)
{
    const Json* const value = find(record_, key);
    if (!value)
        return std::nullopt;
    if (!value->is_number()) {
        fail(mistyped(key, "a number or null"));
        return std::nullopt;
    }
    return value->get<double>();
}

bool RecordReader::required(std::string_view key)
{
    const Json* const value = find(record_, key);
    if (!value || !value->is_boolean()) {
        fail(mistyped(key, "true or false"));
        return false;
    }
    return value->get<bool>();
}

const Json* RecordReader::object(std::string_view key)
{
    const Json* const value = find(record_, key);
    if (value && !value->is_object()) {
        fail(mistyped(key, "an object or null"));
        return nullptr;
    }
    return value;
}

std::optional<std::string_view> RecordReader::text(const Json& object, std::string_view key)
{
    const Json* const value = find(object, key);
    if (!value)
        return std::nullopt;
    if (!value->is_string()) {
        fail(mistyped(key, "a text or null"));
        return std::nullopt;
    }
    return value->get_ref<const std::string&>();
}

} // namespace cli
