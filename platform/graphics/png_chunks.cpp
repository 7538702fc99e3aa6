#include "platform/graphics/png_chunks.h"

#include <isa-l/crc.h>

namespace platform::png {

namespace {

std::uint32_t sumOf(std::string_view bytes)
{
    return crc32_gzip_refl(0, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
}

} // namespace

std::uint32_t numberAt(std::string_view bytes, std::size_t offset)
{
    std::uint32_t number = 0;
    for (const char byte : bytes.substr(offset, 4))
        number = number << 8 | static_cast<unsigned char>(byte);
    return number;
}

void appendNumber(std::string& file, std::uint32_t number)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        file += static_cast<char>(number >> shift);
}

void appendChunk(std::string& file, std::string_view name, std::string_view content)
{
    appendNumber(file, static_cast<std::uint32_t>(content.size()));
    const std::size_t start = file.size();
    file += name;
    file += content;
    appendNumber(file, sumOf(std::string_view(file).substr(start)));
}

std::optional<Chunk> takeChunk(std::string_view& file)
{
    if (file.size() < chunkFrame)
        return std::nullopt;
    const std::size_t length = numberAt(file, 0);
    if (length > file.size() - chunkFrame)
        return std::nullopt;
    const Chunk chunk { file.substr(4, 4), file.substr(8, length),
        sumOf(file.substr(4, 4 + length)) == numberAt(file, 8 + length) };
    file.remove_prefix(chunkFrame + length);
    return chunk;
}

Header takeHeader(std::string_view& file)
{
    if (!file.starts_with(signature))
        return {};
    file.remove_prefix(signature.size());
    const auto chunk = takeChunk(file);
    if (!chunk || !chunk->isWhole || chunk->name != "IHDR" || chunk->content.size() != headerSize)
        return {};
    const std::string_view content = chunk->content;
    const auto byte = [content](std::size_t index) { return static_cast<std::uint8_t>(content[index]); };
    // What compression and filters are numbered is 0 in every file that there is.
    if (byte(10) != 0 || byte(11) != 0)
        return {};
    return { numberAt(content, 0), numberAt(content, 4), byte(8), byte(9), byte(12) };
}

} // namespace platform::png
