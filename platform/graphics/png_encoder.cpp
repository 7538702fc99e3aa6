#include "platform/graphics/bitmap.h"
#include "platform/graphics/pixel_rows.h"
#include "platform/graphics/png_chunks.h"
#include "platform/graphics/reduction.h"

#include <isa-l/igzip_lib.h>

/// Row by row from the pixels into the file: besides the two, nothing is as large as the picture.

namespace platform {

namespace {

/// Compresses what it is given into chunks of the file.
class DataChunks {
public:
    explicit DataChunks(std::string& file)
        : file_(file)
        , levelMemory_(ISAL_DEF_LVL1_DEFAULT)
        , output_(std::size_t { 1 } << 18)
    {
        isal_deflate_init(&stream_);
        stream_.level = 1;
        stream_.level_buf = levelMemory_.data();
        stream_.level_buf_size = static_cast<std::uint32_t>(levelMemory_.size());
        stream_.gzip_flag = IGZIP_ZLIB;
        startChunk();
    }

    void append(std::uint8_t* bytes, std::size_t size, bool isLast)
    {
        stream_.next_in = bytes;
        stream_.avail_in = static_cast<std::uint32_t>(size);
        stream_.end_of_stream = isLast;
        for (;;) {
            isal_deflate(&stream_);
            if (stream_.avail_out != 0)
                break;
            writeChunk();
        }
        if (isLast)
            writeChunk();
    }

private:
    void startChunk()
    {
        stream_.next_out = output_.data();
        stream_.avail_out = static_cast<std::uint32_t>(output_.size());
    }

    void writeChunk()
    {
        if (const std::size_t size = output_.size() - stream_.avail_out)
            png::appendChunk(file_, "IDAT", { reinterpret_cast<const char*>(output_.data()), size });
        startChunk();
    }

    std::string& file_;
    isal_zstream stream_ {};
    std::vector<std::uint8_t> levelMemory_;
    std::vector<std::uint8_t> output_;
};

/// A row with room before it for the pixel that isn't there.
class Row {
public:
    Row(std::size_t size, std::size_t before)
        : bytes_(before + size)
        , before_(before)
    {
    }
    std::uint8_t* data() { return bytes_.data() + before_; }

private:
    std::vector<std::uint8_t> bytes_;
    std::size_t before_;
};

void appendPixels(std::string& file, const Bitmap& bitmap, int channels)
{
    const auto width = static_cast<std::size_t>(bitmap.width);
    const std::size_t size = width * static_cast<std::size_t>(channels);
    const auto before = static_cast<std::size_t>(channels);
    // Rows go to the compressor some at a time: it is slow to begin.
    constexpr std::size_t batchSize = std::size_t { 1 } << 16;
    const std::size_t rowsAtOnce = batchSize / (size + 1) + 1;
    std::vector<std::uint8_t> batch(rowsAtOnce * (size + 1));
    Row row(size, before);
    Row above(size, before);
    DataChunks chunks(file);
    std::size_t filled = 0;
    for (int y = 0; y < bitmap.height; ++y) {
        writeSamples(bitmap.pixels.data() + static_cast<std::size_t>(y) * width, width, channels, row.data());
        const RowFilter filter = bestFilter(row.data(), above.data(), size, channels);
        batch[filled] = static_cast<std::uint8_t>(filter);
        writeDifferences(filter, row.data(), above.data(), size, channels, batch.data() + filled + 1);
        filled += size + 1;
        std::swap(row, above);
        const bool isLast = y + 1 == bitmap.height;
        if (filled == batch.size() || isLast) {
            chunks.append(batch.data(), filled, isLast);
            filled = 0;
        }
    }
}

} // namespace

std::string encodePng(const Bitmap& bitmap)
{
    if (bitmap.pixels.empty())
        return {};
    const int channels = isOpaque(bitmap.pixels.data(), bitmap.pixels.size()) ? 3 : 4;
    std::string file;
    // Room that isn't written to is none of the machine's, and a file that grows would be copied on its way.
    file.reserve(bitmap.pixels.size() * 4 + 4096);
    file += png::signature;
    std::string header;
    png::appendNumber(header, static_cast<std::uint32_t>(bitmap.width));
    png::appendNumber(header, static_cast<std::uint32_t>(bitmap.height));
    header += { 8, static_cast<char>(channels == 4 ? png::colorsAndAlpha : png::colorsOnly), 0, 0, 0 };
    png::appendChunk(file, "IHDR", header);
    if (const auto copy = smallCopyOf(bitmap))
        png::appendChunk(file, png::smallCopyName, encodePng(*copy));
    appendPixels(file, bitmap, channels);
    png::appendChunk(file, "IEND", {});
    return file;
}

} // namespace platform
