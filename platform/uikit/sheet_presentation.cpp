#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/handles/UIView.h"
#include "platform/runtime/message.h"
#include "platform/uikit/device.h"
#include "platform/uikit/presentations.h"
#include "platform/uikit/transitions.h"

#include <algorithm>

namespace platform {

namespace {

// Points.
constexpr double phoneRadius = 10;
constexpr double padRadius = 13;
constexpr double peek = 10; ///< what the presenter shows above the card
constexpr double stepBack = 16; ///< what it loses on each side
constexpr CGSize formSize { 540, 620 };
constexpr CGSize pageMargin { 61, 44 };
constexpr double widestPage = 712;

/// A card over a dimmed presenter. On the phone it leaves a strip at the top free, where the presenter, which steps
/// back, is seen; on the pad it stands in the middle.
class SheetPresentationObject final : public PresentationControllerObject {
public:
    CGRect presentedFrame() const override
    {
        if (!container)
            return {};
        const CGRect bounds = container->bounds;
        if (!isPad()) {
            const double top = container->safeArea().top + peek;
            return CGRectMake(0, top, bounds.size.width, bounds.size.height - top);
        }
        CGSize size = style == PresentationStyle::FormSheet
            ? formSize
            : CGSize { std::min(bounds.size.width - 2 * pageMargin.width, widestPage),
                  bounds.size.height - 2 * pageMargin.height };
        const CGSize wanted = send<"preferredContentSize", CGSize>(id(presented.get()));
        if (style == PresentationStyle::FormSheet && wanted.width > 0 && wanted.height > 0)
            size = wanted;
        size = { std::min(size.width, bounds.size.width), std::min(size.height, bounds.size.height) };
        return CGRectMake(std::round((bounds.size.width - size.width) / 2),
            std::round((bounds.size.height - size.height) / 2), size.width, size.height);
    }

    bool removesPresentersView() const override { return false; }

    void willPresent() override
    {
        dimming_ = makeDimming({ 0, 0, 0, 0.2 }, { 0, 0, 0, 0.48 }, id(this), sel_registerName("_tappedOutside"));
        const UIView dimming { id(dimming_) };
        dimming.setFrame(container->bounds);
        dimming.setAutoresizingMask(UIViewAutoresizing::FlexibleWidth | UIViewAutoresizing::FlexibleHeight);
        dimming.setAlpha(0);
        UIView(id(container)).insertSubviewAt(dimming, 0);
        const CALayer card = UIView(presentedView()).layer();
        card.setCornerRadius(isPad() ? padRadius : phoneRadius);
        card.setCornerCurve(string("continuous"));
        if (!isPad())
            card.setMaskedCorners(CACornerMask::MinXMinY | CACornerMask::MaxXMinY);
        card.setMasksToBounds(true);
        alongside([this] {
            UIView(id(dimming_)).setAlpha(1);
            stepPresenter(true);
        });
    }

    void willDismiss() override
    {
        alongside([this] {
            UIView(id(dimming_)).setAlpha(0);
            stepPresenter(false);
        });
    }

    /// Outside of the card: the delegate may hold it back, and hears of it.
    void tappedOutside()
    {
        const Ref<ViewControllerObject> controller = presented.get();
        const id asked = delegate.get();
        if (!isPad() || !controller || send<"isModalInPresentation", bool>(id(controller))
            || !ask<"presentationControllerShouldDismiss:", bool>(asked, id(this)).value_or(true)) {
            ask<"presentationControllerDidAttemptToDismiss:", void>(asked, id(this));
            return;
        }
        const Ref<SheetPresentationObject> self(this);
        ask<"presentationControllerWillDismiss:", void>(asked, id(self));
        send<"dismissViewControllerAnimated:completion:", void>(id(controller), true,
            block([self, asked] { ask<"presentationControllerDidDismiss:", void>(asked, id(self)); }));
    }

private:
    template <class Work> void alongside(Work work)
    {
        const Ref<ViewControllerObject> controller = presented.get();
        const Ref<PresentationControllerObject> self(this);
        if (!ask<"animateAlongsideTransition:completion:", bool>(controller ? controller->transitionCoordinator() : nil,
                block([work, self](const id&) { work(); }), nil))
            work();
    }

    /// On the phone, one whose view fills the screen.
    void stepPresenter(bool back) const
    {
        const Ref<ViewControllerObject> presenter = presenting.get();
        ViewObject* const seen = presenter ? presenter->viewIfLoaded() : nullptr;
        if (isPad() || !seen || !container || seen->bounds.size != container->bounds.size)
            return;
        const UIView view { id(seen) };
        const CGSize size = seen->bounds.size;
        const double scale = (size.width - 2 * stepBack) / size.width;
        const double top = container->safeArea().top;
        view.layer().setCornerRadius(back ? phoneRadius : 0);
        view.setClipsToBounds(back);
        view.setTransform(back ? CGAffineTransform { scale, 0, 0, scale, 0, top - size.height * (1 - scale) / 2 }
                               : CGAffineTransform {});
    }

    Ref<ViewObject> dimming_ {};
};

constexpr MethodDefinition methods[] {
    method<"_tappedOutside", &SheetPresentationObject::tappedOutside>(),
};

} // namespace

const ClassDefinition UISheetPresentation_class { .name = "UISheetPresentationController",
    .superclass = &PresentationControllerObject::definition,
    .allocate = allocate<SheetPresentationObject>,
    .methods = methods };

Ref<PresentationControllerObject> makeSheetPresentation(PresentationStyle style)
{
    const id object = send<"new">(id(classNamed<"UISheetPresentationController">()));
    const Ref<PresentationControllerObject> presentation(as<PresentationControllerObject>(object));
    presentation->style = style;
    return presentation;
}

} // namespace platform
