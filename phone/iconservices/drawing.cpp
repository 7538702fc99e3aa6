#include "phone/iconservices/drawing.h"

#include "platform/screen/framework.h"

namespace phone {

using namespace platform;

namespace {

id bezierPath()
{
    return id(classNamed<"UIBezierPath">());
}

id attributes(const id& font, const id& color)
{
    return dictionary({ { NSFontAttributeName(), font }, { NSForegroundColorAttributeName(), color } });
}

} // namespace

id roundedRect(const CGRect& rect, double radius)
{
    return send<"bezierPathWithRoundedRect:cornerRadius:">(bezierPath(), rect, radius);
}

id ellipse(const CGRect& rect)
{
    return send<"bezierPathWithOvalInRect:">(bezierPath(), rect);
}

id disc(CGPoint center, double radius)
{
    return ellipse(CGRectMake(center.x - radius, center.y - radius, 2 * radius, 2 * radius));
}

id arc(CGPoint center, double radius, double start, double end)
{
    id path = send<"bezierPath">(bezierPath());
    send<"addArcWithCenter:radius:startAngle:endAngle:clockwise:", void>(path, center, radius, start, end, true);
    return path;
}

id polygon(std::initializer_list<CGPoint> points, PathEnd end)
{
    id path = send<"bezierPath">(bezierPath());
    bool first = true;
    for (const CGPoint& point : points) {
        if (std::exchange(first, false))
            send<"moveToPoint:", void>(path, point);
        else
            send<"addLineToPoint:", void>(path, point);
    }
    if (end == PathEnd::Closed)
        send<"closePath", void>(path);
    return path;
}

void fill(const id& path, const id& color)
{
    send<"setFill", void>(color);
    send<"fill", void>(path);
}

void stroke(const id& path, const id& color, double width)
{
    send<"setStroke", void>(color);
    send<"setLineWidth:", void>(path, width);
    send<"stroke", void>(path);
}

void fillGradient(const id& path, const CGRect& rect, const id& top, const id& bottom)
{
    const id context = UIGraphicsGetCurrentContext();
    send<"saveState", void>(context);
    send<"addClip", void>(path);
    send<"drawLinearGradient:from:to:", void>(context, array({ top, bottom }),
        CGPointMake(CGRectGetMidX(rect), rect.origin.y), CGPointMake(CGRectGetMidX(rect), CGRectGetMaxY(rect)));
    send<"restoreState", void>(context);
}

id systemFont(double size, bool bold)
{
    const id fonts(classNamed<"UIFont">());
    return bold ? send<"boldSystemFontOfSize:">(fonts, size) : send<"systemFontOfSize:">(fonts, size);
}

CGSize sizeOfText(std::string_view text, const id& font)
{
    return send<"sizeWithAttributes:", CGSize>(string(text), dictionary({ { NSFontAttributeName(), font } }));
}

void drawCentered(std::string_view text, const id& font, const id& color, CGPoint center)
{
    const CGSize size = sizeOfText(text, font);
    send<"drawAtPoint:withAttributes:", void>(
        string(text), CGPointMake(center.x - size.width / 2, center.y - size.height / 2), attributes(font, color));
}

} // namespace phone
