#pragma once

#include "platform/foundation/values.h"
#include "platform/handles/CALayer.h"

#include <vector>

namespace platform {

class CAGradientLayer : public CALayer {
public:
    using CALayer::CALayer;
    static Class classObject() { return classNamed<"CAGradientLayer">(); }
    static CAGradientLayer create() { return created<CAGradientLayer>(); }

    void setColors(const std::vector<UIColor>& colors) const
    {
        std::vector<id> list;
        for (const UIColor& color : colors)
            list.push_back(color.cgColor());
        call<"setColors:">(array(std::move(list)));
    }
    /// In shares of the layer's sides.
    void setStartPoint(CGPoint point) const { call<"setStartPoint:">(point); }
    void setEndPoint(CGPoint point) const { call<"setEndPoint:">(point); }
};

} // namespace platform
