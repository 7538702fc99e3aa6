#pragma once

#include <string_view>

namespace support {

/// How many paths that hold `part` this process has looked up on the disk since the last question. Counted where the
/// platform asks the kernel: what it answers from memory isn't there.
int takeOpensOf(std::string_view part);

} // namespace support
