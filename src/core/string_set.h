#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace appledger {

/// A fixed set of strings with constant look-up, one open-addressed table. It doesn't own the characters:
/// whoever builds the set keeps them alive. Reading is safe from any thread and allocates nothing.
class StringSet {
public:
    StringSet() = default;

    explicit StringSet(const std::vector<std::string_view>& items)
        : slots_(std::bit_ceil(2 * items.size() + 1))
    {
        for (const std::string_view item : items)
            insert(item);
    }

    bool contains(std::string_view item) const noexcept
    {
        if (count_ == 0)
            return false;
        const std::uint32_t wanted = hash(item);
        for (std::size_t index = wanted & (slots_.size() - 1);; index = (index + 1) & (slots_.size() - 1)) {
            const Slot& slot = slots_[index];
            if (!slot.text)
                return false;
            if (slot.hash == wanted && std::string_view(slot.text, slot.length) == item)
                return true;
        }
    }

    std::size_t size() const noexcept { return count_; }

private:
    struct Slot {
        const char* text = nullptr; ///< null: free
        std::uint32_t length = 0;
        std::uint32_t hash = 0;
    };

    /// Eight bytes at a time, each mixed in by a multiplication with the golden ratio's 64-bit fraction.
    static std::uint32_t hash(std::string_view text) noexcept
    {
        constexpr std::uint64_t factor = 0x9E3779B97F4A7C15;
        std::uint64_t mixed = text.size() * factor;
        const char* bytes = text.data();
        std::size_t left = text.size();
        for (; left >= sizeof(std::uint64_t); left -= sizeof(std::uint64_t), bytes += sizeof(std::uint64_t)) {
            std::uint64_t word = 0;
            std::memcpy(&word, bytes, sizeof word);
            mixed = (mixed ^ word) * factor;
            mixed ^= mixed >> 29;
        }
        std::uint64_t rest = 0;
        if (left > 0)
            std::memcpy(&rest, bytes, left);
        mixed = (mixed ^ rest) * factor;
        return static_cast<std::uint32_t>(mixed >> 32);
    }

    void insert(std::string_view item)
    {
        const std::uint32_t itemHash = hash(item);
        std::size_t index = itemHash & (slots_.size() - 1);
        for (; slots_[index].text; index = (index + 1) & (slots_.size() - 1))
            if (std::string_view(slots_[index].text, slots_[index].length) == item)
                return;
        slots_[index] = { item.data() ? item.data() : "", static_cast<std::uint32_t>(item.size()), itemHash };
        ++count_;
    }

    std::vector<Slot> slots_;
    std::size_t count_ = 0;
};

} // namespace appledger
