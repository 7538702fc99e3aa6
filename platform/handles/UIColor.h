#pragma once

#include "platform/graphics/geometry.h"
#include "platform/handles/Handle.h"

#include <cstdint>

namespace platform {

class UIColor : public Handle {
public:
    using Handle::Handle;
    static Class classObject() { return classNamed<"UIColor">(); }

    static UIColor withRed(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha)
    {
        return callOn<"colorWithRed:green:blue:alpha:", UIColor>(id(classObject()), red, green, blue, alpha);
    }
    static UIColor withHue(CGFloat hue, CGFloat saturation, CGFloat brightness, CGFloat alpha)
    {
        return callOn<"colorWithHue:saturation:brightness:alpha:", UIColor>(
            id(classObject()), hue, saturation, brightness, alpha);
    }
    static UIColor black() { return callOn<"blackColor", UIColor>(id(classObject())); }
    static UIColor white() { return callOn<"whiteColor", UIColor>(id(classObject())); }
    static UIColor lightGray() { return callOn<"lightGrayColor", UIColor>(id(classObject())); }
    static UIColor clear() { return callOn<"clearColor", UIColor>(id(classObject())); }

    static UIColor label() { return callOn<"labelColor", UIColor>(id(classObject())); }
    static UIColor secondaryLabel() { return callOn<"secondaryLabelColor", UIColor>(id(classObject())); }
    static UIColor systemBackground() { return callOn<"systemBackgroundColor", UIColor>(id(classObject())); }
    static UIColor systemBlue() { return callOn<"systemBlueColor", UIColor>(id(classObject())); }
    static UIColor systemRed() { return callOn<"systemRedColor", UIColor>(id(classObject())); }
    /// The provider is a block that is given the traits and gives a colour.
    static UIColor withProvider(const id& provider)
    {
        return callOn<"colorWithDynamicProvider:", UIColor>(id(classObject()), provider);
    }

    /// What layers take for a colour.
    id cgColor() const { return call<"CGColor", id>(); }
    void setFill() const { call<"setFill">(); }
    void setStroke() const { call<"setStroke">(); }
};

} // namespace platform
