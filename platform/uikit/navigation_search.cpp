#include "platform/handles/UIView.h"
#include "platform/uikit/navigation.h"

/// The search bar below a navigation controller's titles.

namespace platform {

void NavigationControllerObject::searchChanged()
{
    constexpr double duration = 0.3;
    if (!isViewLoaded())
        return;
    bar().collapseSearch(0);
    UIView::animate(duration, [self = Ref<NavigationControllerObject>(this)] {
        if (const Ref<ViewControllerObject> shown = self->top())
            self->place(*shown);
        self->layOut();
        self->viewIfLoaded()->layoutTree();
    });
}

void NavigationControllerObject::contentScrolled(double distance)
{
    const double former = bar().collapsed();
    bar().collapseSearch(distance);
    if (bar().collapsed() != former)
        layOut();
}

void contentDidScroll(const ViewObject& view, double distance)
{
    id owner = view.controller;
    if (!owner && view.superview)
        owner = view.superview->controller;
    const auto* const controller = asController(owner);
    const id holder = controller ? navigationControllerOf(*controller) : nil;
    auto* const navigation = as<NavigationControllerObject>(holder);
    if (navigation && id(navigation->top()) == owner)
        navigation->contentScrolled(distance);
}

} // namespace platform
