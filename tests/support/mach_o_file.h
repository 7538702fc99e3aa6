#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

/// Executables of the Mach-O format, built byte by byte from its public description.

namespace support {

enum class Width { Bits32, Bits64 };
enum class ByteOrder { Little, Big };

inline void appendWord(std::string& bytes, std::uint32_t word, ByteOrder order)
{
    for (int i = 0; i < 4; ++i)
        bytes += static_cast<char>(word >> 8 * (order == ByteOrder::Little ? i : 3 - i));
}

struct LoadCommand {
    std::uint32_t kind;
    std::vector<std::uint32_t> words; ///< behind its kind and size
};

inline LoadCommand filler(std::size_t words = 14)
{
    return { 0x19, std::vector<std::uint32_t>(words, 0x2C) };
}

/// The encryption information of that width, with its mark.
inline LoadCommand encryption(Width width, std::uint32_t mark)
{
    return width == Width::Bits64 ? LoadCommand { 0x2C, { 0x4000, 0x4000, mark, 0 } }
                                  : LoadCommand { 0x21, { 0x4000, 0x4000, mark } };
}

struct ThinFile {
    Width width = Width::Bits64;
    ByteOrder order = ByteOrder::Little;
    std::vector<LoadCommand> commands {};
    std::uint32_t extraCommands = 0; ///< that the count tells of and the file lacks
    std::string content = std::string(64, '\x2C'); ///< behind the load commands

    std::string bytes() const
    {
        std::string body;
        for (const LoadCommand& command : commands) {
            appendWord(body, command.kind, order);
            appendWord(body, static_cast<std::uint32_t>(8 + 4 * command.words.size()), order);
            for (const std::uint32_t word : command.words)
                appendWord(body, word, order);
        }
        std::string file;
        const std::uint32_t magic = width == Width::Bits64 ? 0xFEEDFACF : 0xFEEDFACE;
        for (const std::uint32_t word :
            { magic, 0x0100000CU, 0U, 2U, static_cast<std::uint32_t>(commands.size()) + extraCommands,
                static_cast<std::uint32_t>(body.size()), 0x85U })
            appendWord(file, word, order);
        if (width == Width::Bits64)
            appendWord(file, 0, order);
        return file + body + content;
    }
};

/// A universal file of these slices, each at a multiple of 64. The tables of real ones are big-endian throughout; of
/// the other kind the first word and the offsets are little-endian.
inline std::string universalFile(const std::vector<std::string>& slices, ByteOrder order = ByteOrder::Big)
{
    std::string file;
    appendWord(file, 0xCAFEBABE, order);
    appendWord(file, static_cast<std::uint32_t>(slices.size()), ByteOrder::Big);
    constexpr std::size_t alignment = 64;
    const auto aligned = [](std::size_t size) { return (size + alignment - 1) / alignment * alignment; };
    std::size_t offset = aligned(8 + 20 * slices.size());
    for (const std::string& slice : slices) {
        appendWord(file, 0x0100000C, order);
        appendWord(file, 0, order);
        appendWord(file, static_cast<std::uint32_t>(offset), order);
        appendWord(file, static_cast<std::uint32_t>(slice.size()), order);
        appendWord(file, 6, order);
        offset += aligned(slice.size());
    }
    for (const std::string& slice : slices) {
        file.resize(aligned(file.size()));
        file += slice;
    }
    return file;
}

} // namespace support
