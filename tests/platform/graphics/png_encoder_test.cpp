#include "platform/graphics/sample_files.h"

#include <gtest/gtest.h>

#include <random>

using namespace platform;

namespace {

/// Runs of opaque, of transparent and of half transparent pixels, whose colours are smooth in one half and chance in
/// the other.
Bitmap sample(int width, int height, bool isOpaque)
{
    std::minstd_rand random(5);
    Bitmap bitmap = *Bitmap::make(width, height);
    std::uint32_t index = 0;
    for (std::uint32_t& pixel : bitmap.pixels) {
        const std::uint32_t run = index / 45 % 3;
        const std::uint32_t alpha = isOpaque || run == 0 ? 255 : run == 1 ? 0 : index % 256;
        const bool isSmooth = index++ < bitmap.pixels.size() / 2;
        pixel = alpha << 24;
        for (std::uint32_t shift = 0; shift < 24; shift += 8)
            pixel |= (isSmooth ? index / 7 + shift : random()) % 256 * alpha / 255 << shift;
    }
    return bitmap;
}

constexpr int colorsInHeader = 25;

TEST(PngEncoder, WhatIsWrittenIsReadBackByALibrary)
{
    const struct {
        int width;
        int height;
    } sizes[] { { 1, 1 }, { 3, 2 }, { 31, 40 }, { 32, 7 }, { 33, 9 }, { 300, 1 }, { 1, 300 }, { 300, 310 },
        { 900, 700 } };
    for (const auto& [width, height] : sizes)
        for (const bool isOpaque : { true, false }) {
            const Bitmap bitmap = sample(width, height, isOpaque);
            const std::string file = encodePng(bitmap);
            EXPECT_EQ(encodePng(bitmap), file) << width << " x " << height;
            const auto read = samples::readWithLibpng(file);
            ASSERT_TRUE(read) << width << " x " << height;
            EXPECT_EQ(read->width, width);
            EXPECT_TRUE(read->pixels == bitmap.pixels) << width << " x " << height << ' ' << isOpaque;
            EXPECT_TRUE(decodePicture(file)->pixels == bitmap.pixels) << width << " x " << height << ' ' << isOpaque;
        }
    EXPECT_EQ(encodePng({}), "");
}

TEST(PngEncoder, AlphaIsWrittenWhereItIsNeeded)
{
    Bitmap bitmap = sample(90, 90, true);
    EXPECT_EQ(encodePng(bitmap)[colorsInHeader], 2);
    bitmap.pixels.back() = 0xFE000000;
    EXPECT_EQ(encodePng(bitmap)[colorsInHeader], 6);
}

TEST(PngEncoder, SmoothPicturesTakeLittleRoom)
{
    Bitmap bitmap = *Bitmap::make(200, 200);
    for (int y = 0; y < 200; ++y)
        for (int x = 0; x < 200; ++x)
            bitmap.pixels[static_cast<std::size_t>(y * 200 + x)]
                = 0xFF000000U | static_cast<std::uint32_t>(x) << 16 | static_cast<std::uint32_t>(y) << 8;
    EXPECT_LT(encodePng(bitmap).size(), bitmap.pixels.size() / 8);
}

} // namespace
