#include "platform/graphics/picture_formats.h"

#include <algorithm>

namespace platform {

namespace {

/// Numbers of two and four bytes in the order that the metadata begins with. Beyond its end all are 0.
class Numbers {
public:
    explicit Numbers(std::string_view bytes)
        : bytes_(bytes)
        , isLittleEndian_(bytes.starts_with("II"))
    {
    }

    std::uint32_t at(std::size_t offset, std::size_t size) const
    {
        std::uint32_t number = 0;
        for (std::size_t index = 0; index < size; ++index)
            number = number << 8 | byteAt(offset + (isLittleEndian_ ? size - 1 - index : index));
        return number;
    }

private:
    std::uint32_t byteAt(std::size_t offset) const
    {
        return offset < bytes_.size() ? static_cast<unsigned char>(bytes_[offset]) : 0;
    }

    std::string_view bytes_;
    bool isLittleEndian_;
};

Bitmap transposed(const Bitmap& bitmap)
{
    Bitmap result = *Bitmap::make(bitmap.height, bitmap.width);
    const auto width = static_cast<std::size_t>(bitmap.width);
    const auto height = static_cast<std::size_t>(bitmap.height);
    // In squares, so that neither side leaves the processor's cache at each pixel.
    constexpr std::size_t side = 32;
    for (std::size_t top = 0; top < height; top += side)
        for (std::size_t left = 0; left < width; left += side)
            for (std::size_t y = top; y < std::min(top + side, height); ++y)
                for (std::size_t x = left; x < std::min(left + side, width); ++x)
                    result.pixels[x * height + y] = bitmap.pixels[y * width + x];
    return result;
}

void mirrorAcross(Bitmap& bitmap)
{
    for (auto row = bitmap.pixels.begin(); row != bitmap.pixels.end(); row += bitmap.width)
        std::reverse(row, row + bitmap.width);
}

} // namespace

Orientation orientationFrom(std::string_view metadata)
{
    const Numbers numbers(metadata);
    if ((!metadata.starts_with("II") && !metadata.starts_with("MM")) || numbers.at(2, 2) != 42)
        return Orientation::Upright;
    constexpr std::uint32_t orientationTag = 0x0112;
    constexpr std::uint32_t twoBytes = 3;
    constexpr std::size_t entrySize = 12;
    const std::size_t directory = numbers.at(4, 4);
    const std::size_t count = numbers.at(directory, 2);
    for (std::size_t index = 0; index < count; ++index) {
        const std::size_t entry = directory + 2 + index * entrySize;
        if (numbers.at(entry, 2) != orientationTag)
            continue;
        const std::uint32_t value = numbers.at(entry + 8, 2);
        const bool isOne = numbers.at(entry + 2, 2) == twoBytes && numbers.at(entry + 4, 4) == 1;
        return isOne && value >= 1 && value <= 8 ? static_cast<Orientation>(value) : Orientation::Upright;
    }
    return Orientation::Upright;
}

Bitmap uprightFrom(Bitmap bitmap, Orientation orientation)
{
    const auto number = static_cast<int>(orientation);
    if (number >= static_cast<int>(Orientation::Transposed))
        bitmap = transposed(bitmap);
    // What is left, of the picture or of the transposed one, is its mirrors.
    switch (orientation) {
    case Orientation::Upright:
    case Orientation::Transposed:
        break;
    case Orientation::MirroredAcross:
    case Orientation::TurnedLeft:
        mirrorAcross(bitmap);
        break;
    case Orientation::UpsideDown:
    case Orientation::TransposedAcross:
        std::ranges::reverse(bitmap.pixels);
        break;
    case Orientation::MirroredDown:
    case Orientation::TurnedRight:
        std::ranges::reverse(bitmap.pixels);
        mirrorAcross(bitmap);
        break;
    }
    return bitmap;
}

} // namespace platform
