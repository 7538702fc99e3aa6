#pragma once

#include "platform/foundation/values.h"

#include <string>

namespace phone {

/// "" for anything but a string.
inline std::string textOf(const platform::id& value)
{
    const auto text = platform::asString(value);
    return text ? text->text() : std::string();
}

} // namespace phone
