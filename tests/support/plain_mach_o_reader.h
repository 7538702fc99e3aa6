#pragma once

#include <cstdint>
#include <cstdio>
#include <optional>

/// The shortest reader of an executable's encryption mark: one seek and one small read for each step. What the
/// library's reader is compared with, in answers and in time.

namespace support {

class PlainMachOReader {
public:
    /// Takes any number of steps, or gives up after `mostSteps` with no answer.
    explicit PlainMachOReader(std::FILE* file, long mostSteps = -1)
        : file_(file)
        , steps_(mostSteps)
    {
    }

    std::optional<bool> isEncrypted()
    {
        std::uint32_t magic;
        if (!readAt(0, &magic, sizeof magic))
            return false;
        std::optional<bool> answer = false;
        if (isThin(magic))
            answer = thin(0, magic);
        else if (magic == 0xCAFEBABE || magic == 0xBEBAFECA)
            answer = universal(magic);
        return steps_ == 0 ? std::nullopt : answer;
    }

private:
    bool readAt(long offset, void* bytes, std::size_t size)
    {
        if (steps_ == 0)
            return false;
        --steps_;
        return std::fseek(file_, offset, SEEK_SET) == 0 && std::fread(bytes, 1, size, file_) == size;
    }

    static bool isThin(std::uint32_t magic)
    {
        return magic == 0xFEEDFACF || magic == 0xCFFAEDFE || magic == 0xFEEDFACE || magic == 0xCEFAEDFE;
    }

    bool thin(long base, std::uint32_t magic)
    {
        const bool isWide = magic == 0xFEEDFACF || magic == 0xCFFAEDFE;
        const bool isSwapped = magic == 0xCFFAEDFE || magic == 0xCEFAEDFE;
        const auto word = [isSwapped](std::uint32_t value) { return isSwapped ? __builtin_bswap32(value) : value; };
        std::uint32_t header[8];
        if (!readAt(base, header, isWide ? 32 : 28))
            return false;
        long at = base + (isWide ? 32 : 28);
        for (std::uint32_t left = word(header[4]); left > 0; --left) {
            std::uint32_t command[6];
            if (!readAt(at, command, 8))
                return false;
            const std::uint32_t size = word(command[1]);
            if (word(command[0]) == (isWide ? 0x2CU : 0x21U) && readAt(at, command, isWide ? 24 : 20)
                && command[4] != 0)
                return true;
            at += size;
        }
        return false;
    }

    bool universal(std::uint32_t magic)
    {
        std::uint32_t header[2];
        if (!readAt(0, header, sizeof header))
            return false;
        const std::uint32_t count = __builtin_bswap32(header[1]);
        for (std::uint32_t index = 0; index < count; ++index) {
            std::uint32_t entry[5];
            if (!readAt(8 + 20 * static_cast<long>(index), entry, sizeof entry))
                return false;
            const std::uint32_t offset = magic == 0xBEBAFECA ? __builtin_bswap32(entry[2]) : entry[2];
            std::uint32_t slice;
            if (readAt(offset, &slice, sizeof slice) && isThin(slice) && thin(offset, slice))
                return true;
        }
        return false;
    }

    std::FILE* const file_;
    long steps_;
};

} // namespace support
