#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/graphics/bitmap.h"
#include "support/view_test.h"

/// Colours at points where nothing is blended, two pixels a point.

namespace {

using namespace platform;
using support::classObject;

id color(double red, double green, double blue)
{
    return send<"colorWithRed:green:blue:alpha:">(classObject<"UIColor">(), red, green, blue, 1.0);
}

class Pixels : public support::ViewTest {
protected:
    id window = makeWindow();
    id box = makeView(CGRectMake(100, 50, 100, 100));

    Pixels()
    {
        send<"setBackgroundColor:", void>(window, color(1, 1, 1));
        send<"setBackgroundColor:", void>(box, color(1, 0, 0));
        send<"addSubview:", void>(window, box);
    }

    static std::string at(CGPoint point)
    {
        const Bitmap screen = decodePicture(pictureOfScreen(2)).value();
        const Color seen = screen.colorAt(static_cast<int>(point.x * 2), static_cast<int>(point.y * 2));
        return std::to_string(std::lround(seen.red * 255)) + " " + std::to_string(std::lround(seen.green * 255)) + " "
            + std::to_string(std::lround(seen.blue * 255));
    }

    static constexpr const char* white = "255 255 255";
    static constexpr const char* red = "255 0 0";
    static constexpr const char* blue = "0 0 255";
};

TEST_F(Pixels, AViewFillsItsFrameAndARoundCornerDoesNot)
{
    EXPECT_EQ(at({ 101, 51 }), red);
    EXPECT_EQ(at({ 99, 51 }), white);
    EXPECT_EQ(at({ 199, 149 }), red);
    EXPECT_EQ(at({ 201, 149 }), white);
    send<"setCornerRadius:", void>(send<"layer">(box), 50.0);
    EXPECT_EQ(at({ 101, 51 }), white);
    EXPECT_EQ(at({ 150, 52 }), red);
}

TEST_F(Pixels, SubviewsAreCutOffOnlyWhereTheLayerMasks)
{
    const id inner = makeView(CGRectMake(50, 0, 100, 20));
    send<"setBackgroundColor:", void>(inner, color(0, 0, 1));
    send<"addSubview:", void>(box, inner);
    EXPECT_EQ(at({ 230, 55 }), blue);
    send<"setClipsToBounds:", void>(box, true);
    EXPECT_EQ(at({ 230, 55 }), white);
    EXPECT_EQ(at({ 180, 55 }), blue);
}

TEST_F(Pixels, AlphaHoldsForTheViewWithAllThatStandsInIt)
{
    const id inner = makeView(CGRectMake(0, 0, 50, 50));
    send<"setBackgroundColor:", void>(inner, color(0, 0, 1));
    send<"addSubview:", void>(box, inner);
    send<"setAlpha:", void>(box, 0.4);
    // Were they blended one by one, the red would shine through the blue.
    EXPECT_EQ(at({ 110, 60 }), "153 153 255");
    send<"setHidden:", void>(box, true);
    EXPECT_EQ(at({ 110, 60 }), white);
}

TEST_F(Pixels, ATransformTurnsAroundTheCentre)
{
    send<"setTransform:", void>(box, CGAffineTransformMakeScale(0.5, 0.5));
    EXPECT_EQ(at({ 150, 100 }), red);
    EXPECT_EQ(at({ 120, 100 }), white);
    EXPECT_EQ((send<"frame", CGRect>(box)), CGRectMake(125, 75, 50, 50));
    send<"setTransform:", void>(box, CGAffineTransformMakeScale(0, 0));
    EXPECT_EQ(at({ 150, 100 }), white) << "and a transform without an inverse shows nothing";
}

TEST_F(Pixels, AShadowLiesWhereItsLayerSays)
{
    const id layer = send<"layer">(box);
    send<"setShadowOpacity:", void>(layer, 1.0F);
    send<"setShadowRadius:", void>(layer, 0.0);
    send<"setShadowOffset:", void>(layer, CGSizeMake(0, 20));
    EXPECT_EQ(at({ 150, 100 }), red);
    EXPECT_EQ(at({ 150, 165 }), "0 0 0");
    EXPECT_EQ(at({ 150, 175 }), white);
    EXPECT_EQ(at({ 150, 45 }), white);
}

TEST_F(Pixels, APictureFillsItsViewByItsMode)
{
    UIGraphicsBeginImageContextWithOptions({ 20, 10 }, false, 1);
    send<"setFill", void>(color(0, 0, 1));
    send<"fill", void>(send<"bezierPathWithRect:">(classObject<"UIBezierPath">(), CGRectMake(0, 0, 20, 10)));
    const id image = UIGraphicsGetImageFromCurrentImageContext();
    UIGraphicsEndImageContext();
    EXPECT_EQ((send<"size", CGSize>(image)), CGSizeMake(20, 10));
    const id picture = send<"initWithImage:">(send<"alloc">(classObject<"UIImageView">()), image);
    EXPECT_EQ((send<"bounds", CGRect>(picture)), CGRectMake(0, 0, 20, 10));
    send<"setFrame:", void>(picture, CGRectMake(0, 0, 100, 100));
    send<"addSubview:", void>(box, picture);
    const struct {
        long mode;
        const char* top;
        const char* edge;
        const char* middle;
    } modes[] { { 0, blue, blue, blue }, { 1, red, blue, blue }, { 2, blue, blue, blue }, { 4, red, red, blue } };
    for (const auto& [mode, top, edge, middle] : modes) {
        send<"setContentMode:", void>(picture, mode);
        EXPECT_EQ(at({ 150, 52 }), top) << mode;
        EXPECT_EQ(at({ 102, 100 }), edge) << mode;
        EXPECT_EQ(at({ 150, 100 }), middle) << mode;
    }
}

TEST_F(Pixels, AnImageContextOfNoSizeIsHarmless)
{
    for (const CGSize size : { CGSizeZero, CGSizeMake(-5, 10), CGSizeMake(1e9, 1e9), CGSizeMake(NAN, 1) }) {
        UIGraphicsBeginImageContextWithOptions(size, false, 0);
        EXPECT_TRUE(UIGraphicsGetCurrentContext());
        UIGraphicsEndImageContext();
    }
    EXPECT_EQ(UIGraphicsGetCurrentContext(), nil);
    EXPECT_EQ(UIGraphicsGetImageFromCurrentImageContext(), nil);
    UIGraphicsEndImageContext();
    EXPECT_EQ(pictureOfScreen(0), "");
    EXPECT_EQ(pictureOfScreen(1e6), "");
}

TEST_F(Pixels, TextIsAsWideAsItIsMeasured)
{
    const id font = send<"boldSystemFontOfSize:">(classObject<"UIFont">(), 12.0);
    const id attributes = dictionary({ { NSFontAttributeName(), font } });
    const auto width
        = [&](const char* text) { return send<"sizeWithAttributes:", CGSize>(string(text), attributes).width; };
    EXPECT_EQ(width(""), 0);
    EXPECT_GT(width("mm"), width("ii"));
    EXPECT_NEAR(width("mmmm"), 2 * width("mm"), 0.5);
    EXPECT_GT(width("12:00"), 20);
    EXPECT_LT(width("12:00"), 45) << "digits come from the type, not from a font of signs";

    const id label = send<"new">(classObject<"UILabel">());
    send<"setFont:", void>(label, font);
    send<"setText:", void>(label, string("mmmm"));
    EXPECT_EQ((send<"intrinsicContentSize", CGSize>(label).width), std::ceil(width("mmmm")));
}

} // namespace
