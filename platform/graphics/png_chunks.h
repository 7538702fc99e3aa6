#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The parts that a PNG file is made of: a signature, and chunks of a length, a name of four letters, content and a
/// sum.

namespace platform::png {

constexpr std::string_view signature = "\x89PNG\r\n\x1A\n";

/// What a chunk takes besides its content.
constexpr std::size_t chunkFrame = 12;

/// What the header's content takes.
constexpr std::size_t headerSize = 13;

/// Colours as a file's header numbers them.
constexpr std::uint8_t colorsOnly = 2;
constexpr std::uint8_t colorsAndAlpha = 6;

/// A smaller copy of the whole picture, as a PNG file of its own. Its name says: of no importance to others, private,
/// not to be kept by who changes the picture.
constexpr std::string_view smallCopyName = "smAL";

std::uint32_t numberAt(std::string_view bytes, std::size_t offset);
void appendNumber(std::string& file, std::uint32_t number);
void appendChunk(std::string& file, std::string_view name, std::string_view content);

struct Chunk {
    std::string_view name;
    std::string_view content;
    bool isWhole; ///< the sum is right
};

/// Takes the next chunk from what is left of a file; empty when it doesn't end within the file.
std::optional<Chunk> takeChunk(std::string_view& file);

struct Header {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint8_t depth = 0;
    std::uint8_t colors = 0;
    std::uint8_t interlacing = 0;
};

/// Takes the header, the first chunk of a file; of no width when it is another or damaged.
Header takeHeader(std::string_view& file);

} // namespace platform::png
