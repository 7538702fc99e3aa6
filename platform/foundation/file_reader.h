#pragma once

#include "platform/foundation/descriptor.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

/// A regular file that is open for reading at any of its places, for who needs little of it. Nothing is read ahead.
/// What isn't a regular file isn't opened, so that nobody waits for a pipe's writer. Any thread, several at a time.
class FileReader {
public:
    /// The device's file at that path.
    static FileReader ofDevice(std::string_view path);
    /// A file of the host.
    static FileReader ofHost(const std::string& path);

    /// 0 when it is open, else an `errno`: EISDIR for a directory, ENXIO for what else isn't a regular file.
    int error() const noexcept { return error_; }

    /// Reads what there is of `size` bytes from `offset` on, and says how many that were: fewer at the file's end,
    /// where reading fails, and of a file that isn't open.
    std::size_t read(std::uint64_t offset, void* bytes, std::size_t size) const noexcept;

private:
    FileReader(detail::Descriptor descriptor, int error);

    detail::Descriptor descriptor_;
    int error_;
};

} // namespace platform
