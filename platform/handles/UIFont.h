#pragma once

#include "platform/graphics/geometry.h"
#include "platform/handles/Handle.h"

namespace platform {

class UIFont : public Handle {
public:
    using Handle::Handle;
    static Class classObject() { return classNamed<"UIFont">(); }

    static UIFont systemFont(CGFloat size) { return callOn<"systemFontOfSize:", UIFont>(id(classObject()), size); }
    static UIFont boldSystemFont(CGFloat size)
    {
        return callOn<"boldSystemFontOfSize:", UIFont>(id(classObject()), size);
    }
};

} // namespace platform
