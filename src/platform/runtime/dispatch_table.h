#pragma once

#include "platform/runtime/selector.h"

#include <atomic>
#include <cstdint>
#include <memory>

namespace platform {

/// The code of a method, its type forgotten: R (*)(const id& self, SEL, arguments…).
using IMP = void (*)();

/// Everything that instances of one class answer, inherited methods included: an open-addressed table
/// that is read from every thread without a lock, and written by one thread at a time (the runtime's
/// writers exclude each other).
///
/// A method is replaced in place and added in place while there is room; a table that is full is copied
/// into one of twice the size, and the class keeps the former one for readers that still stand in it.
class DispatchTable {
public:
    struct Entry {
        std::atomic<SEL> selector { nullptr };
        std::atomic<IMP> implementation { nullptr };
    };

    explicit DispatchTable(std::uint32_t capacity)
        : mask_(capacity - 1)
        , entries_(std::make_unique<Entry[]>(capacity))
        , types_(std::make_unique<std::atomic<const char*>[]>(capacity))
    {
    }

    /// Null when the selector isn't answered. `hash` is that of the selector.
    IMP implementation(SEL selector, std::uint32_t hash) const noexcept
    {
        for (std::uint32_t index = hash & mask_;; index = (index + 1) & mask_) {
            const SEL present = entries_[index].selector.load(std::memory_order_acquire);
            if (present == selector) [[likely]]
                return entries_[index].implementation.load(std::memory_order_acquire);
            if (!present)
                return nullptr;
        }
    }

    /// The type encoding of the method, or null when the selector isn't answered.
    const char* types(SEL selector) const noexcept
    {
        for (std::uint32_t index = selector->hash & mask_;; index = (index + 1) & mask_) {
            const SEL present = entries_[index].selector.load(std::memory_order_acquire);
            if (present == selector)
                return types_[index].load(std::memory_order_acquire);
            if (!present)
                return nullptr;
        }
    }

    /// Sets or replaces one method. False, and nothing done, when it is new and the table is half full.
    bool set(SEL selector, IMP implementation, const char* types) noexcept
    {
        std::uint32_t index = selector->hash & mask_;
        while (const SEL present = entries_[index].selector.load(std::memory_order_relaxed)) {
            if (present == selector)
                break;
            index = (index + 1) & mask_;
        }
        Entry& entry = entries_[index];
        const bool isNew = entry.selector.load(std::memory_order_relaxed) == nullptr;
        if (isNew && 2 * (count_ + 1) > mask_ + 1)
            return false;
        types_[index].store(types, std::memory_order_release);
        entry.implementation.store(implementation, std::memory_order_release);
        if (isNew) {
            entry.selector.store(selector, std::memory_order_release);
            ++count_;
        }
        return true;
    }

    /// A table of `capacity` entries with the methods of this one.
    std::unique_ptr<DispatchTable> copy(std::uint32_t capacity) const
    {
        auto copied = std::make_unique<DispatchTable>(capacity);
        for (std::uint32_t index = 0; index <= mask_; ++index)
            if (const SEL selector = entries_[index].selector.load(std::memory_order_relaxed))
                copied->set(selector, entries_[index].implementation.load(std::memory_order_relaxed),
                    types_[index].load(std::memory_order_relaxed));
        return copied;
    }

    std::uint32_t capacity() const noexcept { return mask_ + 1; }

private:
    const std::uint32_t mask_;
    std::uint32_t count_ = 0;
    const std::unique_ptr<Entry[]> entries_;
    const std::unique_ptr<std::atomic<const char*>[]> types_;
};

} // namespace platform
