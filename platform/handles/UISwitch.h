#pragma once

#include "platform/handles/UIControl.h"

namespace platform {

class UISwitch : public UIControl {
public:
    using UIControl::UIControl;
    static Class classObject() { return classNamed<"UISwitch">(); }
    static UISwitch create() { return created<UISwitch>(); }

    bool isOn() const { return call<"isOn", bool>(); }
    void setOn(bool on, bool animated) const { call<"setOn:animated:">(on, animated); }
    void setOnTintColor(const UIColor& color) const { call<"setOnTintColor:">(color); }
    void setThumbTintColor(const UIColor& color) const { call<"setThumbTintColor:">(color); }
};

} // namespace platform
