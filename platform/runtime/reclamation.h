#pragma once

#include <atomic>
#include <cstdint>
#include <utility>

/// Readers of shared immutable values that take no lock and share no counter, and writers that free what
/// they replaced once no reader can hold it.

namespace platform {

namespace detail {

struct ReaderSlot;

/// This thread's mark, seen by writers; made at the thread's first read.
extern thread_local constinit ReaderSlot* readerSlot __attribute__((tls_model("initial-exec")));
ReaderSlot* makeReaderSlot() noexcept;

struct alignas(64) ReaderSlot {
    std::atomic<std::uint64_t> epoch { 0 }; ///< 0: not reading
    unsigned depth = 0;
};

extern std::atomic<std::uint64_t> reclamationEpoch;

/// True when the kernel lets a writer order every reader's instructions (membarrier), so that readers
/// need no fence of their own.
extern bool writersFenceReaders;
void fence() noexcept;

} // namespace detail

/// While it lives, nothing that this thread loads from a Published value is freed. Nests. Keep it short:
/// memory that is replaced meanwhile waits.
class ReadSection {
public:
    ReadSection() noexcept
        : slot_(detail::readerSlot ? detail::readerSlot : detail::makeReaderSlot())
    {
        if (slot_->depth++ > 0)
            return;
        // Release: a writer that sees this section must also see that the one before it has ended.
        slot_->epoch.store(detail::reclamationEpoch.load(std::memory_order_acquire), std::memory_order_release);
        if (detail::writersFenceReaders) [[likely]]
            std::atomic_signal_fence(std::memory_order_seq_cst);
        else
            detail::fence();
    }

    ~ReadSection()
    {
        if (--slot_->depth == 0)
            slot_->epoch.store(0, std::memory_order_release);
    }

    ReadSection(const ReadSection&) = delete;
    ReadSection& operator=(const ReadSection&) = delete;

private:
    detail::ReaderSlot* const slot_;
};

/// Frees `value` with `destroy` once no read section that is open now can reach it. The caller has
/// already replaced every way to it. Any thread; what can't be freed yet waits for a later call.
void retire(const void* value, void (*destroy)(const void*));

/// An immutable value that is replaced whole: one atomic pointer. What stands here last is kept for the
/// life of the process, so that threads may still read while it ends.
template <class T> class Published {
public:
    constexpr Published() noexcept = default;
    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;

    /// What stands here now, or null. Valid until the read section that the caller holds ends.
    const T* load() const noexcept { return present_.load(std::memory_order_acquire); }

    /// Takes `value` over; null is a value like any other.
    void assign(const T* value)
    {
        if (const T* const former = present_.exchange(value, std::memory_order_acq_rel))
            retire(former, destroy);
    }

    /// Takes `value` over in place of `former` and returns true; false, with nothing done, when something else
    /// stands here by now. `former` was loaded in a read section that is still open: so it can't have gone and
    /// come back.
    [[nodiscard]] bool assignIf(const T* former, const T* value)
    {
        const T* expected = former;
        if (!present_.compare_exchange_strong(expected, value, std::memory_order_acq_rel, std::memory_order_acquire))
            return false;
        if (former)
            retire(former, destroy);
        return true;
    }

private:
    static void destroy(const void* replaced) { delete static_cast<const T*>(replaced); }

    std::atomic<const T*> present_ { nullptr };
};

} // namespace platform
