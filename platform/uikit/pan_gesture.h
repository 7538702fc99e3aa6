#pragma once

#include "platform/uikit/gestures.h"

namespace platform {

/// Points that a finger may wander and still be taken to rest.
inline constexpr double gestureSlop = 10;

class PanGestureRecognizerObject : public GestureRecognizerObject {
public:
    CGPoint translationInView(const id&) const { return { last_.x - start_.x, last_.y - start_.y }; }
    void setTranslation(CGPoint translation, const id&)
    {
        start_ = { last_.x - translation.x, last_.y - translation.y };
    }
    CGPoint velocityInView(const id&) const { return velocity_; }

protected:
    void began(const TouchObject& touch) override;
    void moved(const TouchObject& touch) override;
    void ended(const TouchObject& touch) override;

private:
    void follow(const TouchObject& touch);

    CGPoint start_ {};
    CGPoint last_ {};
    double lastTime_ = 0; ///< of the last movement
    CGPoint velocity_ {};
};

} // namespace platform
