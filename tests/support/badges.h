#pragma once

#include "platform/runtime/message.h"

namespace support {

/// As the system sets it, by the selector that its version has.
inline void setBadge(const platform::id& application, const platform::id& badge)
{
    if (!platform::ask<"setBadgeValue:", void>(application, badge))
        platform::send<"setBadgeNumberOrString:", void>(application, badge);
}

inline platform::id badgeOf(const platform::id& application)
{
    const auto badge = platform::ask<"badgeValue">(application);
    return badge ? *badge : platform::send<"badgeNumberOrString">(application);
}

} // namespace support
