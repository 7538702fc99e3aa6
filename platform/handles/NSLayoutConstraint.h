#pragma once

#include "platform/graphics/geometry.h"
#include "platform/handles/Handle.h"

namespace platform {

class NSLayoutConstraint : public Handle {
public:
    using Handle::Handle;
    static Class classObject() { return classNamed<"NSLayoutConstraint">(); }

    bool isActive() const { return call<"isActive", bool>(); }
    void setActive(bool active) const { call<"setActive:">(active); }
    CGFloat constant() const { return call<"constant", CGFloat>(); }
    void setConstant(CGFloat constant) const { call<"setConstant:">(constant); }
    void setPriority(float priority) const { call<"setPriority:">(priority); }
};

} // namespace platform
