#include "platform/graphics/reduction.h"

#include "platform/graphics/canvas.h"

#include <gtest/gtest.h>

using namespace platform;

namespace {

TEST(Reduction, TakesTheMeanOfEachSquare)
{
    Bitmap bitmap = *Bitmap::make(5, 3);
    bitmap.pixels = {
        0xFF000000, 0xFF0000FF, 0x00000000, 0x40302010, 0x11223344, //
        0xFF00FF00, 0xFFFF0000, 0x00000000, 0x40302010, 0x33445566, //
        0x80808080, 0x82828282, 0xFFFFFFFF, 0xFFFFFFFF, 0x01020304, //
    };
    const Bitmap reduced = reducedBy(bitmap, 2);
    EXPECT_EQ(reduced.width, 3);
    EXPECT_EQ(reduced.height, 2);
    EXPECT_EQ(reduced.pixels,
        (std::vector<std::uint32_t> { 0xFF404040, 0x20181008, 0x22334455, 0x81818181, 0xFFFFFFFF, 0x01020304 }));
    EXPECT_EQ(reducedBy(bitmap, 1).pixels, bitmap.pixels);
    Bitmap white = *Bitmap::make(300, 260);
    std::ranges::fill(white.pixels, 0xFFFFFFFF);
    EXPECT_EQ(reducedBy(white, mostReduced).pixels, std::vector<std::uint32_t>(4, 0xFFFFFFFF));
}

Bitmap drawn(const Bitmap& bitmap, int side)
{
    Bitmap target = *Bitmap::make(side, side);
    const double length = side;
    Canvas(target, 1).draw(bitmap, { {}, { length, length } });
    return target;
}

/// Lines of a pixel are grey from afar, at any size and without a pattern.
TEST(Reduction, ShowsNoPatternThatIsNotThere)
{
    for (const int side : { 361, 1024, 3060 }) {
        Bitmap lines = *Bitmap::make(side, side);
        for (std::size_t index = 0; index < lines.pixels.size(); ++index)
            lines.pixels[index] = index % static_cast<std::size_t>(side) % 2 == 0 ? 0xFFFFFFFF : 0xFF000000;
        const Bitmap small = drawn(lines, 180);
        for (int x = 1; x < 179; ++x)
            EXPECT_NEAR(small.colorAt(x, 90).red, 0.5, 0.13) << side << ' ' << x;
    }
}

/// A half that is red and a half that isn't there: what is between is red too, only less.
TEST(Reduction, MixesNoColourIntoTheEdgeOfWhatIsTransparent)
{
    for (const int side : { 250, 1000, 3024 }) {
        Bitmap half = *Bitmap::make(side, side);
        for (std::size_t index = 0; index < half.pixels.size(); ++index)
            half.pixels[index]
                = index % static_cast<std::size_t>(side) < static_cast<std::size_t>(side) / 3 ? 0xFFFF0000 : 0;
        const Bitmap small = drawn(half, 181);
        for (int x = 0; x < 181; ++x) {
            const Color color = small.colorAt(x, 100);
            if (color.alpha > 0) {
                EXPECT_EQ(color, (Color { 1, 0, 0, color.alpha })) << side << ' ' << x;
            }
        }
        EXPECT_EQ(small.colorAt(0, 0).alpha, 1) << side;
        EXPECT_EQ(small.colorAt(57, 100).alpha, 1) << side;
        EXPECT_EQ(small.colorAt(64, 100).alpha, 0) << side;
    }
}

TEST(Reduction, KeepsThePlaceOfThings)
{
    // 16 whole squares and a part of one.
    Bitmap bitmap = *Bitmap::make(1650, 1650);
    for (std::size_t y = 0; y < 1650; ++y)
        for (std::size_t x = 0; x < 1650; ++x)
            bitmap.pixels[y * 1650 + x] = x < 1500 ? 0xFFFFFFFF : 0xFF000000;
    const Bitmap small = drawn(bitmap, 110);
    EXPECT_EQ(small.colorAt(98, 50).red, 1);
    EXPECT_EQ(small.colorAt(101, 50).red, 0);
    EXPECT_EQ(small.colorAt(109, 109), (Color { 0, 0, 0, 1 }));
}

TEST(Reduction, ASmallCopyIsMadeOfLargePicturesAlone)
{
    const struct {
        long width;
        long height;
        std::optional<PixelSize> size;
    } cases[] {
        { 240, 700, {} },
        { 241, 241, PixelSize { 234, 234 } },
        { 3024, 3024, PixelSize { 234, 234 } },
        { 4032, 3024, PixelSize { 312, 234 } },
        { 480, 1439, PixelSize { 234, 702 } },
        { 480, 1440, {} },
    };
    for (const auto& [width, height, size] : cases)
        EXPECT_EQ(smallCopySize(width, height), size) << width << " x " << height;
}

} // namespace
