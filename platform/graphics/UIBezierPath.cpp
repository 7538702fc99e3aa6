#include "platform/graphics/objects.h"

#include "platform/runtime/message.h"

namespace platform {

namespace {

BezierPathObject& pathIn(const id& self)
{
    return static_cast<BezierPathObject&>(*self);
}

id bezierPath(const id&, SEL)
{
    return make<BezierPathObject>();
}

id bezierPathWithRect(const id&, SEL, CGRect rect)
{
    const Ref<BezierPathObject> made = make<BezierPathObject>();
    made->path.addRect(rect);
    return made;
}

id bezierPathWithRoundedRect(const id&, SEL, CGRect rect, double radius)
{
    const Ref<BezierPathObject> made = make<BezierPathObject>();
    made->path.addRoundedRect(rect, { .radius = radius });
    return made;
}

id bezierPathWithOval(const id&, SEL, CGRect rect)
{
    const Ref<BezierPathObject> made = make<BezierPathObject>();
    made->path.addEllipse(rect);
    return made;
}

void addArc(const id& self, SEL, CGPoint center, double radius, double start, double end, bool clockwise)
{
    constexpr double turn = 6.283185307179586;
    if (clockwise && end < start)
        end += turn;
    else if (!clockwise && end > start)
        end -= turn;
    pathIn(self).path.addArc(center, radius, start, end);
    pathIn(self).current = { center.x + radius * std::cos(end), center.y + radius * std::sin(end) };
}

void moveTo(const id& self, SEL, CGPoint point)
{
    pathIn(self).path.moveTo(point);
    pathIn(self).current = point;
}

void lineTo(const id& self, SEL, CGPoint point)
{
    pathIn(self).path.lineTo(point);
    pathIn(self).current = point;
}

void curveTo(const id& self, SEL, CGPoint end, CGPoint control1, CGPoint control2)
{
    pathIn(self).path.curveTo(end, control1, control2);
    pathIn(self).current = end;
}

void quadCurveTo(const id& self, SEL cmd, CGPoint end, CGPoint control)
{
    const CGPoint start = pathIn(self).current;
    const auto towards = [](CGPoint from, CGPoint to) {
        return CGPointMake(from.x + (to.x - from.x) * 2 / 3, from.y + (to.y - from.y) * 2 / 3);
    };
    curveTo(self, cmd, end, towards(start, control), towards(end, control));
}

void closePath(const id& self, SEL)
{
    pathIn(self).path.close();
}

void appendPath(const id& self, SEL, const id& other)
{
    if (const auto* const added = as<BezierPathObject>(other))
        pathIn(self).path.append(added->path);
}

void applyTransform(const id& self, SEL, CGAffineTransform transform)
{
    pathIn(self).path.apply(transform);
}

void addClip(const id& self, SEL)
{
    if (Canvas* const canvas = currentCanvas())
        canvas->clip(pathIn(self).path);
}

void fill(const id& self, SEL)
{
    if (Canvas* const canvas = currentCanvas())
        canvas->fill(pathIn(self).path, currentFillColor());
}

void stroke(const id& self, SEL)
{
    if (Canvas* const canvas = currentCanvas())
        canvas->stroke(pathIn(self).path, currentStrokeColor(), pathIn(self).lineWidth);
}

constexpr MethodDefinition methods[] {
    method<"addArcWithCenter:radius:startAngle:endAngle:clockwise:", &addArc>(),
    method<"addClip", &addClip>(),
    method<"addCurveToPoint:controlPoint1:controlPoint2:", &curveTo>(),
    method<"addLineToPoint:", &lineTo>(),
    method<"addQuadCurveToPoint:controlPoint:", &quadCurveTo>(),
    method<"appendPath:", &appendPath>(),
    method<"applyTransform:", &applyTransform>(),
    classMethod<"bezierPath", &bezierPath>(),
    classMethod<"bezierPathWithOvalInRect:", &bezierPathWithOval>(),
    classMethod<"bezierPathWithRect:", &bezierPathWithRect>(),
    classMethod<"bezierPathWithRoundedRect:cornerRadius:", &bezierPathWithRoundedRect>(),
    method<"closePath", &closePath>(),
    method<"fill", &fill>(),
    getter<"lineWidth", &BezierPathObject::lineWidth>(),
    method<"moveToPoint:", &moveTo>(),
    setter<"setLineWidth:", &BezierPathObject::lineWidth>(),
    method<"stroke", &stroke>(),
};

} // namespace

const ClassDefinition BezierPathObject::definition {
    .name = "UIBezierPath", .allocate = allocate<BezierPathObject>, .methods = methods
};

} // namespace platform
