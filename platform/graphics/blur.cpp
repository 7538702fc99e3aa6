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

} // namespace

void blurAlpha(std::uint32_t* pixels, int width, int height, int stride, double deviation)
{
    // Three means of 2 r + 1 values have the variance r (r + 1).
    constexpr double farthest = 4096;
    const double wanted = (std::sqrt(1 + 4 * deviation * deviation) - 1) / 2;
    const auto reach = static_cast<std::size_t>(std::lround(wanted > 0 ? std::min(wanted, farthest) : 0));
    std::vector<std::uint32_t> line;
    std::vector<std::uint32_t> averaged;
    for (int y = 0; y < height; ++y)
        blurLine(pixels + static_cast<std::ptrdiff_t>(y) * stride, width, 1, reach, line, averaged);
    for (int x = 0; x < width; ++x)
        blurLine(pixels + x, height, stride, reach, line, averaged);
}

} // namespace platform
