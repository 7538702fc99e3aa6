#pragma once

#include "platform/foundation/descriptor.h"

#include <string>
#include <string_view>

/// Device paths resolved beneath the device's root. All other code of this folder gets its descriptors here.

namespace platform::detail {

/// What came of an opening: a descriptor, or the `errno` that tells why there is none.
struct Opening {
    Descriptor descriptor;
    int error = 0;
};

/// Opens what the path leads to, links followed. The flags are those of open(2), without O_CREAT.
Opening openDevicePath(std::string_view path, int flags);

/// The directory that a path's last component is in, and that component: never empty, "." or "..", not
/// followed if it is a link.
struct Entry {
    Descriptor directory;
    std::string name;
    bool endsWithSlash = false;
    int error = 0;
};

Entry openEntry(std::string_view path);

/// Whether the kernel is asked for what not every kernel can: resolving a path beneath a directory
/// (openat2) and files without a name (O_TMPFILE). Without its help this process takes paths apart one
/// component at a time and gives new files a name at once; the results are the same. For tests.
enum class KernelHelp { Asked, Declined };
void setKernelHelp(KernelHelp help) noexcept;
KernelHelp kernelHelp() noexcept;

} // namespace platform::detail
