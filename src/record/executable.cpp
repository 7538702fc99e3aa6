#include "record/executable.h"

#include "platform/foundation/file_reader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <optional>

namespace appledger {

namespace {

// As a little-endian processor reads them.
constexpr std::uint32_t magic64 = 0xFEEDFACF;
constexpr std::uint32_t magic64Swapped = 0xCFFAEDFE;
constexpr std::uint32_t magic32 = 0xFEEDFACE;
constexpr std::uint32_t magic32Swapped = 0xCEFAEDFE;
constexpr std::uint32_t magicUniversal = 0xCAFEBABE;
constexpr std::uint32_t magicUniversalSwapped = 0xBEBAFECA;

constexpr std::size_t wordSize = sizeof(std::uint32_t);

std::uint32_t swapped(std::uint32_t word) noexcept
{
    return __builtin_bswap32(word);
}

/// A format of thin files.
struct ThinFormat {
    std::uint32_t magic;
    bool isSwapped;
    std::size_t headerSize;
    std::uint32_t encryptionCommand;
    std::size_t encryptionCommandSize;
};

constexpr ThinFormat thinFormats[] {
    { magic64, false, 32, 0x2C, 24 },
    { magic64Swapped, true, 32, 0x2C, 24 },
    { magic32, false, 28, 0x21, 20 },
    { magic32Swapped, true, 28, 0x21, 20 },
};

constexpr std::size_t commandCountOffset = 16; // in a thin header
constexpr std::size_t commandsSizeOffset = 20;
constexpr std::size_t shortestHeader = 28;
constexpr std::size_t commandHeaderSize = 8;
constexpr std::size_t encryptionMarkOffset = 16; // in the command of either width
constexpr std::size_t universalHeaderSize = 8;
constexpr std::size_t sliceEntrySize = 20;
constexpr std::size_t sliceOffsetOffset = 8;

const ThinFormat* thinFormat(std::uint32_t magic) noexcept
{
    const auto* const found = std::ranges::find(thinFormats, magic, &ThinFormat::magic);
    return found == std::end(thinFormats) ? nullptr : found;
}

/// The bytes that were read last. Of the load commands, whose size the header tells, many come with one reading.
class Reader {
public:
    explicit Reader(const ReadAt& readAt)
        : readAt_(readAt)
    {
    }

    /// Says that all bytes from `begin` to `end` may be asked for.
    void expect(std::uint64_t begin, std::uint64_t end) noexcept
    {
        expectedBegin_ = begin;
        expectedEnd_ = end;
    }

    /// `size` bytes from `offset` on, at most as many as a window has; null where the file has fewer or has cost
    /// enough.
    const unsigned char* bytes(std::uint64_t offset, std::size_t size)
    {
        if (!holds(offset, size))
            fill(offset, size);
        return holds(offset, size) ? window_.data() + (offset - begin_) : nullptr;
    }

    std::optional<std::uint32_t> word(std::uint64_t offset)
    {
        const unsigned char* const found = bytes(offset, wordSize);
        return found ? std::optional(wordAt(found)) : std::nullopt;
    }

    static std::uint32_t wordAt(const unsigned char* bytes) noexcept
    {
        std::array<unsigned char, wordSize> raw;
        std::memcpy(raw.data(), bytes, wordSize);
        const auto word = std::bit_cast<std::uint32_t>(raw);
        return std::endian::native == std::endian::little ? word : swapped(word);
    }

private:
    bool holds(std::uint64_t offset, std::size_t size) const noexcept
    {
        return offset >= begin_ && offset + size <= begin_ + length_;
    }

    void fill(std::uint64_t offset, std::size_t size)
    {
        std::size_t wanted = size;
        if (offset >= expectedBegin_ && offset < expectedEnd_)
            wanted = std::max(
                size, static_cast<std::size_t>(std::min<std::uint64_t>(expectedEnd_ - offset, window_.size())));
        if (reads_ == mostReads || bytesRead_ + wanted > mostBytesRead)
            return;
        begin_ = offset;
        length_ = readAt_(offset, window_.data(), wanted);
        ++reads_;
        bytesRead_ += length_;
    }

