#include "phone/control/value_json.h"

#include "platform/foundation/values.h"

#include <nlohmann/json.hpp>

namespace phone {

using namespace platform;
using Json = nlohmann::json;

Json toJson(const id& value)
{
    if (const auto text = asString(value))
        return text->view();
    if (const auto kind = numberKind(value)) {
        switch (*kind) {
        case NumberKind::Boolean:
            return *asBool(value);
        case NumberKind::Integer:
            return *asInteger(value);
        case NumberKind::Real:
            return *asDouble(value);
        }
    }
    if (const auto items = asArray(value)) {
        Json list = Json::array();
        for (const id& item : *items)
            list.push_back(toJson(item));
        return list;
    }
    if (const auto pairs = asDictionary(value)) {
        Json object = Json::object();
        for (const auto& [key, item] : *pairs) {
            const auto name = asString(key);
            object[name ? name->text() : describe(key)] = toJson(item);
        }
        return object;
    }
    if (const auto bytes = asData(value))
        return { { "dataBytes", bytes->view().size() } };
    if (const auto seconds = asDate(value))
        return { { "secondsSinceReferenceDate", *seconds } };
    return nullptr;
}

} // namespace phone
