#pragma once

#include "platform/handles/UIPresentationController.h"

namespace platform {

/// To be joined.
enum class UIPopoverArrowDirection : NSUInteger { None = 0, Up = 1, Down = 2, Left = 4, Right = 8, Any = 15 };

class UIPopoverPresentationController : public UIPresentationController {
public:
    using UIPresentationController::UIPresentationController;
    static Class classObject() { return classNamed<"UIPopoverPresentationController">(); }

    void setSourceView(const UIView& view) const { call<"setSourceView:">(view); }
    void setSourceRect(const CGRect& rect) const { call<"setSourceRect:">(rect); }
    void setBarButtonItem(const id& item) const { call<"setBarButtonItem:">(item); }
    void setPermittedArrowDirections(UIPopoverArrowDirection directions) const
    {
        call<"setPermittedArrowDirections:">(directions);
    }
    UIPopoverArrowDirection arrowDirection() const { return call<"arrowDirection", UIPopoverArrowDirection>(); }
};

} // namespace platform
