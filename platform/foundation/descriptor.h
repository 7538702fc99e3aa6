#pragma once

#include <utility>

namespace platform::detail {

/// A file descriptor that is closed with its owner; -1 is none.
class Descriptor {
public:
    Descriptor() noexcept = default;
    explicit Descriptor(int descriptor) noexcept
        : descriptor_(descriptor)
    {
    }
    Descriptor(Descriptor&& other) noexcept
        : descriptor_(other.release())
    {
    }
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    ~Descriptor();

    int get() const noexcept { return descriptor_; }
    explicit operator bool() const noexcept { return descriptor_ >= 0; }
    int release() noexcept { return std::exchange(descriptor_, -1); }

private:
    int descriptor_ = -1;
};

} // namespace platform::detail
