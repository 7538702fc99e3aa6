#pragma once

#include "platform/handles/UIAlertAction.h"
#include "platform/handles/UIViewController.h"

namespace platform {

enum class UIAlertControllerStyle : NSInteger { ActionSheet = 0, Alert = 1 };

class UIAlertController : public UIViewController {
public:
    using UIViewController::UIViewController;
    static Class classObject() { return classNamed<"UIAlertController">(); }
    static UIAlertController with(const id& title, const id& message, UIAlertControllerStyle style)
    {
        return callOn<"alertControllerWithTitle:message:preferredStyle:", UIAlertController>(
            id(classObject()), title, message, style);
    }

    void addAction(const UIAlertAction& action) const { call<"addAction:">(action); }
    void setPreferredAction(const UIAlertAction& action) const { call<"setPreferredAction:">(action); }
    void setMessage(const id& message) const { call<"setMessage:">(message); }
};

} // namespace platform
