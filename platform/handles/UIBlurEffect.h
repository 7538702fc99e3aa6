#pragma once

#include "platform/handles/Handle.h"

namespace platform {

enum class UIBlurEffectStyle : NSInteger {
    ExtraLight = 0,
    Light = 1,
    Dark = 2,
    Regular = 4,
    Prominent = 5,
    SystemUltraThinMaterial = 6,
    SystemThinMaterial = 7,
    SystemMaterial = 8,
    SystemThickMaterial = 9,
    SystemChromeMaterial = 10,
};

class UIBlurEffect : public Handle {
public:
    using Handle::Handle;
    static Class classObject() { return classNamed<"UIBlurEffect">(); }
    static UIBlurEffect withStyle(UIBlurEffectStyle style)
    {
        return callOn<"effectWithStyle:", UIBlurEffect>(id(classObject()), style);
    }
};

} // namespace platform
