#include "icons/icon_drawing.h"

#include "support/pictures.h"
#include "support/view_test.h"

namespace appledger {

using namespace platform;
using namespace support;

namespace {

TEST(FillingRect, CoversTheBoxFromItsMiddle)
{
    struct Case {
        CGSize picture;
        CGSize box;
        double zoom;
        CGRect rect;
    };
    const Case cases[] {
        { { 100, 100 }, { 60, 60 }, 1, CGRectMake(0, 0, 60, 60) },
        { { 100, 200 }, { 60, 60 }, 1, CGRectMake(0, -30, 60, 120) }, // portrait: top and bottom go alike
        { { 300, 100 }, { 60, 60 }, 1, CGRectMake(-60, 0, 180, 60) },
        { { 20, 20 }, { 60, 60 }, 1, CGRectMake(0, 0, 60, 60) }, // a small picture grows
        { { 100, 100 }, { 60, 30 }, 1, CGRectMake(0, -15, 60, 60) },
        { { 100, 100 }, { 60, 60 }, 1.3, CGRectMake(-9, -9, 78, 78) },
    };
    for (const auto& [picture, box, zoom, expected] : cases) {
        const CGRect rect = fillingRect(picture, box, zoom);
        EXPECT_NEAR(rect.origin.x, expected.origin.x, 1e-9);
        EXPECT_NEAR(rect.origin.y, expected.origin.y, 1e-9);
        EXPECT_NEAR(rect.size.width, expected.size.width, 1e-9);
        EXPECT_NEAR(rect.size.height, expected.size.height, 1e-9);
    }
}

class IconDrawing : public ViewTest { };

/// Thirds from the top: red, green, blue.
std::string flag(int width, int height)
{
    return png(width, height, [height](int, int y) {
        return y < height / 3 ? red : y < 2 * height / 3 ? green : blue;
    });
}

std::string sizeText(const id& image)
{
    const CGSize size = send<"size", CGSize>(image);
    std::ostringstream text;
    text << size.width << " x " << size.height << " @" << send<"scale", double>(image);
    return text.str();
}

TEST_F(IconDrawing, AMaskedIconHasRoundCornersAndTheMiddleOfThePicture)
{
    const id icon = drawMaskedIcon(imageOf(flag(60, 180)), { 60, 60 }, 2, 13.5);
    EXPECT_EQ(sizeText(icon), "60 x 60 @2");
    EXPECT_EQ(colorAt(icon, 0.5, 0.02) + colorAt(icon, 0.5, 0.5) + colorAt(icon, 0.5, 0.98), "greengreengreen");
    for (const double x : { 0.0, 1.0 })
        for (const double y : { 0.0, 1.0 })
            EXPECT_EQ(colorAt(icon, x, y), "clear");
    // Just inside of the arc, and on the straight edge.
    EXPECT_EQ(colorAt(icon, 0.075, 0.075), "green");
    EXPECT_EQ(colorAt(icon, 0, 0.5), "green") << "no fringe";
}

TEST_F(IconDrawing, AnUnmaskedIconFillsItsCornersFromBehind)
{
    // Round corners of the picture's own, as an icon file has them, and a red rim that the larger one cuts away.
    const std::string rounded = png(100, 100, [](int x, int y) {
        const int dx = std::max({ 22 - x, x - 77, 0 });
        const int dy = std::max({ 22 - y, y - 77, 0 });
        return dx * dx + dy * dy > 22 * 22 ? clear : green;
    });
    const id icon = drawUnmaskedIcon(imageOf(rounded), { 50, 50 }, 2);
    EXPECT_EQ(colorAt(icon, 0, 0), "green");
    EXPECT_EQ(colorAt(icon, 0.5, 0.5), "green");

    // Where even that leaves something free, it is opaque.
    const id dot = drawUnmaskedIcon(imageOf(plainPng(clear, 10)), { 50, 50 }, 1);
    EXPECT_EQ(colorAt(dot, 0.5, 0.5), "ff000000");

    // The larger one lies behind: the rim of the picture itself is what is seen.
    const std::string rimmed = png(100, 100, [](int x, int y) {
        return std::min({ x, y, 99 - x, 99 - y }) < 8 ? red : green;
    });
    EXPECT_EQ(colorAt(drawUnmaskedIcon(imageOf(rimmed), { 50, 50 }, 2), 0.5, 0.02), "red");
}

TEST_F(IconDrawing, AFileHoldsTheCentreSquareInItsOwnPixels)
{
    // 300 by 200 with a mark at each side of the square that stays: 200 by 200, corners of 45.
    const std::string wide = png(300, 200, [](int x, int) {
        return x < 50 || x >= 250 ? red : x < 60 || x >= 240 ? blue : green;
    });
    const id icon = drawIconForFile(imageOf(wide));
    EXPECT_EQ(sizeText(icon), "200 x 200 @1");
    EXPECT_EQ(colorAt(icon, 0, 0.5) + colorAt(icon, 0.5, 0.5) + colorAt(icon, 0.999, 0.5), "bluegreenblue");
    const Bitmap pixels = pixelsOf(icon);
    const auto isClear = [&](int x, int y) { return pixels.pixels[static_cast<std::size_t>(y * 200 + x)] == clear; };
    // On the top row the arc ends at 45: nothing is drawn before some pixels short of it, and all behind it.
    EXPECT_TRUE(isClear(30, 0));
    EXPECT_FALSE(isClear(45, 0));
    // On the diagonal the arc lies 45 (1 - 1/sqrt 2) = 13.2 pixels in.
    EXPECT_TRUE(isClear(12, 12));
    EXPECT_FALSE(isClear(14, 14));

    // The image's own scale stays.
    EXPECT_EQ(sizeText(drawIconForFile(imageOf(plainPng(red, 90), 3))), "30 x 30 @3");
}

} // namespace

} // namespace appledger
