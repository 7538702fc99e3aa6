#include "platform/foundation/hash_index.h"

#include <bit>

namespace platform::detail {

namespace {

constexpr std::size_t scannedItems = 8;

} // namespace

std::size_t HashIndex::firstSlot(std::size_t hash) const noexcept
{
    // Addresses and small integers differ in their low bits alone; the multiplication spreads them.
    return (hash * 0x9E3779B97F4A7C15ULL >> 32) & (slots_.size() - 1);
}

void HashIndex::place(std::size_t position)
{
    std::size_t slot = firstSlot(hashes_[position]);
    while (slots_[slot] != 0)
        slot = (slot + 1) & (slots_.size() - 1);
    slots_[slot] = static_cast<std::uint32_t>(position + 1);
}

void HashIndex::rebuild()
{
    if (hashes_.size() <= scannedItems) {
        slots_.clear();
        return;
    }
    slots_.assign(std::bit_ceil(hashes_.size() * 4), 0);
    for (std::size_t position = 0; position < hashes_.size(); ++position)
        place(position);
}

void HashIndex::append(std::size_t hash)
{
    hashes_.push_back(hash);
    if (hashes_.size() <= scannedItems)
        return;
    if (hashes_.size() * 2 > slots_.size())
        rebuild();
    else
        place(hashes_.size() - 1);
}

void HashIndex::erase(std::size_t position)
{
    hashes_.erase(hashes_.begin() + static_cast<std::ptrdiff_t>(position));
    rebuild();
}

void HashIndex::clear()
{
    hashes_.clear();
    slots_.clear();
}

} // namespace platform::detail
