#pragma once

#include "platform/handles/Handle.h"

namespace platform {

enum class UIUserInterfaceIdiom : NSInteger { Unspecified = -1, Phone = 0, Pad = 1 };

class UIDevice : public Handle {
public:
    using Handle::Handle;
    static Class classObject() { return classNamed<"UIDevice">(); }
    static UIDevice current() { return callOn<"currentDevice", UIDevice>(id(classObject())); }

    UIUserInterfaceIdiom userInterfaceIdiom() const { return call<"userInterfaceIdiom", UIUserInterfaceIdiom>(); }
    id systemVersion() const { return call<"systemVersion", id>(); }
    id model() const { return call<"model", id>(); }
};

} // namespace platform
