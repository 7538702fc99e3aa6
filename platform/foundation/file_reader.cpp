#include "platform/foundation/file_reader.h"

#include "platform/foundation/device_path.h"

#include <cerrno>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr int flags = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

} // namespace

FileReader::FileReader(detail::Descriptor descriptor, int error)
    : descriptor_(std::move(descriptor))
    , error_(error)
{
    if (!descriptor_)
        return;
    struct stat status;
    if (::fstat(descriptor_.get(), &status) != 0)
        error_ = errno;
    else if (!S_ISREG(status.st_mode))
        error_ = S_ISDIR(status.st_mode) ? EISDIR : ENXIO;
    if (error_ != 0)
        descriptor_ = {};
}

FileReader FileReader::ofDevice(std::string_view path)
{
    detail::Opening opening = detail::openDevicePath(path, flags);
    return { std::move(opening.descriptor), opening.error };
}

FileReader FileReader::ofHost(const std::string& path)
{
    if (path.find('\0') != std::string::npos)
        return { {}, ENOENT };
    const int descriptor = ::open(path.c_str(), flags);
    const int error = descriptor < 0 ? errno : 0;
    return { detail::Descriptor(descriptor), error };
}

std::size_t FileReader::read(std::uint64_t offset, void* bytes, std::size_t size) const noexcept
{
    std::size_t length = 0;
    while (length < size && offset + length <= std::uint64_t { std::numeric_limits<off_t>::max() }) {
        const ssize_t count = ::pread(
            descriptor_.get(), static_cast<char*>(bytes) + length, size - length, static_cast<off_t>(offset + length));
        if (count > 0)
            length += static_cast<std::size_t>(count);
        else if (count == 0 || errno != EINTR)
            break;
    }
    return length;
}

} // namespace platform
