#pragma once

#include "platform/runtime/object.h"

#include <nlohmann/json.hpp>
#include <optional>

/// Values of property lists as JSON that loses nothing, for files that people read.

namespace cli {

/// Null for nil. Texts, flags, whole numbers, lists and tables are JSON's own; a real number has a point; the rest is
/// an object with one key: {"$data": hexadecimal}, {"$date": seconds since the reference date}, {"$real": "inf"}, and
/// {"$table": …} around a table that would read as one of these.
nlohmann::json jsonFromValue(const platform::id& value);

/// The value of such JSON, nil for null; empty for what no property list can hold.
std::optional<platform::id> valueFromJson(const nlohmann::json& json);

/// Whether the two mean the same value of the same kind: true, 1 and 1.0 are three.
bool isSameValue(const nlohmann::json& left, const nlohmann::json& right);

} // namespace cli
