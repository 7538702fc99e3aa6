#pragma once

#include "platform/graphics/geometry.h"
#include "platform/handles/Handle.h"

namespace platform {

class UIBezierPath : public Handle {
public:
    using Handle::Handle;
    static Class classObject() { return classNamed<"UIBezierPath">(); }
    static UIBezierPath path() { return callOn<"bezierPath", UIBezierPath>(id(classObject())); }
    static UIBezierPath withRoundedRect(const CGRect& rect, CGFloat radius)
    {
        return callOn<"bezierPathWithRoundedRect:cornerRadius:", UIBezierPath>(id(classObject()), rect, radius);
    }
    static UIBezierPath withOvalInRect(const CGRect& rect)
    {
        return callOn<"bezierPathWithOvalInRect:", UIBezierPath>(id(classObject()), rect);
    }

    void moveToPoint(CGPoint point) const { call<"moveToPoint:">(point); }
    void addLineToPoint(CGPoint point) const { call<"addLineToPoint:">(point); }
    void addCurveToPoint(CGPoint end, CGPoint control1, CGPoint control2) const
    {
        call<"addCurveToPoint:controlPoint1:controlPoint2:">(end, control1, control2);
    }
    void addArc(CGPoint center, CGFloat radius, CGFloat start, CGFloat end, bool clockwise) const
    {
        call<"addArcWithCenter:radius:startAngle:endAngle:clockwise:">(center, radius, start, end, clockwise);
    }
    void closePath() const { call<"closePath">(); }
    void setLineWidth(CGFloat width) const { call<"setLineWidth:">(width); }
    void fill() const { call<"fill">(); }
    void stroke() const { call<"stroke">(); }
    void addClip() const { call<"addClip">(); }
};

} // namespace platform