    const ReadAt& readAt_;
    std::array<unsigned char, std::size_t { 16 } << 10> window_;
    std::uint64_t begin_ = 0;
    std::size_t length_ = 0;
    std::uint64_t expectedBegin_ = 0;
    std::uint64_t expectedEnd_ = 0;
    unsigned reads_ = 0;
    std::size_t bytesRead_ = 0;
};

bool isThinFileEncrypted(Reader& reader, std::uint64_t base, const ThinFormat& format)
{
    // The last word of the longer header says nothing; where it lacks, so does the first command.
    const unsigned char* const header = reader.bytes(base, shortestHeader);
    if (!header)
        return false;
    const auto wordAt = [&format](const unsigned char* bytes) {
        const std::uint32_t word = Reader::wordAt(bytes);
        return format.isSwapped ? swapped(word) : word;
    };
    const std::uint32_t commandCount = wordAt(header + commandCountOffset);
    std::uint64_t command = base + format.headerSize;
    reader.expect(command, command + wordAt(header + commandsSizeOffset));

    for (std::uint32_t index = 0; index < commandCount; ++index) {
        const unsigned char* const head = reader.bytes(command, commandHeaderSize);
        if (!head)
            return false;
        const std::uint32_t kind = wordAt(head);
        const std::uint32_t size = wordAt(head + wordSize);
        if (kind == format.encryptionCommand) {
            const unsigned char* const whole = reader.bytes(command, format.encryptionCommandSize);
            if (whole && Reader::wordAt(whole + encryptionMarkOffset) != 0)
                return true;
        }
        if (size == 0) // all that follow are this one again
            return false;
        command += size;
    }
    return false;
}

/// The two ways in which the first word can read are treated alike for the count and unlike for the offsets.
bool isUniversalFileEncrypted(Reader& reader, std::uint32_t magic)
{
    const auto count = reader.word(wordSize);
    if (!count)
        return false;
    const std::uint32_t sliceCount = swapped(*count);
    std::uint64_t entry = universalHeaderSize;
    for (std::uint32_t index = 0; index < sliceCount; ++index, entry += sliceEntrySize) {
        const unsigned char* const found = reader.bytes(entry, sliceEntrySize);
        if (!found)
            return false;
        const std::uint32_t word = Reader::wordAt(found + sliceOffsetOffset);
        const std::uint64_t slice = magic == magicUniversalSwapped ? swapped(word) : word;
        reader.expect(slice, slice + shortestHeader);
        const auto sliceMagic = reader.word(slice);
        const ThinFormat* const format = sliceMagic ? thinFormat(*sliceMagic) : nullptr;
        if (format && isThinFileEncrypted(reader, slice, *format))
            return true;
    }
    return false;
}

} // namespace

ExecutableKind executableKind(const ReadAt& readAt)
{
    Reader reader(readAt);
    // One reading for the first word and what follows it in every format.
    reader.expect(0, shortestHeader);
    const auto magic = reader.word(0);
    if (!magic)
        return ExecutableKind::NotMachO;
    bool isEncrypted = false;
    if (const ThinFormat* const format = thinFormat(*magic))
        isEncrypted = isThinFileEncrypted(reader, 0, *format);
    else if (*magic == magicUniversal || *magic == magicUniversalSwapped)
        isEncrypted = isUniversalFileEncrypted(reader, *magic);
    else
        return ExecutableKind::NotMachO;
    return isEncrypted ? ExecutableKind::Encrypted : ExecutableKind::Decrypted;
}

bool isEncryptedExecutable(const std::string& path)
{
    const platform::FileReader file = platform::FileReader::ofDevice(path);
    return executableKind([&file](std::uint64_t offset, void* bytes, std::size_t size) {
        return file.read(offset, bytes, size);
    }) == ExecutableKind::Encrypted;
}

} // namespace appledger
