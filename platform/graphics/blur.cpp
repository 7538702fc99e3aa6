#include "platform/graphics/blur.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace platform {

namespace {

/// Each value becomes the mean of the 2 * reach + 1 around it.
void averageLine(std::vector<std::uint32_t>& line, std::vector<std::uint32_t>& averaged, std::size_t reach)
{
    const std::size_t length = line.size();
    const auto window = static_cast<std::uint32_t>(2 * reach + 1);
    std::uint32_t sum = 0;
    for (std::size_t index = 0; index < std::min(reach, length); ++index)
        sum += line[index];
    for (std::size_t index = 0; index < length; ++index) {
        if (index + reach < length)
            sum += line[index + reach];
        if (index > reach)
            sum -= line[index - reach - 1];
        averaged[index] = (sum + window / 2) / window;
    }
    line.swap(averaged);
}

void blurLine(std::uint32_t* pixels, int length, std::ptrdiff_t step, std::size_t reach,
    std::vector<std::uint32_t>& line, std::vector<std::uint32_t>& averaged)
{
    line.resize(static_cast<std::size_t>(length));
    averaged.resize(line.size());
    // A finer scale than that of the pixels keeps three passes from rounding a faint shadow away.
    constexpr int fine = 8;
    for (int index = 0; index < length; ++index)
        line[static_cast<std::size_t>(index)] = pixels[index * step] >> 24 << fine;
    // Three means make nearly a Gauss curve.
    for (int pass = 0; pass < 3; ++pass)
        averageLine(line, averaged, reach);
    for (int index = 0; index < length; ++index)
        pixels[index * step] = line[static_cast<std::size_t>(index)] >> fine << 24;
}

/// Three means of 2 r + 1 values have the variance r (r + 1).
std::size_t reachOf(double deviation)
{
    constexpr double farthest = 4096;
    const double wanted = (std::sqrt(1 + 4 * deviation * deviation) - 1) / 2;
    return static_cast<std::size_t>(std::lround(wanted > 0 ? std::min(wanted, farthest) : 0));
}

/// Three means of each part of the colours, one after the other, with the ends of the line going on for ever.
void blurColorLine(
    std::uint32_t* pixels, int length, std::ptrdiff_t step, std::ptrdiff_t reach, std::vector<std::uint32_t>& line)
{
    const auto last = static_cast<std::ptrdiff_t>(length) - 1;
    const auto window = static_cast<std::uint32_t>(2 * reach + 1);
    line.resize(static_cast<std::size_t>(length));
    for (int pass = 0; pass < 3; ++pass) {
        for (std::ptrdiff_t index = 0; index <= last; ++index)
            line[static_cast<std::size_t>(index)] = pixels[index * step];
        const auto at = [&](std::ptrdiff_t index) {
            return line[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(index, 0, last))];
        };
        std::uint32_t sums[4] {};
        const auto count = [&sums](std::uint32_t pixel, std::uint32_t sign) {
            for (int part = 0; part < 4; ++part)
                sums[part] += sign * (pixel >> 8 * part & 0xFF);
        };
        for (std::ptrdiff_t index = -reach; index < reach; ++index)
            count(at(index), 1);
        for (std::ptrdiff_t index = 0; index <= last; ++index) {
            count(at(index + reach), 1);
            std::uint32_t mean = 0;
            for (int part = 0; part < 4; ++part)
                mean |= (sums[part] + window / 2) / window << 8 * part;
            pixels[index * step] = mean;
            count(at(index - reach), ~std::uint32_t { 0 });
        }
    }
}

} // namespace

void blurColors(std::uint32_t* pixels, int width, int height, double deviation)
{
    const auto reach = static_cast<std::ptrdiff_t>(reachOf(deviation));
    std::vector<std::uint32_t> line;
    for (int y = 0; y < height; ++y)
        blurColorLine(pixels + static_cast<std::ptrdiff_t>(y) * width, width, 1, reach, line);
    for (int x = 0; x < width; ++x)
        blurColorLine(pixels + x, height, width, reach, line);
}

void blurAlpha(std::uint32_t* pixels, int width, int height, int stride, double deviation)
{
    const std::size_t reach = reachOf(deviation);
    std::vector<std::uint32_t> line;
    std::vector<std::uint32_t> averaged;
    for (int y = 0; y < height; ++y)
        blurLine(pixels + static_cast<std::ptrdiff_t>(y) * stride, width, 1, reach, line, averaged);
    for (int x = 0; x < width; ++x)
        blurLine(pixels + x, height, stride, reach, line, averaged);
}

} // namespace platform
