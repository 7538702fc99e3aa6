#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/graphics/bitmap.h"
#include "platform/runtime/class_definition.h"
#include "support/view_test.h"

#include <functional>

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

TEST_F(Pixels, CornersAreRoundByTheMaskAndTheirCurveIsALayersOwn)
{
    const id layer = send<"layer">(box);
    send<"setCornerRadius:", void>(layer, 40.0);
    /// Which corners show the box: top left, top right, bottom left, bottom right.
    const auto corners = [] {
        std::string square;
        for (const CGPoint corner : { CGPoint { 102, 52 }, { 197, 52 }, { 102, 147 }, { 197, 147 } })
            square += at(corner) == red ? 'x' : '.';
        return square;
    };
    for (const auto& [mask, square] : std::initializer_list<std::pair<NSUInteger, const char*>> { { 15, "...." },
             { 1, ".xxx" }, { 2, "x.xx" }, { 4, "xx.x" }, { 8, "xxx." }, { 3, "..xx" }, { 0, "xxxx" } }) {
        send<"setMaskedCorners:", void>(layer, mask);
        EXPECT_EQ(corners(), square) << mask;
    }
    send<"setMaskedCorners:", void>(layer, NSUInteger { 15 });
    send<"setCornerRadius:", void>(layer, 30.0);
    // Where a circle has already left the side, and where it stands at 45 degrees.
    const CGPoint beside { 131, 50 };
    const CGPoint diagonal { 109.5, 59.5 };
    EXPECT_EQ(at(beside), red);
    EXPECT_EQ(at(diagonal), red);
    send<"setCornerCurve:", void>(layer, string("continuous"));
    EXPECT_NE(at(beside), red) << "the curve begins further out";
    EXPECT_EQ(at(diagonal), red) << "and is as round in its middle";
    send<"setClipsToBounds:", void>(box, true);
    send<"setCornerRadius:", void>(layer, 50.0);
    EXPECT_EQ(at({ 150, 50 }), red) << "a circle where the sides leave no room";
    EXPECT_EQ(at({ 112, 62 }), white);
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

/// Says how often it was drawn.
struct EaselFields {
    int drawn = 0;
};

void Easel_draw(const id& self, SEL, CGRect)
{
    ++fieldsOf<EaselFields>(self).drawn;
}

constexpr MethodDefinition easelMethods[] { method<"drawRect:", &Easel_draw>() };
const ClassDefinition Easel_class { .name = "Easel", .superclassName = "UIView", .methods = easelMethods };

class Damage : public Pixels {
protected:
    id easel;

    Damage()
    {
        registerClass(Easel_class);
        easel = send<"initWithFrame:">(send<"alloc">(classObject<"Easel">()), CGRectMake(0, 0, 10, 10));
        send<"addSubview:", void>(window, easel);
    }

    /// How often the screen is drawn for one picture.
    int drawings(double scale = 1) const
    {
        const int before = fieldsOf<EaselFields>(easel).drawn;
        pictureOfScreen(scale);
        return fieldsOf<EaselFields>(easel).drawn - before;
    }
};

TEST_F(Damage, WhatIsStillIsDrawnOnce)
{
    EXPECT_EQ(drawings(), 1);
    EXPECT_EQ(drawings(), 0);
    EXPECT_EQ(drawings(2), 1) << "at another scale";
    send<"setNeedsDisplay", void>(box);
    EXPECT_EQ(drawings(2), 1);
    EXPECT_EQ(drawings(2), 0);
    send<"animateWithDuration:animations:", void>(
        classObject<"UIView">(), 1.0, block([this] { send<"setAlpha:", void>(box, 0.5); }));
    for (int frame = 0; frame < 3; ++frame) {
        EXPECT_EQ(drawings(), 1) << "in motion";
        advanceClock(std::chrono::milliseconds(400));
    }
    EXPECT_EQ(drawings(), 1) << "the motion has ended since";
    EXPECT_EQ(drawings(), 0);
    send<"setTag:", void>(box, NSInteger { 3 });
    send<"setAccessibilityLabel:", void>(box, string("box"));
    EXPECT_EQ(drawings(), 0) << "nothing seen has changed";
}

TEST_F(Damage, EveryChangeThatIsSeenIsDrawnAndTheSameValueIsNone)
{
    const id layer = send<"layer">(box);
    const id free = send<"layer">(classObject<"CALayer">());
    const id gradient = send<"layer">(classObject<"CAGradientLayer">());
    const id label = send<"initWithFrame:">(send<"alloc">(classObject<"UILabel">()), CGRectMake(0, 20, 60, 40));
    const id wheel = send<"initWithActivityIndicatorStyle:">(
        send<"alloc">(classObject<"UIActivityIndicatorView">()), NSInteger { 100 });
    const id picture = send<"new">(classObject<"UIImageView">());
    const id extra = makeView(CGRectMake(0, 0, 5, 5));
    const id front = send<"new">(classObject<"UIWindow">());
    UIGraphicsBeginImageContextWithOptions({ 4, 4 }, false, 1);
    const id image = UIGraphicsGetImageFromCurrentImageContext();
    UIGraphicsEndImageContext();
    for (const id& view : { label, wheel, picture })
        send<"addSubview:", void>(box, view);
    for (const id& sublayer : { free, gradient })
        send<"addSublayer:", void>(layer, sublayer);
    send<"setText:", void>(label, string("text"));
    const id green = color(0, 1, 0);
    const struct {
        const char* name;
        std::function<void()> change;
    } changes[] {
        { "hidden", [&] { send<"setHidden:", void>(box, true); } },
        { "shown", [&] { send<"setHidden:", void>(box, false); } },
        { "alpha", [&] { send<"setAlpha:", void>(box, 0.9); } },
        { "frame", [&] { send<"setFrame:", void>(box, CGRectMake(90, 50, 100, 100)); } },
        { "transform", [&] { send<"setTransform:", void>(box, CGAffineTransformMakeScale(0.9, 0.9)); } },
        { "background", [&] { send<"setBackgroundColor:", void>(box, green); } },
        { "tint", [&] { send<"setTintColor:", void>(box, green); } },
        { "content mode", [&] { send<"setContentMode:", void>(box, NSInteger { 4 }); } },
        { "clips", [&] { send<"setClipsToBounds:", void>(box, true); } },
        { "corner", [&] { send<"setCornerRadius:", void>(layer, 9.0); } },
        { "border", [&] { send<"setBorderWidth:", void>(layer, 2.0); } },
        { "border's colour", [&] { send<"setBorderColor:", void>(layer, green); } },
        { "contents", [&] { send<"setContents:", void>(layer, image); } },
        { "shadow", [&] { send<"setShadowOpacity:", void>(layer, 0.5F); } },
        { "shadow's colour", [&] { send<"setShadowColor:", void>(layer, green); } },
        { "shadow's offset", [&] { send<"setShadowOffset:", void>(layer, CGSizeMake(1, 1)); } },
        { "shadow's radius", [&] { send<"setShadowRadius:", void>(layer, 1.0); } },
        { "layer's mask", [&] { send<"setMasksToBounds:", void>(layer, false); } },
        { "layer's frame", [&] { send<"setFrame:", void>(free, CGRectMake(0, 0, 8, 8)); } },
        { "layer's background", [&] { send<"setBackgroundColor:", void>(free, green); } },
        { "layer's opacity", [&] { send<"setOpacity:", void>(free, 0.5F); } },
        { "layer's corner", [&] { send<"setCornerRadius:", void>(free, 2.0); } },
        { "layer hidden", [&] { send<"setHidden:", void>(free, true); } },
        { "gradient", [&] { send<"setColors:", void>(gradient, array({ green })); } },
        { "gradient's places", [&] { send<"setLocations:", void>(gradient, array({ number(1) })); } },
        { "gradient's start", [&] { send<"setStartPoint:", void>(gradient, CGPointMake(1, 0)); } },
        { "gradient's end", [&] { send<"setEndPoint:", void>(gradient, CGPointMake(1, 1)); } },
        { "text", [&] { send<"setText:", void>(label, string("other")); } },
        { "font", [&] { send<"setFont:", void>(label, send<"systemFontOfSize:">(classObject<"UIFont">(), 9.0)); } },
        { "lines", [&] { send<"setNumberOfLines:", void>(label, NSInteger { 0 }); } },
        { "break", [&] { send<"setLineBreakMode:", void>(label, NSInteger { 2 }); } },
        { "alignment", [&] { send<"setTextAlignment:", void>(label, NSInteger { 2 }); } },
        { "text's colour", [&] { send<"setTextColor:", void>(label, green); } },
        { "text's shadow", [&] { send<"setShadowColor:", void>(label, green); } },
        { "text's shadow's offset", [&] { send<"setShadowOffset:", void>(label, CGSizeMake(2, 2)); } },
        { "fits", [&] { send<"setAdjustsFontSizeToFitWidth:", void>(label, true); } },
        { "least scale", [&] { send<"setMinimumScaleFactor:", void>(label, 0.3); } },
        { "image", [&] { send<"setImage:", void>(picture, image); } },
        { "wheel", [&] { send<"startAnimating", void>(wheel); } },
        { "wheel's colour", [&] { send<"setColor:", void>(wheel, green); } },
        { "wheel stays", [&] { send<"setHidesWhenStopped:", void>(wheel, false); } },
        { "wheel rests", [&] { send<"stopAnimating", void>(wheel); } },
        { "subview", [&] { send<"addSubview:", void>(box, extra); } },
        { "order", [&] { send<"insertSubview:atIndex:", void>(box, extra, NSInteger { 0 }); } },
        { "subview gone", [&] { send<"removeFromSuperview", void>(extra); } },
        { "layer gone", [&] { send<"removeFromSuperlayer", void>(free); } },
        { "window", [&] { send<"setHidden:", void>(front, false); } },
        { "window's level", [&] { send<"setWindowLevel:", void>(front, 5.0); } },
        { "style", [] { setScreenStyle(InterfaceStyle::Dark); } },
    };
    pictureOfScreen(1);
    for (const auto& [name, change] : changes) {
        change();
        EXPECT_EQ(drawings(), 1) << name;
        const std::string_view text = name;
        const bool turns = text.starts_with("wheel") && text != "wheel rests"; // and is drawn anew each time
        if (turns || text == "order" || text == "style")
            continue;
        change();
        EXPECT_EQ(drawings(), 0) << name << ", as it stands";
    }
}

TEST_F(Pixels, AFrameThatIsKeptIsWhatWouldBeDrawn)
{
    const std::string once = pictureOfScreen(2);
    setScreen({ 300, 200 }, 2);
    EXPECT_EQ(pictureOfScreen(2), once);
    send<"setBackgroundColor:", void>(box, color(0, 0, 1));
    EXPECT_EQ(at({ 101, 51 }), blue);
}

} // namespace
