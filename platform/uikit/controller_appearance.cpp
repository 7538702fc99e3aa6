#include "platform/dispatch/queue.h"
#include "platform/runtime/message.h"
#include "platform/uikit/view_controllers.h"

/// The way of a controller's view on and off the screen.

namespace platform {

namespace {

/// Children whose views stand in the controller's hear what it hears, unless it says that it tells them itself.
std::vector<Ref<ViewControllerObject>> listeners(const ViewControllerObject& controller)
{
    std::vector<Ref<ViewControllerObject>> found;
    const id self(const_cast<ViewControllerObject*>(&controller));
    if (!send<"shouldAutomaticallyForwardAppearanceMethods", bool>(self))
        return found;
    const ViewObject* const view = controller.viewIfLoaded();
    for (const Ref<ViewControllerObject>& child : controller.children())
        if (const ViewObject* const inside = child->viewIfLoaded(); inside && view && inside->isDescendantOf(*view))
            found.push_back(child);
    return found;
}

bool isShown(const WindowObject* window)
{
    return window && !window->hidden;
}

} // namespace

void ViewControllerObject::beginAppearance(bool appearing, bool animated)
{
    const Appearance there = appearing ? Appearance::Appearing : Appearance::Disappearing;
    const Appearance arrived = appearing ? Appearance::Appeared : Appearance::Disappeared;
    if (appearance_ == there || appearance_ == arrived)
        return;
    const Ref<ViewControllerObject> self(this);
    appearance_ = there;
    appearsAnimated_ = animated;
    appearsByItself_ = false;
    if (appearing) {
        send<"loadViewIfNeeded", void>(id(self));
        send<"viewWillAppear:", void>(id(self), animated);
    } else {
        send<"viewWillDisappear:", void>(id(self), animated);
    }
    for (const Ref<ViewControllerObject>& child : listeners(*this))
        child->beginAppearance(appearing, animated);
}

void ViewControllerObject::endAppearance()
{
    if (appearance_ != Appearance::Appearing && appearance_ != Appearance::Disappearing)
        return;
    const Ref<ViewControllerObject> self(this);
    const bool appearing = appearance_ == Appearance::Appearing;
    appearance_ = appearing ? Appearance::Appeared : Appearance::Disappeared;
    appearsByItself_ = false;
    for (const Ref<ViewControllerObject>& child : listeners(*this))
        child->endAppearance();
    if (appearing)
        send<"viewDidAppear:", void>(id(self), appearsAnimated_);
    else
        send<"viewDidDisappear:", void>(id(self), appearsAnimated_);
    (appearing ? isMovingToParent : isMovingFromParent) = false;
}

void ViewControllerObject::viewWillMove(const WindowObject* next)
{
    const bool appearing = isShown(next);
    if (appearance_ == (appearing ? Appearance::Disappeared : Appearance::Appeared)) {
        beginAppearance(appearing, false);
        appearsByItself_ = true;
    } else if (!appearing && appearance_ == Appearance::Appearing && appearsByItself_) {
        beginAppearance(false, false);
        appearsByItself_ = true;
    }
}

void ViewControllerObject::viewDidMove(const WindowObject* present)
{
    if (!appearsByItself_)
        return;
    if (!isShown(present)) {
        endAppearance();
        return;
    }
    // With the one that holds it, if that is on its way too; otherwise when it has been laid out.
    if (const Ref<ViewControllerObject> holder = parent(); holder && holder->appearance() == Appearance::Appearing)
        return;
    dispatch_async(dispatch_get_main_queue(), [self = Ref<ViewControllerObject>(this)] {
        if (self->appearance_ == Appearance::Appearing && self->appearsByItself_)
            self->endAppearance();
    });
}

} // namespace platform
