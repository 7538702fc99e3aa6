#pragma once

#include "platform/handles/Handle.h"

namespace platform {

enum class UIAlertActionStyle : NSInteger { Default = 0, Cancel = 1, Destructive = 2 };

class UIAlertAction : public Handle {
public:
    using Handle::Handle;
    static Class classObject() { return classNamed<"UIAlertAction">(); }
    /// The handler is a block that is given the action, or nil.
    static UIAlertAction withTitle(const id& title, UIAlertActionStyle style, const id& handler)
    {
        return callOn<"actionWithTitle:style:handler:", UIAlertAction>(id(classObject()), title, style, handler);
    }

    void setEnabled(bool enabled) const { call<"setEnabled:">(enabled); }
};

} // namespace platform
