#pragma once

#include "platform/runtime/ref.h"

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace platform {

class ClassObject;
class NSObject;

namespace detail {
class WeakCell;
} // namespace detail

using id = Ref<NSObject>;
inline const id nil {};

/// A class, or nil. A class is an object too: it can be sent messages and stands wherever an id does.
/// Classes live for the life of the process.
using Class = ClassObject*;

/// What every object shares: its class and its count of references. A new object starts with one
/// reference, which make() or Ref::adopt() takes over.
///
/// When the last reference goes, weak references become nil, and the object is sent `dealloc` (a method like any
/// other, so that it can be hooked) and then deleted with its associations. References taken inside `dealloc` don't
/// keep it. Objects that hold each other in a long chain go one after the other, without a deep stack; all have gone
/// when the release of the outermost returns.
class NSObject {
public:
    NSObject() noexcept = default;
    NSObject(const NSObject&) = delete;
    NSObject& operator=(const NSObject&) = delete;
    virtual ~NSObject();

    void retain() noexcept
    {
        if (references_.load(std::memory_order_relaxed) >= 0)
            references_.fetch_add(1, std::memory_order_relaxed);
    }

    void release() noexcept
    {
        if (references_.load(std::memory_order_relaxed) < 0)
            return;
        if (references_.fetch_sub(1, std::memory_order_acq_rel) == 1)
            deallocate();
    }

    /// Whether the caller's is the only reference, and nothing is associated with the object or refers to it weakly:
    /// who has made it may then use it anew.
    bool isHeldOnce() const noexcept
    {
        return references_.load(std::memory_order_acquire) == 1 && !associated_.load(std::memory_order_relaxed)
            && !weaklyReferenced_.load(std::memory_order_relaxed);
    }

    Class isa() const noexcept { return isa_; }

    /// What `isEqual:` and `hash` answer unless a class overrides them. Equal objects have equal hashes.
    virtual bool isEqualTo(const NSObject& other) const noexcept { return this == &other; }
    virtual std::size_t hashValue() const noexcept { return reinterpret_cast<std::size_t>(this) >> 4; }

protected:
    /// From now on the object is neither counted nor deleted.
    void makeImmortal() noexcept { references_.store(immortal, std::memory_order_relaxed); }

private:
    friend class ClassObject;
    friend void setClass(NSObject& object, Class isa) noexcept;
    friend void markAssociated(NSObject& object) noexcept;
    friend class detail::WeakCell;

    // Below zero nothing is counted.
    static constexpr std::int32_t immortal = INT32_MIN / 2;
    static constexpr std::int32_t going = immortal / 2 * 3;

    /// False, and nothing done, once the last reference has gone.
    bool retainUnlessGoing() noexcept;
    void deallocate() noexcept;
    void destroy() noexcept;

    Class isa_ = nullptr;
    std::atomic<std::int32_t> references_ { 1 };
    std::atomic<bool> associated_ { false };
    std::atomic<bool> weaklyReferenced_ { false };
};

/// Fixes the class of a newly made object, before anyone else can see it.
inline void setClass(NSObject& object, Class isa) noexcept
{
    object.isa_ = isa;
}

/// True for two equal values, for one and the same object, and for nil and nil.
bool isEqual(const id& left, const id& right);

/// The object as the C++ class `T` that declares it, or null for nil and for any other object. The way
/// for a class's own file to reach its fields; nobody else names that class.
template <class T> T* as(const id& object)
{
    return dynamic_cast<T*>(object.get());
}

} // namespace platform
