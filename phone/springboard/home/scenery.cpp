#include "phone/springboard/home/scenery.h"

#include "phone/iconservices/drawing.h"
#include "phone/iconservices/icon_pictures.h"

namespace phone {

using namespace platform;

namespace {

id alloc(Class cls)
{
    return send<"alloc">(id(cls));
}

id makeGradient(const CGRect& frame, const id& colors, CGPoint start, CGPoint end)
{
    id layer = send<"layer">(id(classNamed<"CAGradientLayer">()));
    send<"setFrame:", void>(layer, frame);
    send<"setColors:", void>(layer, colors);
    send<"setStartPoint:", void>(layer, start);
    send<"setEndPoint:", void>(layer, end);
    return layer;
}

id makeWindow(double level)
{
    id window = send<"new">(id(classNamed<"UIWindow">()));
    send<"setWindowLevel:", void>(window, level);
    return window;
}

constexpr double dotSide = 7;
constexpr double dotStep = 16;

} // namespace

id makePlainView(const CGRect& frame)
{
    return send<"initWithFrame:">(alloc(classNamed<"UIView">()), frame);
}

id makeGlass(const CGRect& frame, double cornerRadius)
{
    id glass = makePlainView(frame);
    send<"setBackgroundColor:", void>(glass, color(0xF2F4FF, 0.3));
    const id layer = send<"layer">(glass);
    send<"setCornerRadius:", void>(layer, cornerRadius);
    send<"setBorderWidth:", void>(layer, 0.5);
    send<"setBorderColor:", void>(layer, color(0xFFFFFF, 0.25));
    return glass;
}

id makeHomeWindow()
{
    id window = makeWindow(-2);
    const CGRect screen = send<"bounds", CGRect>(window);
    const id wallpaper = makePlainView(screen);
    const id layer = send<"layer">(wallpaper);
    // A sky before sunrise, and over it the light that comes from one side.
    send<"addSublayer:", void>(layer,
        makeGradient(screen,
            array({ color(0x1B2A63), color(0x3E4A9C), color(0x8B6BB8), color(0xE28F9E), color(0xF7C59F) }), { 0.5, 0 },
            { 0.5, 1 }));
    send<"addSublayer:", void>(layer,
        makeGradient(screen, array({ color(0x49C6E5, 0.38), color(0x49C6E5, 0), color(0xFF6B9D, 0.22) }), { 0, 0.1 },
            { 1, 0.9 }));
    send<"addSubview:", void>(window, wallpaper);
    return window;
}

id makePageDots(const CGRect& screen)
{
    return makePlainView(CGRectMake(0, screen.size.height - 132, screen.size.width, dotSide));
}

void showPageDots(const id& dots, std::size_t pages)
{
    for (const id& dot : itemsOf(send<"subviews">(dots)))
        send<"removeFromSuperview", void>(dot);
    const double width = send<"bounds", CGRect>(dots).size.width;
    for (std::size_t page = 0; page < pages; ++page) {
        const double offset = (static_cast<double>(page) - static_cast<double>(pages - 1) / 2) * dotStep;
        const id dot = makePlainView(CGRectMake(width / 2 + offset - dotSide / 2, 0, dotSide, dotSide));
        send<"setBackgroundColor:", void>(dot, color(0xFFFFFF, page == 0 ? 1 : 0.4));
        send<"setCornerRadius:", void>(send<"layer">(dot), dotSide / 2);
        send<"addSubview:", void>(dots, dot);
    }
}

void showScene(const id& application)
{
    static auto* const shown = new id;
    *shown = nil;
    if (!application)
        return;
    *shown = makeWindow(0);
    const id& window = *shown;
    const CGRect screen = send<"bounds", CGRect>(window);
    send<"setBackgroundColor:", void>(window, color(0x17181F));
    const id picture = send<"initWithFrame:">(alloc(classNamed<"UIImageView">()),
        CGRectMake(screen.size.width / 2 - 60, screen.size.height / 2 - 100, 120, 120));
    const auto text = [](const id& value) { return asString(value) ? asString(value)->text() : std::string(); };
    send<"setImage:", void>(picture,
        iconOfPicture(squarePicture(text(send<"bundleIdentifier">(application)), text(send<"displayName">(application)),
                          text(send<"bundlePath">(application))),
            { iconSide, iconSide }, iconCornerRadius));
    send<"addSubview:", void>(window, picture);
    const id name = send<"initWithFrame:">(
        alloc(classNamed<"UILabel">()), CGRectMake(20, screen.size.height / 2 + 36, screen.size.width - 40, 30));
    send<"setText:", void>(name, send<"displayName">(application));
    send<"setFont:", void>(name, systemFont(22, true));
    send<"setTextAlignment:", void>(name, 1L);
    send<"setTextColor:", void>(name, color(0xFFFFFF));
    send<"addSubview:", void>(window, name);
    send<"setHidden:", void>(window, false);
    send<"setTransform:", void>(window, CGAffineTransformMakeScale(0.4, 0.4));
    send<"setAlpha:", void>(window, 0.0);
    send<"animateWithDuration:delay:options:animations:completion:", void>(id(classNamed<"UIView">()), 0.3, 0.0,
        NSUInteger { 2 << 16 }, block([window = *shown] {
            send<"setTransform:", void>(window, CGAffineTransformIdentity);
            send<"setAlpha:", void>(window, 1.0);
        }),
        nil);
}

} // namespace phone
