#pragma once

#include "platform/runtime/encoding.h"

#include <algorithm>
#include <cmath>
#include <string_view>

/// Points, sizes, rectangles and transforms, in points of the screen with y downwards. Plain values; they travel as
/// arguments and results of methods.

namespace platform {

using CGFloat = double;

struct CGPoint {
    CGFloat x = 0;
    CGFloat y = 0;
    friend bool operator==(const CGPoint&, const CGPoint&) = default;
};

struct CGSize {
    CGFloat width = 0;
    CGFloat height = 0;
    friend bool operator==(const CGSize&, const CGSize&) = default;
};

struct CGRect {
    CGPoint origin;
    CGSize size;
    friend bool operator==(const CGRect&, const CGRect&) = default;
};

/// x' = a x + c y + tx, y' = b x + d y + ty.
struct CGAffineTransform {
    CGFloat a = 1;
    CGFloat b = 0;
    CGFloat c = 0;
    CGFloat d = 1;
    CGFloat tx = 0;
    CGFloat ty = 0;
    friend bool operator==(const CGAffineTransform&, const CGAffineTransform&) = default;
};

struct UIEdgeInsets {
    CGFloat top = 0;
    CGFloat left = 0;
    CGFloat bottom = 0;
    CGFloat right = 0;
    friend bool operator==(const UIEdgeInsets&, const UIEdgeInsets&) = default;
    friend constexpr UIEdgeInsets operator+(const UIEdgeInsets& a, const UIEdgeInsets& b) noexcept
    {
        return { a.top + b.top, a.left + b.left, a.bottom + b.bottom, a.right + b.right };
    }
};

template <> inline constexpr std::string_view typeEncoding<CGPoint> = "{CGPoint=dd}";
template <> inline constexpr std::string_view typeEncoding<CGSize> = "{CGSize=dd}";
template <> inline constexpr std::string_view typeEncoding<CGRect> = "{CGRect={CGPoint=dd}{CGSize=dd}}";
template <> inline constexpr std::string_view typeEncoding<CGAffineTransform> = "{CGAffineTransform=dddddd}";
template <> inline constexpr std::string_view typeEncoding<CGPoint*> = "^{CGPoint=dd}";
template <> inline constexpr std::string_view typeEncoding<UIEdgeInsets> = "{UIEdgeInsets=dddd}";

inline constexpr CGPoint CGPointZero {};
inline constexpr CGSize CGSizeZero {};
inline constexpr CGRect CGRectZero {};
inline constexpr UIEdgeInsets UIEdgeInsetsZero {};
inline constexpr CGAffineTransform CGAffineTransformIdentity {};

constexpr CGPoint CGPointMake(CGFloat x, CGFloat y)
{
    return { x, y };
}

constexpr CGSize CGSizeMake(CGFloat width, CGFloat height)
{
    return { width, height };
}

constexpr CGRect CGRectMake(CGFloat x, CGFloat y, CGFloat width, CGFloat height)
{
    return { { x, y }, { width, height } };
}

constexpr UIEdgeInsets UIEdgeInsetsMake(CGFloat top, CGFloat left, CGFloat bottom, CGFloat right)
{
    return { top, left, bottom, right };
}

constexpr CGFloat CGRectGetMaxX(const CGRect& rect)
{
    return rect.origin.x + rect.size.width;
}

constexpr CGFloat CGRectGetMaxY(const CGRect& rect)
{
    return rect.origin.y + rect.size.height;
}

constexpr CGFloat CGRectGetMidX(const CGRect& rect)
{
    return rect.origin.x + rect.size.width / 2;
}

constexpr CGFloat CGRectGetMidY(const CGRect& rect)
{
    return rect.origin.y + rect.size.height / 2;
}

constexpr bool CGRectIsEmpty(const CGRect& rect)
{
    return !(rect.size.width > 0 && rect.size.height > 0);
}

constexpr CGRect CGRectInset(const CGRect& rect, CGFloat dx, CGFloat dy)
{
    return CGRectMake(rect.origin.x + dx, rect.origin.y + dy, rect.size.width - 2 * dx, rect.size.height - 2 * dy);
}

constexpr CGRect CGRectOffset(const CGRect& rect, CGFloat dx, CGFloat dy)
{
    return CGRectMake(rect.origin.x + dx, rect.origin.y + dy, rect.size.width, rect.size.height);
}

constexpr CGRect UIEdgeInsetsInsetRect(const CGRect& rect, const UIEdgeInsets& insets)
{
    return CGRectMake(rect.origin.x + insets.left, rect.origin.y + insets.top,
        rect.size.width - insets.left - insets.right, rect.size.height - insets.top - insets.bottom);
}

/// The left and top edges belong to the rectangle, the others don't.
constexpr bool CGRectContainsPoint(const CGRect& rect, const CGPoint& point)
{
    return point.x >= rect.origin.x && point.x < CGRectGetMaxX(rect) && point.y >= rect.origin.y
        && point.y < CGRectGetMaxY(rect);
}

constexpr CGAffineTransform CGAffineTransformMakeTranslation(CGFloat tx, CGFloat ty)
{
    return { 1, 0, 0, 1, tx, ty };
}

constexpr CGAffineTransform CGAffineTransformMakeScale(CGFloat sx, CGFloat sy)
{
    return { sx, 0, 0, sy, 0, 0 };
}

inline CGAffineTransform CGAffineTransformMakeRotation(CGFloat angle)
{
    return { std::cos(angle), std::sin(angle), -std::sin(angle), std::cos(angle), 0, 0 };
}

/// First `first`, then `second`.
constexpr CGAffineTransform CGAffineTransformConcat(const CGAffineTransform& first, const CGAffineTransform& second)
{
    return { first.a * second.a + first.b * second.c, first.a * second.b + first.b * second.d,
        first.c * second.a + first.d * second.c, first.c * second.b + first.d * second.d,
        first.tx * second.a + first.ty * second.c + second.tx, first.tx * second.b + first.ty * second.d + second.ty };
}

constexpr CGAffineTransform CGAffineTransformTranslate(const CGAffineTransform& transform, CGFloat tx, CGFloat ty)
{
    return CGAffineTransformConcat(CGAffineTransformMakeTranslation(tx, ty), transform);
}

constexpr CGAffineTransform CGAffineTransformScale(const CGAffineTransform& transform, CGFloat sx, CGFloat sy)
{
    return CGAffineTransformConcat(CGAffineTransformMakeScale(sx, sy), transform);
}

/// A transform without an inverse is returned as it is.
constexpr CGAffineTransform CGAffineTransformInvert(const CGAffineTransform& t)
{
    const CGFloat determinant = t.a * t.d - t.b * t.c;
    if (determinant == 0)
        return t;
    return { t.d / determinant, -t.b / determinant, -t.c / determinant, t.a / determinant,
        (t.c * t.ty - t.d * t.tx) / determinant, (t.b * t.tx - t.a * t.ty) / determinant };
}

constexpr bool CGAffineTransformIsIdentity(const CGAffineTransform& transform)
{
    return transform == CGAffineTransformIdentity;
}

constexpr CGPoint CGPointApplyAffineTransform(const CGPoint& p, const CGAffineTransform& t)
{
    return { t.a * p.x + t.c * p.y + t.tx, t.b * p.x + t.d * p.y + t.ty };
}

/// The smallest upright rectangle around the transformed one.
constexpr CGRect CGRectApplyAffineTransform(const CGRect& rect, const CGAffineTransform& transform)
{
    const CGPoint corners[] { rect.origin, { CGRectGetMaxX(rect), rect.origin.y },
        { rect.origin.x, CGRectGetMaxY(rect) }, { CGRectGetMaxX(rect), CGRectGetMaxY(rect) } };
    CGPoint low = CGPointApplyAffineTransform(corners[0], transform);
    CGPoint high = low;
    for (const CGPoint& corner : corners) {
        const CGPoint p = CGPointApplyAffineTransform(corner, transform);
        low = { std::min(low.x, p.x), std::min(low.y, p.y) };
        high = { std::max(high.x, p.x), std::max(high.y, p.y) };
    }
    return CGRectMake(low.x, low.y, high.x - low.x, high.y - low.y);
}

} // namespace platform
