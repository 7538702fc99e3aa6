#pragma once

#include "platform/graphics/geometry.h"
#include "platform/handles/UIColor.h"

namespace platform {

/// Corners of a layer, to be joined.
enum class CACornerMask : NSUInteger {
    MinXMinY = 1,
    MaxXMinY = 2,
    MinXMaxY = 4,
    MaxXMaxY = 8,
};
constexpr CACornerMask operator|(CACornerMask left, CACornerMask right) noexcept
{
    return static_cast<CACornerMask>(static_cast<NSUInteger>(left) | static_cast<NSUInteger>(right));
}

class CALayer : public Handle {
public:
    using Handle::Handle;
    static Class classObject() { return classNamed<"CALayer">(); }
    static CALayer create() { return created<CALayer>(); }

    CGRect frame() const { return call<"frame", CGRect>(); }
    void setFrame(const CGRect& frame) const { call<"setFrame:">(frame); }
    CGFloat cornerRadius() const { return call<"cornerRadius", CGFloat>(); }
    void setCornerRadius(CGFloat radius) const { call<"setCornerRadius:">(radius); }
    void setMaskedCorners(CACornerMask corners) const { call<"setMaskedCorners:">(corners); }
    /// "circular" or "continuous".
    void setCornerCurve(const id& curve) const { call<"setCornerCurve:">(curve); }
    void setMasksToBounds(bool masks) const { call<"setMasksToBounds:">(masks); }
    void setBackgroundColor(const UIColor& color) const { call<"setBackgroundColor:">(color.cgColor()); }
    void setBorderColor(const UIColor& color) const { call<"setBorderColor:">(color.cgColor()); }
    void setBorderWidth(CGFloat width) const { call<"setBorderWidth:">(width); }
    void setShadowColor(const UIColor& color) const { call<"setShadowColor:">(color.cgColor()); }
    void setShadowOpacity(float opacity) const { call<"setShadowOpacity:">(opacity); }
    void setShadowOffset(CGSize offset) const { call<"setShadowOffset:">(offset); }
    void setShadowRadius(CGFloat radius) const { call<"setShadowRadius:">(radius); }
    void addSublayer(const CALayer& sublayer) const { call<"addSublayer:">(sublayer); }
};

} // namespace platform
