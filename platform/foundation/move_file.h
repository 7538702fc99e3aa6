#pragma once

#include <string_view>

namespace platform {

/// Gives a file or a directory with all that is in it another name on the device, in one step; a link is moved, not
/// what it leads to. 0, or an `errno`: EEXIST where something has that name already. The paths are device paths
/// (platform/foundation/files.h).
[[nodiscard]] int moveFile(std::string_view from, std::string_view to);

} // namespace platform
