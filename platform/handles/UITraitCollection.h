#pragma once

#include "platform/graphics/geometry.h"
#include "platform/handles/Handle.h"

namespace platform {

enum class UIUserInterfaceStyle : NSInteger { Unspecified = 0, Light = 1, Dark = 2 };
enum class UIUserInterfaceSizeClass : NSInteger { Unspecified = 0, Compact = 1, Regular = 2 };

class UITraitCollection : public Handle {
public:
    using Handle::Handle;
    static Class classObject() { return classNamed<"UITraitCollection">(); }
    static UITraitCollection current()
    {
        return callOn<"currentTraitCollection", UITraitCollection>(id(classObject()));
    }

    UIUserInterfaceStyle userInterfaceStyle() const { return call<"userInterfaceStyle", UIUserInterfaceStyle>(); }
    UIUserInterfaceSizeClass horizontalSizeClass() const
    {
        return call<"horizontalSizeClass", UIUserInterfaceSizeClass>();
    }
    UIUserInterfaceSizeClass verticalSizeClass() const { return call<"verticalSizeClass", UIUserInterfaceSizeClass>(); }
    CGFloat displayScale() const { return call<"displayScale", CGFloat>(); }
};

} // namespace platform
