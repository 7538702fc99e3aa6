#pragma once

#include "platform/handles/UIViewController.h"
#include "platform/runtime/weak.h"
#include "platform/uikit/window.h"

#include <vector>

namespace platform {

class CoordinatorObject;
class PresentationControllerObject;
class TransitionContextObject;

/// Where a controller's view stands on its way on and off the screen.
enum class Appearance { Disappeared, Appearing, Appeared, Disappearing };

/// How a controller is shown over another one.
using PresentationStyle = UIModalPresentationStyle;

/// Manages a view: makes it, hears of its layout and of its way on and off the screen, holds the controllers of parts
/// of it, and shows others' over it. Whatever a public header lets a subclass override is asked by message.
class ViewControllerObject : public NSObject {
public:
    static const ClassDefinition definition;
    ViewControllerObject();
    ~ViewControllerObject() override;

    id title {};
    Weak<NSObject> transitioningDelegate {};
    PresentationStyle modalPresentationStyle = PresentationStyle::Automatic;
    NSInteger modalTransitionStyle = 0;
    bool definesPresentationContext = false;
    bool isModalInPresentation = false;
    CGSize preferredContentSize {};
    NSInteger overrideStyle = 0; ///< as a view's
    UIEdgeInsets additionalSafeAreaInsets {};
    UIEdgeInsets containerInsets {}; ///< what the container's bars take from the safe area, besides

    /// Made at the first request, by `loadView`.
    id view();
    bool isViewLoaded() const noexcept { return static_cast<bool>(view_); }
    void setView(const id& newView);
    ViewObject* viewIfLoaded() const noexcept { return asViewObject(view_); }
    id nextResponder() const;

    void beginAppearance(bool appearing, bool animated);
    void endAppearance();
    Appearance appearance() const noexcept { return appearance_; }
    /// The view comes into that window or, null, out of the one that it stands in: where nobody has begun an
    /// appearance or a disappearance, this is one.
    void viewWillMove(const WindowObject* next);
    void viewDidMove(const WindowObject* present);

    void addChild(const id& child);
    void removeFromParent();
    void willMoveToParent(const id& newParent);
    const std::vector<Ref<ViewControllerObject>>& children() const noexcept { return children_; }
    Ref<ViewControllerObject> parent() const { return parent_.get(); }
    /// Itself where it has no parent.
    Ref<ViewControllerObject> outermost();

    void present(const id& controller, bool animated, const id& completion);
    void dismiss(bool animated, const id& completion);
    /// Those that this or the controllers that hold it show and are shown by.
    Ref<ViewControllerObject> presented() const;
    Ref<ViewControllerObject> presenting() const;
    id presentationController();
    /// Of the transition that this or a controller that holds it takes part in; nil without one.
    id transitionCoordinator() const;

    bool isBeingPresented = false;
    bool isBeingDismissed = false;
    bool isMovingToParent = false;
    bool isMovingFromParent = false;

protected:
    /// The body of `loadView`.
    virtual id makeView();
    /// The presentation where no delegate has another one; nil for that of the style.
    virtual Ref<PresentationControllerObject> makePresentation();
    friend struct ViewControllerMethods;
    friend struct Presenting;

private:
    id view_ {};
    id navigationItem_ {}; ///< made at the first request
    Appearance appearance_ = Appearance::Disappeared;
    bool appearsAnimated_ = false;
    bool appearsByItself_ = false; ///< its view was moved; nobody began it
    std::vector<Ref<ViewControllerObject>> children_ {};
    Weak<ViewControllerObject> parent_ {};
    Ref<ViewControllerObject> presented_ {};
    Weak<ViewControllerObject> presenting_ {};
    Ref<PresentationControllerObject> presentation_ {};

public:
    Ref<TransitionContextObject> transition {}; ///< the one under way that this takes part in
};

/// The controller, or null for nil and for any other object.
inline ViewControllerObject* asController(const id& object)
{
    return as<ViewControllerObject>(object);
}

/// Tells the developer, on standard error, of what was asked for in vain.
void complain(const std::string& sentence);
std::string nameOf(const NSObject& object);

extern const ClassDefinition UIAlertAction_class;
extern const ClassDefinition UIAlertController_class;

} // namespace platform
