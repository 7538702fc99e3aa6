#pragma once

#include "platform/runtime/object.h"

namespace appledger {

/// Removes what is right in the directory, with all that is in it; what can't be removed is passed over. The directory
/// stays. Nothing for nil and for what is no directory. Blocks on the disk; any thread.
void emptyDirectory(const platform::id& url);

} // namespace appledger
