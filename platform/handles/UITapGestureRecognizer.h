#pragma once

#include "platform/handles/UIGestureRecognizer.h"

namespace platform {

class UITapGestureRecognizer : public UIGestureRecognizer {
public:
    using UIGestureRecognizer::UIGestureRecognizer;
    static Class classObject() { return classNamed<"UITapGestureRecognizer">(); }
    static UITapGestureRecognizer withTarget(const id& target, SEL action)
    {
        return initialised<UITapGestureRecognizer, "initWithTarget:action:">(target, action);
    }

    void setNumberOfTapsRequired(NSUInteger taps) const { call<"setNumberOfTapsRequired:">(taps); }
};

} // namespace platform
