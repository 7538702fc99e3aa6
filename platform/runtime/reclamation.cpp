#include "platform/runtime/reclamation.h"

#include <algorithm>
#include <linux/membarrier.h>
#include <memory>
#include <mutex>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

namespace platform {

namespace detail {

thread_local constinit ReaderSlot* readerSlot = nullptr;
std::atomic<std::uint64_t> reclamationEpoch { 1 };

namespace {

long membarrier(int command) noexcept
{
    return syscall(SYS_membarrier, command, 0, 0);
}

} // namespace

bool writersFenceReaders = membarrier(MEMBARRIER_CMD_REGISTER_PRIVATE_EXPEDITED) == 0;

// The thread sanitizer knows no fences and warns of them. It needs none here: what it follows is the
// release and acquire of the slots.
#ifdef __SANITIZE_THREAD__
#pragma GCC diagnostic ignored "-Wtsan"
#endif
void fence() noexcept
{
    __atomic_thread_fence(__ATOMIC_SEQ_CST);
}

} // namespace detail

namespace {

struct Retired {
    const void* value;
    void (*destroy)(const void*);
    std::uint64_t epoch; ///< a section that began in a later epoch can't reach the value
};

struct Reclaimer {
    std::mutex mutex;
    std::vector<std::unique_ptr<detail::ReaderSlot>> slots;
    std::vector<detail::ReaderSlot*> freeSlots;
    std::vector<Retired> waiting;
};

Reclaimer& reclaimer()
{
    static auto* const shared = new Reclaimer;
    return *shared;
}

/// Gives the slot back when its thread ends.
struct SlotOwner {
    detail::ReaderSlot* slot = nullptr;

    ~SlotOwner()
    {
        if (!slot)
            return;
        Reclaimer& shared = reclaimer();
        const std::lock_guard lock(shared.mutex);
        shared.freeSlots.push_back(slot);
        detail::readerSlot = nullptr;
    }
};

thread_local SlotOwner slotOwner;

std::vector<Retired> takeUnreachable(Reclaimer& shared)
{
    if (detail::writersFenceReaders)
        detail::membarrier(MEMBARRIER_CMD_PRIVATE_EXPEDITED);
    else
        detail::fence();
    std::uint64_t oldest = UINT64_MAX;
    for (const auto& slot : shared.slots)
        if (const std::uint64_t epoch = slot->epoch.load(std::memory_order_acquire))
            oldest = std::min(oldest, epoch);
    const auto reachable = std::partition(shared.waiting.begin(), shared.waiting.end(),
        [oldest](const Retired& retired) { return retired.epoch >= oldest; });
    std::vector<Retired> unreachable(reachable, shared.waiting.end());
    shared.waiting.erase(reachable, shared.waiting.end());
    return unreachable;
}

} // namespace

detail::ReaderSlot* detail::makeReaderSlot() noexcept
{
    Reclaimer& shared = reclaimer();
    const std::lock_guard lock(shared.mutex);
    if (shared.freeSlots.empty()) {
        shared.slots.push_back(std::make_unique<ReaderSlot>());
        shared.freeSlots.push_back(shared.slots.back().get());
    }
    slotOwner.slot = readerSlot = shared.freeSlots.back();
    shared.freeSlots.pop_back();
    return readerSlot;
}

void retire(const void* value, void (*destroy)(const void*))
{
    std::vector<Retired> unreachable;
    {
        Reclaimer& shared = reclaimer();
        const std::lock_guard lock(shared.mutex);
        shared.waiting.push_back({ value, destroy, detail::reclamationEpoch.fetch_add(1, std::memory_order_acq_rel) });
        unreachable = takeUnreachable(shared);
    }
    // After the lock: a destructor may itself retire something.
    for (const Retired& retired : unreachable)
        retired.destroy(retired.value);
}

} // namespace platform
