#pragma once

#include "platform/graphics/geometry.h"
#include "platform/handles/Handle.h"

namespace platform {

class UIScreen : public Handle {
public:
    using Handle::Handle;
    static Class classObject() { return classNamed<"UIScreen">(); }
    static UIScreen mainScreen() { return callOn<"mainScreen", UIScreen>(id(classObject())); }

    CGRect bounds() const { return call<"bounds", CGRect>(); }
    CGFloat scale() const { return call<"scale", CGFloat>(); }
};

} // namespace platform
