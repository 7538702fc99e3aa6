#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace platform::detail {

/// Finds the positions of a growing list's items by their hashes. The list itself is the owner's, who
/// tells the index of every item that is appended or erased. Few items are scanned; more are hashed.
class HashIndex {
public:
    static constexpr std::size_t npos = static_cast<std::size_t>(-1);

    /// The position of the item with that hash for which `matches(position)` holds, or npos.
    template <class Matches> std::size_t find(std::size_t hash, const Matches& matches) const
    {
        if (slots_.empty()) {
            for (std::size_t position = 0; position < hashes_.size(); ++position)
                if (hashes_[position] == hash && matches(position))
                    return position;
            return npos;
        }
        for (std::size_t slot = firstSlot(hash); slots_[slot] != 0; slot = (slot + 1) & (slots_.size() - 1)) {
            const std::size_t position = slots_[slot] - 1;
            if (hashes_[position] == hash && matches(position))
                return position;
        }
        return npos;
    }

    void append(std::size_t hash);
    void erase(std::size_t position);
    void clear();

private:
    std::size_t firstSlot(std::size_t hash) const noexcept;
    void place(std::size_t position);
    void rebuild();

    std::vector<std::size_t> hashes_;
    std::vector<std::uint32_t> slots_; ///< a power of two, at most half full; 0: free, else position + 1
};

} // namespace platform::detail
