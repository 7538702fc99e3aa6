#include "platform/runtime/dispatch_table.h"

namespace platform {

namespace {

// A send that passes three other methods on its way takes more than twice as long as one that passes none.
// A table may therefore grow to sixteen times its methods before one stands two places from where it belongs.
constexpr std::uint32_t displacementWithoutGrowth = 1;
constexpr std::uint32_t emptiestGrowth = 16;

} // namespace

DispatchTable::DispatchTable(std::uint32_t capacity)
    : mask_(capacity - 1)
    , types_(std::make_unique<std::atomic<const char*>[]>(capacity))
{
    std::uninitialized_value_construct_n(entries(), capacity);
}

bool DispatchTable::set(SEL selector, IMP implementation, const char* types) noexcept
{
    std::uint32_t index = selector->hash & mask_;
    std::uint32_t displacement = 0;
    SEL present = nullptr;
    while ((present = entries()[index].selector.load(std::memory_order_relaxed)) && present != selector) {
        index = (index + 1) & mask_;
        ++displacement;
    }
    if (!present) {
        const std::uint32_t count = count_ + 1;
        if (2 * count > capacity() || (displacement > displacementWithoutGrowth && emptiestGrowth * count > capacity()))
            return false;
        count_ = count;
    }
    types_[index].store(types, std::memory_order_release);
    entries()[index].implementation.store(implementation, std::memory_order_release);
    if (!present)
        entries()[index].selector.store(selector, std::memory_order_release);
    return true;
}

std::unique_ptr<DispatchTable> DispatchTable::copy(std::uint32_t capacity) const
{
    std::unique_ptr<DispatchTable> copied = make(capacity);
    while (!copyInto(*copied))
        copied = make(2 * copied->capacity());
    return copied;
}

bool DispatchTable::copyInto(DispatchTable& other) const noexcept
{
    for (std::uint32_t index = 0; index <= mask_; ++index) {
        const Entry& entry = entries()[index];
        const SEL selector = entry.selector.load(std::memory_order_relaxed);
        if (selector
            && !other.set(selector, entry.implementation.load(std::memory_order_relaxed),
                types_[index].load(std::memory_order_relaxed)))
            return false;
    }
    return true;
}

} // namespace platform
