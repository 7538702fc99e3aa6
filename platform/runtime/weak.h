#pragma once

#include "platform/runtime/object.h"

#include <concepts>
#include <memory>
#include <mutex>
#include <utility>

namespace platform {

namespace detail {

/// Where all weak references to one object look: the object, until its last strong reference has gone.
class WeakCell {
public:
    explicit WeakCell(NSObject& object) noexcept
        : object_(&object)
    {
    }

    /// The object's cell, made at the first request. Null for nil, and for an object that is going.
    static std::shared_ptr<WeakCell> of(const id& object);

    /// The last strong reference to the object has gone.
    static void clear(const NSObject& object) noexcept;

    /// A strong reference, or nil.
    id load() noexcept;

private:
    std::mutex mutex_;
    NSObject* object_;
};

} // namespace detail

/// A reference that doesn't keep its object and becomes nil when the last strong reference goes, before the object is
/// sent `dealloc`. It is read by taking a strong reference, from any thread, also while another one drops the last:
/// what is read is whole or nil. As with Ref, a single Weak is not to be written by one thread while another reads it.
template <class T> class Weak {
public:
    Weak() noexcept = default;
    Weak(std::nullptr_t) noexcept { }
    Weak(const Ref<T>& object)
        : cell_(detail::WeakCell::of(object))
    {
    }
    explicit Weak(T* object)
        : Weak(Ref<T>(object))
    {
    }

    /// The object, or nil.
    Ref<T> get() const
    {
        id object = cell_ ? cell_->load() : id();
        return Ref<T>::adopt(static_cast<T*>(object.leak()));
    }

    template <class U>
    requires std::convertible_to<T*, U*>
    operator Ref<U>() const { return get(); }

    /// Whether they refer, or have referred, to one and the same object; two that refer to none are equal.
    friend bool operator==(const Weak& left, const Weak& right) noexcept { return left.cell_ == right.cell_; }

private:
    std::shared_ptr<detail::WeakCell> cell_;
};

} // namespace platform
