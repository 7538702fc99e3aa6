#pragma once

#include "platform/runtime/object.h"

#include <cstddef>
#include <optional>

namespace platform {

/// An NSIndexPath of a row in a section.
id indexPath(std::size_t section, std::size_t row);

struct IndexPathValue {
    std::size_t section = 0;
    std::size_t row = 0;
};

/// Empty for nil, for what is no index path, and for one of another length than two.
std::optional<IndexPathValue> asIndexPath(const id& object);

} // namespace platform
