#pragma once

#include "platform/handles/Handle.h"

namespace platform {

class UIResponder : public Handle {
public:
    using Handle::Handle;
    static Class classObject() { return classNamed<"UIResponder">(); }

    UIResponder nextResponder() const { return call<"nextResponder", UIResponder>(); }
    bool canBecomeFirstResponder() const { return call<"canBecomeFirstResponder", bool>(); }
    bool becomeFirstResponder() const { return call<"becomeFirstResponder", bool>(); }
    bool resignFirstResponder() const { return call<"resignFirstResponder", bool>(); }
    bool isFirstResponder() const { return call<"isFirstResponder", bool>(); }
    bool canPerformAction(SEL action, const id& sender) const
    {
        return call<"canPerformAction:withSender:", bool>(action, sender);
    }
    id targetForAction(SEL action, const id& sender) const
    {
        return call<"targetForAction:withSender:", id>(action, sender);
    }
};

} // namespace platform
