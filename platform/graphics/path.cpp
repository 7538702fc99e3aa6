#include "platform/graphics/canvas.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

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

namespace {

/// A corner as three curves from one side to the other: its points in radii, along the side that it leaves and along
/// the one that it reaches. The second half mirrors the first.
struct CornerShape {
    double reach; ///< how far from the corner it leaves the side
    CGPoint points[5]; ///< two control points, an end, and the next two control points
};

// A circle's, cut at 20 and 70 degrees.
constexpr CornerShape circular { 1,
    { { 0.88335, 0 }, { 0.7676, 0.02041 }, { 0.65798, 0.06031 }, { 0.38021, 0.16141 }, { 0.16141, 0.38021 } } };
// The curvature grows from nothing, and it falls to nothing.
constexpr CornerShape continuous { 1.52866,
    { { 1.08849, 0 }, { 0.8373, 0 }, { 0.63149, 0.07491 }, { 0.37282, 0.16906 }, { 0.16906, 0.37282 } } };

/// Between the circle's corner and the continuous one, as far as the room on the sides allows, in radii.
CornerShape cornerWithin(double room, CornerCurve curve)
{
    if (curve == CornerCurve::Circular)
        return circular;
    const double share = std::clamp((room - circular.reach) / (continuous.reach - circular.reach), 0.0, 1.0);
    CornerShape shape { std::lerp(circular.reach, continuous.reach, share), {} };
    for (std::size_t index = 0; index < std::size(shape.points); ++index)
        shape.points[index] = { std::lerp(circular.points[index].x, continuous.points[index].x, share),
            std::lerp(circular.points[index].y, continuous.points[index].y, share) };
    return shape;
}

} // namespace

void Path::addRoundedRect(const CGRect& rect, const RoundCorners& round)
{
    const double shorter = std::min(rect.size.width, rect.size.height);
    const double r = std::min(round.radius, shorter / 2);
    if (!(r > 0) || (round.corners & AllCorners) == 0) {
        addRect(rect);
        return;
    }
    const CornerShape shape = cornerWithin(shorter / 2 / r, round.curve);
    // Clockwise; each corner with the way towards it and the way on.
    const struct {
        Corner corner;
        CGPoint at;
        CGPoint towards;
        CGPoint onwards;
    } corners[] {
        { TopRight, { CGRectGetMaxX(rect), rect.origin.y }, { 1, 0 }, { 0, 1 } },
        { BottomRight, { CGRectGetMaxX(rect), CGRectGetMaxY(rect) }, { 0, 1 }, { -1, 0 } },
        { BottomLeft, { rect.origin.x, CGRectGetMaxY(rect) }, { -1, 0 }, { 0, -1 } },
        { TopLeft, rect.origin, { 0, -1 }, { 1, 0 } },
    };
    bool first = true;
    const auto reach = [&](CGPoint point) { std::exchange(first, false) ? moveTo(point) : lineTo(point); };
    for (const auto& [corner, at, towards, onwards] : corners) {
        if (!(round.corners & corner)) {
            reach(at);
            continue;
        }
        /// That far before the corner on the way towards it, and that far behind it on the way on.
        const auto point = [&](double before, double behind) {
            return CGPointMake(at.x + r * (behind * onwards.x - before * towards.x),
                at.y + r * (behind * onwards.y - before * towards.y));
        };
        const auto& p = shape.points;
        reach(point(shape.reach, 0));
        curveTo(point(p[2].x, p[2].y), point(p[0].x, p[0].y), point(p[1].x, p[1].y));
        curveTo(point(p[2].y, p[2].x), point(p[3].x, p[3].y), point(p[4].x, p[4].y));
        curveTo(point(0, shape.reach), point(p[1].y, p[1].x), point(p[0].y, p[0].x));
    }
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

Path Path::roundedRect(const CGRect& rect, const RoundCorners& round)
{
    Path path;
    path.addRoundedRect(rect, round);
    return path;
}

} // namespace platform
