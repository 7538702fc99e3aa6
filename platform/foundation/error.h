#pragma once

#include "platform/runtime/object.h"

#include <cstdint>
#include <string_view>

namespace platform {

/// An NSError, which answers `domain`, `code` and `userInfo`.
id error(std::string_view domain, std::int64_t code, const id& userInfo = nil);

} // namespace platform
