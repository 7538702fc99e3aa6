#include "platform/graphics/pixel_rows.h"

#include <algorithm>
#include <cstdlib>

namespace platform {

namespace {

/// So many pixels are looked at together: nearly all of a picture is wholly opaque or wholly transparent.
constexpr std::size_t block = 32;

constexpr std::uint32_t multiplied(std::uint32_t part, std::uint32_t alpha)
{
    return (part * alpha + 127) / 255;
}

constexpr std::uint32_t exchangeRedAndBlue(std::uint32_t pixel)
{
    return (pixel & 0xFF00FF00) | (pixel >> 16 & 0xFF) | (pixel & 0xFF) << 16;
}

/// In the order of a file: red, green, blue, alpha.
std::uint32_t straight(std::uint32_t pixel)
{
    const std::uint32_t alpha = pixel >> 24;
    if (alpha == 0)
        return 0;
    const auto divided = [alpha](std::uint32_t part) { return std::min((part * 255 + alpha / 2) / alpha, 255U); };
    return divided(pixel >> 16 & 0xFF) | divided(pixel >> 8 & 0xFF) << 8 | divided(pixel & 0xFF) << 16 | alpha << 24;
}

std::uint32_t packed(std::uint32_t red, std::uint32_t green, std::uint32_t blue, std::uint32_t alpha)
{
    return alpha << 24 | multiplied(red, alpha) << 16 | multiplied(green, alpha) << 8 | multiplied(blue, alpha);
}

void store(std::uint8_t* samples, std::uint32_t value) noexcept
{
    __builtin_memcpy(samples, &value, sizeof value);
}

std::uint32_t load(const std::uint8_t* samples) noexcept
{
    std::uint32_t value;
    __builtin_memcpy(&value, samples, sizeof value);
    return value;
}

std::uint32_t alphaOfAll(const std::uint8_t* samples, std::size_t count) noexcept
{
    std::uint32_t all = 0xFFFFFFFF;
    for (std::size_t index = 0; index < count; ++index)
        all &= load(samples + 4 * index);
    return all >> 24;
}

constexpr std::uint8_t nearest(int left, int above, int corner)
{
    const int fromLeft = std::abs(above - corner);
    const int fromAbove = std::abs(left - corner);
    const int fromCorner = std::abs(left + above - 2 * corner);
    if (fromLeft <= fromAbove && fromLeft <= fromCorner)
        return static_cast<std::uint8_t>(left);
    return static_cast<std::uint8_t>(fromAbove <= fromCorner ? above : corner);
}

/// The sum of the differences as numbers around zero.
template <class Predict> std::uint64_t cost(const std::uint8_t* row, std::size_t size, Predict predict) noexcept
{
    std::uint32_t sum = 0; // a row has at most 2^27 bytes, of which an eighth is looked at
    // One run in eight speaks for all.
    constexpr std::size_t run = 64;
    for (std::size_t start = 0; start < size; start += 8 * run) {
        const std::size_t end = std::min(start + run, size);
        for (std::size_t index = start; index < end; ++index) {
            const auto difference = static_cast<std::int8_t>(row[index] - predict(index));
            sum += static_cast<std::uint32_t>(difference < 0 ? -difference : difference);
        }
    }
    return sum;
}

template <int channels> void restoreFromLeft(std::uint8_t* row, std::size_t size) noexcept
{
    std::uint8_t left[channels] {};
    for (std::size_t start = 0; start < size; start += channels)
        for (int channel = 0; channel < channels; ++channel)
            row[start + channel] = left[channel] = static_cast<std::uint8_t>(row[start + channel] + left[channel]);
}

template <int channels> void restoreFromAverage(std::uint8_t* row, const std::uint8_t* above, std::size_t size) noexcept
{
    std::uint8_t left[channels] {};
    for (std::size_t start = 0; start < size; start += channels)
        for (int channel = 0; channel < channels; ++channel)
            row[start + channel] = left[channel]
                = static_cast<std::uint8_t>(row[start + channel] + (left[channel] + above[start + channel]) / 2);
}

template <int channels> void restoreFromNearest(std::uint8_t* row, const std::uint8_t* above, std::size_t size) noexcept
{
    std::uint8_t left[channels] {};
    std::uint8_t corner[channels] {};
    for (std::size_t start = 0; start < size; start += channels)
        for (int channel = 0; channel < channels; ++channel) {
            const std::uint8_t up = above[start + channel];
            row[start + channel] = left[channel]
                = static_cast<std::uint8_t>(row[start + channel] + nearest(left[channel], up, corner[channel]));
            corner[channel] = up;
        }
}

} // namespace

bool isOpaque(const std::uint32_t* pixels, std::size_t count) noexcept
{
    for (std::size_t start = 0; start < count; start += 4096) {
        std::uint32_t all = 0xFFFFFFFF;
        for (std::size_t index = start; index < std::min(start + 4096, count); ++index)
            all &= pixels[index];
        if (all >> 24 != 0xFF)
            return false;
    }
    return true;
}

void writeSamples(const std::uint32_t* pixels, std::size_t width, int channels, std::uint8_t* samples) noexcept
{
    if (channels == 3) {
        for (std::size_t x = 0; x < width; ++x) {
            samples[3 * x] = static_cast<std::uint8_t>(pixels[x] >> 16);
            samples[3 * x + 1] = static_cast<std::uint8_t>(pixels[x] >> 8);
            samples[3 * x + 2] = static_cast<std::uint8_t>(pixels[x]);
        }
        return;
    }
    for (std::size_t start = 0; start < width; start += block) {
        const std::size_t end = std::min(start + block, width);
        if (isOpaque(pixels + start, end - start))
            for (std::size_t x = start; x < end; ++x)
                store(samples + 4 * x, exchangeRedAndBlue(pixels[x]));
        else
            for (std::size_t x = start; x < end; ++x)
                store(samples + 4 * x, straight(pixels[x]));
    }
}

void readSamples(const std::uint8_t* samples, std::size_t width, int channels, std::uint32_t* pixels) noexcept
{
    if (channels == 3) {
        for (std::size_t x = 0; x < width; ++x)
            pixels[x] = 0xFF000000U | static_cast<std::uint32_t>(samples[3 * x]) << 16
                | static_cast<std::uint32_t>(samples[3 * x + 1]) << 8 | samples[3 * x + 2];
        return;
    }
    for (std::size_t start = 0; start < width; start += block) {
        const std::size_t end = std::min(start + block, width);
        if (alphaOfAll(samples + 4 * start, end - start) == 0xFF)
            for (std::size_t x = start; x < end; ++x)
                pixels[x] = exchangeRedAndBlue(load(samples + 4 * x));
        else
            for (std::size_t x = start; x < end; ++x)
                pixels[x] = packed(samples[4 * x], samples[4 * x + 1], samples[4 * x + 2], samples[4 * x + 3]);
    }
}

RowFilter bestFilter(const std::uint8_t* row, const std::uint8_t* above, std::size_t size, int channels) noexcept
{
    const std::uint8_t* const left = row - channels;
    const std::uint64_t costs[] {
        cost(row, size, [](std::size_t) { return 0; }),
        cost(row, size, [left](std::size_t index) { return left[index]; }),
        cost(row, size, [above](std::size_t index) { return above[index]; }),
        cost(row, size, [left, above](std::size_t index) { return (left[index] + above[index]) / 2; }),
    };
    return static_cast<RowFilter>(std::ranges::min_element(costs) - costs);
}

void writeDifferences(RowFilter filter, const std::uint8_t* row, const std::uint8_t* above, std::size_t size,
    int channels, std::uint8_t* __restrict differences) noexcept
{
    const std::uint8_t* const left = row - channels;
    switch (filter) {
    case RowFilter::None:
        std::copy_n(row, size, differences);
        return;
    case RowFilter::Left:
        for (std::size_t index = 0; index < size; ++index)
            differences[index] = static_cast<std::uint8_t>(row[index] - left[index]);
        return;
    case RowFilter::Above:
        for (std::size_t index = 0; index < size; ++index)
            differences[index] = static_cast<std::uint8_t>(row[index] - above[index]);
        return;
    case RowFilter::Average:
        for (std::size_t index = 0; index < size; ++index)
            differences[index] = static_cast<std::uint8_t>(row[index] - (left[index] + above[index]) / 2);
        return;
    case RowFilter::Nearest:
        for (std::size_t index = 0; index < size; ++index)
            differences[index]
                = static_cast<std::uint8_t>(row[index] - nearest(left[index], above[index], above[index - channels]));
        return;
    }
}

bool restoreSamples(
    std::uint8_t filter, std::uint8_t* row, const std::uint8_t* above, std::size_t size, int channels) noexcept
{
    const bool alpha = channels == 4;
    switch (static_cast<RowFilter>(filter)) {
    case RowFilter::None:
        return true;
    case RowFilter::Left:
        alpha ? restoreFromLeft<4>(row, size) : restoreFromLeft<3>(row, size);
        return true;
    case RowFilter::Above:
        for (std::size_t index = 0; index < size; ++index)
            row[index] = static_cast<std::uint8_t>(row[index] + above[index]);
        return true;
    case RowFilter::Average:
        alpha ? restoreFromAverage<4>(row, above, size) : restoreFromAverage<3>(row, above, size);
        return true;
    case RowFilter::Nearest:
        alpha ? restoreFromNearest<4>(row, above, size) : restoreFromNearest<3>(row, above, size);
        return true;
    }
    return false;
}

} // namespace platform
