#pragma once

#include "platform/runtime/selector.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>

namespace platform {

/// The code of a method, its type forgotten: R (*)(const id& self, SEL, arguments…).
using IMP = void (*)();

/// Everything that instances of one class answer, inherited methods included: an open-addressed table
/// that is read from every thread without a lock, and written by one thread at a time (the runtime's
/// writers exclude each other).
///
/// A method is replaced in place and added in place while there is room; a table without room is copied
/// into a larger one, and the class keeps the former one for readers that still stand in it.
class DispatchTable {
public:
    struct Entry {
        std::atomic<SEL> selector { nullptr };
        std::atomic<IMP> implementation { nullptr };
    };

    /// An empty table. `capacity` is a power of two.
    static std::unique_ptr<DispatchTable> make(std::uint32_t capacity)
    {
        return std::unique_ptr<DispatchTable>(new (capacity) DispatchTable(capacity));
    }

    ~DispatchTable() = default;
    DispatchTable(const DispatchTable&) = delete;
    DispatchTable& operator=(const DispatchTable&) = delete;

    /// Null when the selector isn't answered. `hash` is that of the selector.
    IMP implementation(SEL selector, std::uint32_t hash) const noexcept
    {
        for (std::uint32_t index = hash & mask_;; index = (index + 1) & mask_) {
            const Entry& entry = entries()[index];
            const SEL present = entry.selector.load(std::memory_order_acquire);
            if (present == selector) [[likely]]
                return entry.implementation.load(std::memory_order_acquire);
            if (!present)
                return nullptr;
        }
    }

    /// The type encoding of the method, or null when the selector isn't answered.
    const char* types(SEL selector) const noexcept
    {
        for (std::uint32_t index = selector->hash & mask_;; index = (index + 1) & mask_) {
            const SEL present = entries()[index].selector.load(std::memory_order_acquire);
            if (present == selector)
                return types_[index].load(std::memory_order_acquire);
            if (!present)
                return nullptr;
        }
    }

    /// Sets or replaces one method. False, and nothing done, when it is new and there is no room for it: the
    /// table is half full, or others stand where it belongs and a larger table may part them.
    bool set(SEL selector, IMP implementation, const char* types) noexcept;

    /// A table of at least `capacity` entries with the methods of this one.
    std::unique_ptr<DispatchTable> copy(std::uint32_t capacity) const;

    std::uint32_t capacity() const noexcept { return mask_ + 1; }

    static void operator delete(void* table) noexcept { ::operator delete(table); }

private:
    explicit DispatchTable(std::uint32_t capacity);

    // The entries stand behind the table itself: a send then loads one pointer less.
    static void* operator new(std::size_t size, std::uint32_t capacity)
    {
        return ::operator new(size + capacity * sizeof(Entry));
    }
    static void operator delete(void* table, std::uint32_t) noexcept { ::operator delete(table); }

    Entry* entries() noexcept { return reinterpret_cast<Entry*>(this + 1); }
    const Entry* entries() const noexcept { return reinterpret_cast<const Entry*>(this + 1); }

    bool copyInto(DispatchTable& other) const noexcept;

    const std::uint32_t mask_;
    std::uint32_t count_ = 0;
    const std::unique_ptr<std::atomic<const char*>[]> types_;
};

} // namespace platform
