#include "platform/graphics/canvas.h"

#include <numbers>

namespace platform {

namespace {

/// How far a quarter circle's control points stand from its ends, in radii.
constexpr double quarterCircle = 0.5522847498;

} // namespace

void Path::addRect(const CGRect& rect)
{
    moveTo(rect.origin);
    lineTo({ CGRectGetMaxX(rect), rect.origin.y });
    lineTo({ CGRectGetMaxX(rect), CGRectGetMaxY(rect) });
    lineTo({ rect.origin.x, CGRectGetMaxY(rect) });
    close();
}

void Path::addRoundedRect(const CGRect& rect, double radius)
{
    const double r = std::min({ radius, rect.size.width / 2, rect.size.height / 2 });
    if (!(r > 0)) {
        addRect(rect);
        return;
    }
    const double k = r * (1 - quarterCircle);
    const double left = rect.origin.x;
    const double top = rect.origin.y;
    const double right = CGRectGetMaxX(rect);
    const double bottom = CGRectGetMaxY(rect);
    moveTo({ left + r, top });
    lineTo({ right - r, top });
    curveTo({ right, top + r }, { right - k, top }, { right, top + k });
    lineTo({ right, bottom - r });
    curveTo({ right - r, bottom }, { right, bottom - k }, { right - k, bottom });
    lineTo({ left + r, bottom });
    curveTo({ left, bottom - r }, { left + k, bottom }, { left, bottom - k });
    lineTo({ left, top + r });
    curveTo({ left + r, top }, { left, top + k }, { left + k, top });
    close();
}

void Path::addEllipse(const CGRect& rect)
{
    const double rx = rect.size.width / 2;
    const double ry = rect.size.height / 2;
    const double x = CGRectGetMidX(rect);
    const double y = CGRectGetMidY(rect);
    const double kx = rx * quarterCircle;
    const double ky = ry * quarterCircle;
    moveTo({ x + rx, y });
    curveTo({ x, y + ry }, { x + rx, y + ky }, { x + kx, y + ry });
    curveTo({ x - rx, y }, { x - kx, y + ry }, { x - rx, y + ky });
    curveTo({ x, y - ry }, { x - rx, y - ky }, { x - kx, y - ry });
    curveTo({ x + rx, y }, { x + kx, y - ry }, { x + rx, y - ky });
    close();
}

void Path::addArc(CGPoint center, double radius, double start, double end)
{
    const auto at = [&](double angle) {
        return CGPointMake(center.x + radius * std::cos(angle), center.y + radius * std::sin(angle));
    };
    constexpr double quarter = std::numbers::pi / 2;
    const int pieces = std::clamp(static_cast<int>(std::ceil(std::abs(end - start) / quarter)), 1, 64);
    const double step = (end - start) / pieces;
    const double reach = radius * 4 / 3 * std::tan(step / 4);
    if (elements_.empty())
        moveTo(at(start));
    else
        lineTo(at(start));
    for (int piece = 0; piece < pieces; ++piece) {
        const double from = start + piece * step;
        const double to = from + step;
        const CGPoint p0 = at(from);
        const CGPoint p1 = at(to);
        curveTo(p1, { p0.x - reach * std::sin(from), p0.y + reach * std::cos(from) },
            { p1.x + reach * std::sin(to), p1.y - reach * std::cos(to) });
    }
}

void Path::apply(const CGAffineTransform& transform)
{
    for (Element& element : elements_)
        for (CGPoint& point : element.points)
            point = CGPointApplyAffineTransform(point, transform);
}

Path Path::roundedRect(const CGRect& rect, double radius)
{
    Path path;
    path.addRoundedRect(rect, radius);
    return path;
}

} // namespace platform
