#pragma once

#include "platform/handles/UIView.h"

namespace platform {

enum class UIGestureRecognizerState : NSInteger {
    Possible = 0,
    Began = 1,
    Changed = 2,
    Ended = 3,
    Cancelled = 4,
    Failed = 5,
};

class UIGestureRecognizer : public Handle {
public:
    using Handle::Handle;
    static Class classObject() { return classNamed<"UIGestureRecognizer">(); }

    UIGestureRecognizerState state() const { return call<"state", UIGestureRecognizerState>(); }
    UIView view() const { return call<"view", UIView>(); }
    CGPoint locationInView(const UIView& view) const { return call<"locationInView:", CGPoint>(view); }
    void setEnabled(bool enabled) const { call<"setEnabled:">(enabled); }
    void setDelegate(const id& delegate) const { call<"setDelegate:">(delegate); }
    void requireGestureRecognizerToFail(const UIGestureRecognizer& other) const
    {
        call<"requireGestureRecognizerToFail:">(other);
    }
};

inline void UIView::addGestureRecognizer(const UIGestureRecognizer& gesture) const
{
    call<"addGestureRecognizer:">(gesture);
}

} // namespace platform
