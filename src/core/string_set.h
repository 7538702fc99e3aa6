#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace appledger {

/// A text with its hash, for who asks several sets about it.
class HashedText {
public:
    explicit HashedText(std::string_view text) noexcept
        : text_(text)
        , hash_(hashOf(text))
    {
    }

    std::string_view text() const noexcept { return text_; }
    std::uint32_t hash() const noexcept { return hash_; }

private:
    /// Eight bytes at a time, each mixed in by a multiplication with the golden ratio's 64-bit fraction. The last
    /// eight overlap those before them.
    static std::uint32_t hashOf(std::string_view text) noexcept
    {
        constexpr std::uint64_t factor = 0x9E3779B97F4A7C15;
        constexpr std::size_t wordSize = sizeof(std::uint64_t);
        std::uint64_t mixed = text.size() * factor;
        std::uint64_t word = 0;
        if (text.size() < wordSize) {
            if (!text.empty())
                std::memcpy(&word, text.data(), text.size());
        } else {
            const char* const last = text.data() + text.size() - wordSize;
            for (const char* bytes = text.data(); bytes < last; bytes += wordSize) {
                std::memcpy(&word, bytes, wordSize);
                mixed = (mixed ^ word) * factor;
                mixed ^= mixed >> 29;
            }
            std::memcpy(&word, last, wordSize);
        }
        mixed = (mixed ^ word) * factor;
        return static_cast<std::uint32_t>(mixed >> 32);
    }

    std::string_view text_;
    std::uint32_t hash_;
};

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

    bool contains(std::string_view item) const noexcept { return count_ > 0 && contains(HashedText(item)); }

    bool contains(const HashedText& item) const noexcept
    {
        if (count_ == 0)
            return false;
        for (std::size_t index = item.hash() & (slots_.size() - 1);; index = (index + 1) & (slots_.size() - 1)) {
            const Slot& slot = slots_[index];
            if (!slot.text)
                return false;
            if (slot.hash == item.hash() && std::string_view(slot.text, slot.length) == item.text())
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

    void insert(std::string_view item)
    {
        const std::uint32_t itemHash = HashedText(item).hash();
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
