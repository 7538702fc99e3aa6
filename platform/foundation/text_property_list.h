#pragma once

#include "platform/runtime/object.h"

#include <optional>
#include <string_view>

namespace platform::detail {

/// Reads the property list's old text form: `{ key = value; }`, `( a, b )`, `<0fbd>`, words and quoted strings, with
/// comments as in C. It knows strings, data, arrays and dictionaries, and is never written. UTF-8. Empty when the text
/// isn't one, or is nested deeper than 128 levels.
std::optional<id> readTextPropertyList(std::string_view text);

} // namespace platform::detail
