#include "platform/graphics/picture_formats.h"
#include "platform/graphics/pixel_rows.h"
#include "platform/graphics/png_chunks.h"

#include <algorithm>
#include <array>
#include <isa-l/igzip_lib.h>

namespace platform {

namespace {

struct PlainPng {
    png::Header header;
    std::vector<std::string_view> data;
};

/// Chunks that change what the samples mean.
constexpr std::array<std::string_view, 5> meaningful { "eXIf", "gAMA", "iCCP", "cHRM", "tRNS" };

std::optional<PlainPng> plainPngIn(std::string_view file)
{
    const png::Header header = png::takeHeader(file);
    if (header.depth != 8 || header.interlacing != 0
        || (header.colors != png::colorsOnly && header.colors != png::colorsAndAlpha))
        return std::nullopt;
    PlainPng plain { header, {} };
    bool isInData = false;
    while (const auto chunk = png::takeChunk(file)) {
        const bool isData = chunk->name == "IDAT";
        const bool isAncillary = (chunk->name[0] & 0x20) != 0;
        if (!chunk->isWhole || std::ranges::find(meaningful, chunk->name) != meaningful.end())
            return std::nullopt;
        if (chunk->name == "IEND")
            return chunk->content.empty() && file.empty() ? std::optional(std::move(plain)) : std::nullopt;
        if (isData && (isInData || plain.data.empty()))
            plain.data.push_back(chunk->content);
        else if (isData || !isAncillary)
            return std::nullopt;
        isInData = isData;
    }
    return std::nullopt;
}

/// What the chunks of data hold, a piece at a time.
class Inflater {
public:
    explicit Inflater(const std::vector<std::string_view>& data)
        : data_(data)
    {
        isal_inflate_init(&state_);
        state_.crc_flag = ISAL_ZLIB;
    }

    /// False when there is less, or damage.
    bool fill(std::uint8_t* bytes, std::size_t size)
    {
        state_.next_out = bytes;
        state_.avail_out = static_cast<std::uint32_t>(size);
        while (state_.avail_out != 0)
            if (!advance())
                return false;
        return true;
    }

    /// Whether nothing is left, and the sum over all is right.
    bool hasEnded()
    {
        std::uint8_t more;
        state_.next_out = &more;
        state_.avail_out = 1;
        while (state_.block_state != ISAL_BLOCK_FINISH && state_.avail_out != 0)
            if (!advance())
                return false;
        return state_.avail_out == 1 && state_.avail_in == 0 && next_ == data_.size();
    }

private:
    bool advance()
    {
        if (state_.block_state == ISAL_BLOCK_FINISH)
            return false;
        const std::uint32_t room = state_.avail_out;
        if (state_.avail_in == 0 && next_ < data_.size()) {
            state_.next_in = reinterpret_cast<std::uint8_t*>(const_cast<char*>(data_[next_].data()));
            state_.avail_in = static_cast<std::uint32_t>(data_[next_].size());
            ++next_;
        }
        const std::uint32_t available = state_.avail_in;
        if (isal_inflate(&state_) != ISAL_DECOMP_OK)
            return false;
        return state_.avail_out != room || state_.avail_in != available || next_ < data_.size()
            || state_.block_state == ISAL_BLOCK_FINISH;
    }

    const std::vector<std::string_view>& data_;
    std::size_t next_ = 0;
    inflate_state state_;
};

} // namespace

std::optional<Bitmap> decodePlainPng(std::string_view bytes)
{
    const auto plain = plainPngIn(bytes);
    if (!plain || !canHold(bytes.size(), plain->header.width, plain->header.height))
        return std::nullopt;
    std::optional<Bitmap> bitmap = Bitmap::make(plain->header.width, plain->header.height);
    if (!bitmap)
        return std::nullopt;
    const int channels = plain->header.colors == png::colorsOnly ? 3 : 4;
    const auto width = static_cast<std::size_t>(bitmap->width);
    const std::size_t stride = width * static_cast<std::size_t>(channels) + 1;
    // Rows come some at a time, behind the last of those before them; before the first there is one of zeros.
    constexpr std::size_t batchSize = std::size_t { 1 } << 17;
    const std::size_t rowsAtOnce = std::min<std::size_t>(batchSize / stride + 1, plain->header.height);
    std::vector<std::uint8_t> rows((rowsAtOnce + 1) * stride);
    Inflater inflater(plain->data);
    for (std::size_t y = 0; y < plain->header.height;) {
        const std::size_t count = std::min(rowsAtOnce, plain->header.height - y);
        if (!inflater.fill(rows.data() + stride, count * stride))
            return std::nullopt;
        for (std::size_t index = 1; index <= count; ++index, ++y) {
            std::uint8_t* const row = rows.data() + index * stride;
            if (!restoreSamples(row[0], row + 1, row - stride + 1, stride - 1, channels))
                return std::nullopt;
            readSamples(row + 1, width, channels, bitmap->pixels.data() + y * width);
        }
        std::copy_n(rows.data() + count * stride, stride, rows.data());
    }
    return inflater.hasEnded() ? std::move(bitmap) : std::nullopt;
}

} // namespace platform
