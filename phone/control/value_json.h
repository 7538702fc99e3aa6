#pragma once

#include "platform/runtime/object.h"

#include <nlohmann/json_fwd.hpp>

namespace phone {

/// A value of a property list as JSON: data as an object with its size, a date as seconds since the
/// reference date.
nlohmann::json toJson(const platform::id& value);

} // namespace phone
