#pragma once

#include <cstddef>
#include <cstdint>

/// Between the pixels of a Bitmap and the rows of a PNG file, a row at a time. `width` counts pixels, `size` bytes;
/// `channels` is 3 (red, green, blue) or 4 (and alpha). These loops are compiled for speed: see CMakeLists.txt.

namespace platform {

bool isOpaque(const std::uint32_t* pixels, std::size_t count) noexcept;

/// Colours no longer multiplied by alpha. With three channels the alpha is left out.
void writeSamples(const std::uint32_t* pixels, std::size_t width, int channels, std::uint8_t* samples) noexcept;
void readSamples(const std::uint8_t* samples, std::size_t width, int channels, std::uint32_t* pixels) noexcept;

/// How a row is written as differences, numbered as in the file.
enum class RowFilter : std::uint8_t { None, Left, Above, Average, Nearest };

/// The one of None, Left, Above and Average whose differences are the smallest. The `channels` bytes before `row` and
/// before `above` must be readable and zero.
RowFilter bestFilter(const std::uint8_t* row, const std::uint8_t* above, std::size_t size, int channels) noexcept;
void writeDifferences(RowFilter filter, const std::uint8_t* row, const std::uint8_t* above, std::size_t size,
    int channels, std::uint8_t* differences) noexcept;

/// Turns differences back into samples in place. False when there is no such filter.
bool restoreSamples(
    std::uint8_t filter, std::uint8_t* row, const std::uint8_t* above, std::size_t size, int channels) noexcept;

} // namespace platform
