#include "photograph.h"

#include <algorithm>
#include <cmath>

namespace bench {

namespace {

std::uint32_t scatter(std::uint32_t value)
{
    value ^= value >> 16;
    value *= 0x7FEB352D;
    value ^= value >> 15;
    value *= 0x846CA68B;
    return value ^ value >> 16;
}

/// From 0 to 1, at a point of a lattice of chance.
float chance(int x, int y, std::uint32_t which)
{
    constexpr std::uint32_t steps = 0xFFFF;
    return static_cast<float>(
               scatter(static_cast<std::uint32_t>(x) * 73856093 ^ static_cast<std::uint32_t>(y) * 19349663 ^ which)
               & steps)
        / static_cast<float>(steps);
}

/// The lattice, smooth between its points.
float cloud(float x, float y, std::uint32_t which)
{
    const int left = static_cast<int>(std::floor(x));
    const int top = static_cast<int>(std::floor(y));
    const auto eased = [](float part) { return part * part * (3 - 2 * part); };
    const float across = eased(x - static_cast<float>(left));
    const float upper = std::lerp(chance(left, top, which), chance(left + 1, top, which), across);
    const float lower = std::lerp(chance(left, top + 1, which), chance(left + 1, top + 1, which), across);
    return std::lerp(upper, lower, eased(y - static_cast<float>(top)));
}

float texture(float x, float y)
{
    constexpr int sizes = 7;
    float sum = 0;
    float weight = 0.5F;
    float frequency = 1.F / 700;
    for (int size = 0; size < sizes; ++size, weight /= 2, frequency *= 2)
        sum += weight * (cloud(x * frequency, y * frequency, static_cast<std::uint32_t>(size) * 77) - 0.5F);
    return sum;
}

/// Which disc is seen at a place, as a shade; 1 where there is none.
float shade(int x, int y)
{
    constexpr int cell = 400;
    const int column = x / cell;
    const int row = y / cell;
    const float dx = static_cast<float>(x - column * cell) - 100 - 200 * chance(column, row, 5);
    const float dy = static_cast<float>(y - row * cell) - 100 - 200 * chance(column, row, 6);
    const float radius = 40 + 100 * chance(column, row, 7);
    return std::hypot(dx, dy) < radius ? 0.6F + 0.5F * chance(column, row, 9) : 1;
}

/// About a normal distribution around 0, with a deviation of some 0.6.
float grain(std::uint32_t seed)
{
    const std::uint32_t bytes = scatter(seed);
    return static_cast<float>((bytes & 0xFF) + (bytes >> 8 & 0xFF) + (bytes >> 16 & 0xFF) + (bytes >> 24)) / 255 - 2;
}

} // namespace

platform::Bitmap photograph(int width, int height)
{
    constexpr float grainInSteps = 8;
    platform::Bitmap bitmap = *platform::Bitmap::make(width, height);
    std::uint32_t index = 0;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x, ++index) {
            const auto left = static_cast<float>(x);
            const auto top = static_cast<float>(y);
            const float light
                = (0.45F + 0.35F * (1 - top / static_cast<float>(height)) + texture(left, top)) * shade(x, y);
            const float warmth = cloud(left / 900, top / 900, 991);
            const float common = grain(index);
            std::uint32_t pixel = 0xFF;
            std::uint32_t channel = 0;
            for (const float strength : { 0.8F + 0.4F * warmth, 0.95F, 1.2F - 0.4F * warmth }) {
                const float own = grain(index * 3 + channel++ + 0x9E3779B9);
                const float value = 255 * light * strength + grainInSteps * (common + own) / 2;
                pixel = pixel << 8 | static_cast<std::uint32_t>(std::clamp(value + 0.5F, 0.F, 255.F));
            }
            bitmap.pixels[index] = pixel;
        }
    return bitmap;
}

} // namespace bench
