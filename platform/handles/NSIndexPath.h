#pragma once

#include "platform/handles/Handle.h"

namespace platform {

class NSIndexPath : public Handle {
public:
    using Handle::Handle;
    static Class classObject() { return classNamed<"NSIndexPath">(); }
    static NSIndexPath forRow(NSInteger row, NSInteger section)
    {
        return callOn<"indexPathForRow:inSection:", NSIndexPath>(id(classObject()), row, section);
    }

    NSInteger row() const { return call<"row", NSInteger>(); }
    NSInteger section() const { return call<"section", NSInteger>(); }
};

} // namespace platform
