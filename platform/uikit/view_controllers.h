#pragma once

#include "platform/uikit/window.h"

namespace platform {

/// Manages a view, and shows others' over it. A presented controller stands in a window of its own, before all others,
/// and lives until it is dismissed.
class ViewControllerObject : public NSObject {
public:
    static const ClassDefinition definition;

    id title {};
    Ref<ViewControllerObject> presentedViewController {};
    ViewControllerObject* presentingViewController = nullptr; ///< keeps this one while there is one

    /// Made at the first request, by loadView().
    id view();
    void setView(const id& newView);
    id nextResponder() const;

    /// The completion, if there is one, is called once it stands there. A controller that is presented already, and
    /// one that presents another, changes nothing.
    void present(const id& controller, bool animated, const id& completion);
    /// Takes away what this presents; of one that presents nothing, itself.
    void dismiss(bool animated, const id& completion);

protected:
    virtual id loadView();

private:
    id view_ {};
    Ref<WindowObject> window_ {}; ///< while it is presented
};

extern const ClassDefinition UIAlertAction_class;
extern const ClassDefinition UIAlertController_class;

} // namespace platform
