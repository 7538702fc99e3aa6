#pragma once

#include <concepts>
#include <cstddef>
#include <utility>

namespace platform {

/// A strong reference to an object of the runtime, or nil. Copying retains, destruction releases;
/// both are safe from any thread on a shared object. A single Ref is not to be written by one thread
/// while another reads it.
template <class T> class Ref {
public:
    constexpr Ref() noexcept = default;
    constexpr Ref(std::nullptr_t) noexcept { }

    Ref(T* object) noexcept
        : object_(object)
    {
        if (object_)
            object_->retain();
    }

    Ref(const Ref& other) noexcept
        : Ref(other.object_)
    {
    }
    Ref(Ref&& other) noexcept
        : object_(std::exchange(other.object_, nullptr))
    {
    }

    template <class U>
    requires std::convertible_to<U*, T*> Ref(const Ref<U>& other)
    noexcept
        : Ref(other.get())
    {
    }

    template <class U>
    requires std::convertible_to<U*, T*> Ref(Ref<U>&& other)
    noexcept
        : object_(other.leak())
    {
    }

    ~Ref()
    {
        if (object_)
            object_->release();
    }

    Ref& operator=(Ref other) noexcept
    {
        std::swap(object_, other.object_);
        return *this;
    }

    /// Takes over the reference that the caller owns, without retaining.
    static Ref adopt(T* object) noexcept
    {
        Ref reference;
        reference.object_ = object;
        return reference;
    }

    /// Gives the reference to the caller, who must release it; this one becomes nil.
    T* leak() noexcept { return std::exchange(object_, nullptr); }

    T* get() const noexcept { return object_; }
    T* operator->() const noexcept { return object_; }
    T& operator*() const noexcept { return *object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }

    /// Identity, as the comparison of two pointers; for equal values see isEqual().
    friend bool operator==(const Ref& left, const Ref& right) noexcept { return left.object_ == right.object_; }

private:
    T* object_ = nullptr;
};

} // namespace platform
