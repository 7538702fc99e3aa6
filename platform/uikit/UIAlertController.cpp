#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/handles/UITextField.h"
#include "platform/runtime/exception.h"
#include "platform/runtime/message.h"
#include "platform/uikit/alert_view.h"
#include "platform/uikit/device.h"
#include "platform/uikit/keyboard.h"
#include "platform/uikit/transitions.h"

#include <algorithm>

namespace platform {

namespace {

// Points.
constexpr double alertWidth = 270;
constexpr double sheetMargin = 8;
constexpr double popoverWidth = 304;

/// A question or a piece of news over everything else, with a button for each answer.
class AlertControllerObject : public ViewControllerObject {
public:
    AlertStyle style = AlertStyle::Alert;

    id message() const { return message_; }
    void setMessage(const id& message)
    {
        message_ = message;
        refill();
    }
    void setAlertTitle(const id& newTitle)
    {
        title = newTitle;
        refill();
    }
    NSInteger preferredStyle() const { return static_cast<NSInteger>(style); }
    NSInteger presentationStyle() const
    {
        const bool isBubble = style == AlertStyle::ActionSheet && isPad();
        return static_cast<NSInteger>(isBubble ? PresentationStyle::Popover : PresentationStyle::Custom);
    }

    id actions() const { return array(std::vector<id>(actions_)); }
    void addAction(const id& action)
    {
        auto* const added = as<AlertActionObject>(action);
        if (!added)
            return;
        const auto isCancel = [](const id& known) {
            return static_cast<const AlertActionObject&>(*known).style == ActionStyle::Cancel;
        };
        if (isCancel(action) && std::ranges::any_of(actions_, isCancel))
            throw NSException("NSInternalInconsistencyException",
                "UIAlertController can only have one action with a style of UIAlertActionStyleCancel");
        added->alert = Ref<ViewControllerObject>(this);
        actions_.push_back(action);
        refill();
    }

    id preferredAction() const { return preferred_; }
    void setPreferredAction(const id& action)
    {
        if (action && std::ranges::find(actions_, action) == actions_.end())
            throw NSException(
                "NSInternalInconsistencyException", "The preferred action can only be one of those that the alert has");
        preferred_ = action;
        refill();
    }

    id textFields() const { return textFields_.empty() ? id() : array(std::vector<id>(textFields_)); }
    void addTextField(const id& configuration)
    {
        const Class fields = classNamed<"UITextField">();
        if (!fields || style != AlertStyle::Alert)
            throw NSException("NSInternalInconsistencyException", "Text fields stand in alerts alone");
        const id field = send<"new">(id(fields));
        constexpr double fontSize = 14;
        send<"setBorderStyle:", void>(field, UITextBorderStyle::RoundedRect);
        send<"setFont:", void>(field, fontObject({ .size = fontSize }));
        callBlock(configuration, field);
        textFields_.push_back(field);
        refill();
    }

    /// Goes away, and has the action's handler told once it has. The host's and a finger's way to answer.
    void choose(const id& action)
    {
        const auto* const known = as<AlertActionObject>(action);
        if (!known || !known->isEnabled() || isAnswered_ || std::ranges::find(actions_, action) == actions_.end())
            return;
        const Ref<AlertControllerObject> self(this); // it may be kept by nothing but its presentation
        isAnswered_ = true;
        const id tell = block([self, action] {
            self->isAnswered_ = false;
            callBlock(static_cast<const AlertActionObject&>(*action).handler, action);
        });
        if (presenting())
            dismiss(true, tell);
        else
            callBlock(tell);
    }

    /// How large the alert is in that room.
    CGSize sizeIn(const CGSize& room)
    {
        const double width = style == AlertStyle::Alert ? alertWidth
            : isPad()                                   ? popoverWidth
                                                        : std::min(room.width, room.height) - 2 * sheetMargin;
        auto* const box = as<AlertViewObject>(view());
        return { width, box ? box->fill(contents(), width) : 0 };
    }

    /// A finger beside it. Whether there is an action that says so.
    bool chooseCancel()
    {
        for (const id& action : actions_)
            if (static_cast<const AlertActionObject&>(*action).style == ActionStyle::Cancel) {
                choose(action);
                return true;
            }
        return false;
    }

    void refill()
    {
        if (const Ref<PresentationControllerObject> shown = isViewLoaded()
                ? Ref<PresentationControllerObject>(as<PresentationControllerObject>(presentationController()))
                : nullptr;
            shown && shown->container)
            shown->container->setNeedsLayout();
    }

    void traitsDidChange(const id&) { refill(); }

    void didAppear(bool)
    {
        if (!textFields_.empty())
            send<"becomeFirstResponder", bool>(textFields_.front());
    }

    CGSize contentSize() { return sizeIn(screenFacts().size); }

protected:
    id makeView() override
    {
        const Ref<AlertViewObject> box = make<AlertViewObject>();
        box->chooser = id(this);
        return box;
    }

    Ref<PresentationControllerObject> makePresentation() override;

private:
    /// As they are shown: what cancels stands last, in a row of two first; on the pad, where a tap beside the bubble
    /// cancels, not at all.
    AlertContents contents() const
    {
        AlertContents contents { .title = title,
            .message = message_,
            .actions = actions_,
            .preferred = preferred_,
            .textFields = textFields_,
            .style = style,
            .isInPopover = style == AlertStyle::ActionSheet && isPad() };
        const auto isNoCancel = [](const id& action) {
            return static_cast<const AlertActionObject&>(*action).style != ActionStyle::Cancel;
        };
        auto& shown = contents.actions;
        std::ranges::stable_partition(shown, isNoCancel);
        if (style == AlertStyle::Alert && shown.size() == 2 && !isNoCancel(shown.back()))
            std::swap(shown.front(), shown.back());
        if (contents.isInPopover)
            std::erase_if(shown, [&](const id& action) { return !isNoCancel(action); });
        return contents;
    }

    id message_ {};
    std::vector<id> actions_ {};
    id preferred_ {};
    std::vector<id> textFields_ {};
    bool isAnswered_ = false;
};

/// In the middle of the screen, or at its bottom, over a dimmed ground.
class AlertPresentationObject final : public PresentationControllerObject {
public:
    static const ClassDefinition definition;

    Ref<AlertControllerObject> alert() const
    {
        const id controller = presented.get();
        return Ref<AlertControllerObject>(as<AlertControllerObject>(controller));
    }

    CGRect presentedFrame() const override
    {
        const Ref<AlertControllerObject> shown = alert();
        if (!shown || !container)
            return {};
        const CGRect bounds = container->bounds;
        const CGSize size = shown->sizeIn(bounds.size);
        const double bottom = bounds.size.height - std::max(container->safeArea().bottom, sheetMargin) - size.height;
        return CGRectMake(std::round((bounds.size.width - size.width) / 2),
            shown->style == AlertStyle::Alert ? std::round((bounds.size.height - keyboardHeight() - size.height) / 2)
                                              : bottom,
            size.width, size.height);
    }

    void willPresent() override
    {
        dimming_ = makeDimming({ 0, 0, 0, 0.2 }, { 0, 0, 0, 0.48 }, id(this), sel_registerName("_tappedOutside"));
        const UIView dimming { id(dimming_) };
        dimming.setFrame(container->bounds);
        dimming.setAutoresizingMask(UIViewAutoresizing::FlexibleWidth | UIViewAutoresizing::FlexibleHeight);
        UIView(id(container)).insertSubviewAt(dimming, 0);
        fade(0, 1);
        send<"addObserver:selector:name:object:", void>(send<"defaultCenter">(id(classNamed<"NSNotificationCenter">())),
            id(this), sel_registerName("_keyboardMoved"), string("UIKeyboardWillChangeFrameNotification"), nil);
    }

    /// The alert goes to the middle of what the keyboard leaves.
    void keyboardMoved()
    {
        constexpr double duration = 0.25;
        UIView::animate(duration, [self = Ref<AlertPresentationObject>(this)] {
            if (self->container)
                self->layOut();
        });
    }

    void willDismiss() override { fade(1, 0); }

    void layOut() override
    {
        if (ViewObject* const view = asViewObject(presentedView()); view && view->superview == container.get())
            place(*view, presentedFrame());
    }

    id animator(bool dismisses) const override
    {
        const Ref<AlertControllerObject> shown = alert();
        return makeAnimator(
            shown && shown->style == AlertStyle::ActionSheet ? TransitionLook::CoverVertical : TransitionLook::Alert,
            dismisses);
    }

    /// An action sheet is cancelled by it.
    void tappedOutside()
    {
        if (const Ref<AlertControllerObject> shown = alert(); shown && shown->style == AlertStyle::ActionSheet)
            shown->chooseCancel();
    }

private:
    void fade(double from, double to) const
    {
        const UIView dimming { id(dimming_) };
        const Ref<ViewControllerObject> controller = presented.get();
        dimming.setAlpha(from);
        if (!ask<"animateAlongsideTransition:completion:", bool>(controller ? controller->transitionCoordinator() : nil,
                block([dimming, to](const id&) { dimming.setAlpha(to); }), nil)
                 .value_or(false))
            dimming.setAlpha(to);
    }

    Ref<ViewObject> dimming_ {};
};

constexpr MethodDefinition presentationMethods[] {
    method<"_keyboardMoved", &AlertPresentationObject::keyboardMoved>(),
    method<"_tappedOutside", &AlertPresentationObject::tappedOutside>(),
};

const ClassDefinition AlertPresentationObject::definition { .name = "_UIAlertControllerPresentationController",
    .superclass = &PresentationControllerObject::definition,
    .allocate = allocate<AlertPresentationObject>,
    .methods = presentationMethods };

Ref<PresentationControllerObject> AlertControllerObject::makePresentation()
{
    if (presentationStyle() == static_cast<NSInteger>(PresentationStyle::Popover))
        return nullptr;
    return make<AlertPresentationObject>();
}

id actionWithTitle(const id& self, SEL, const id& title, NSInteger style, const id& handler)
{
    id action = send<"new">(self);
    auto& fields = static_cast<AlertActionObject&>(*action);
    fields.title = title;
    fields.style = static_cast<ActionStyle>(style);
    fields.handler = handler;
    return action;
}

id alertWithTitle(const id& self, SEL, const id& title, const id& message, NSInteger style)
{
    id alert = send<"new">(self);
    auto& fields = static_cast<AlertControllerObject&>(*alert);
    fields.style = static_cast<AlertStyle>(style);
    fields.title = title;
    fields.setMessage(message);
    return alert;
}

constexpr MethodDefinition actionMethods[] {
    classMethod<"actionWithTitle:style:handler:", &actionWithTitle>(),
    method<"isEnabled", &AlertActionObject::isEnabled>(),
    method<"setEnabled:", &AlertActionObject::setEnabled>(),
    method<"style", &AlertActionObject::styleNumber>(),
    getter<"title", &AlertActionObject::title>(),
};

constexpr MethodDefinition methods[] {
    method<"_choose:", &AlertControllerObject::choose>(),
    method<"_chooseCancel", &AlertControllerObject::chooseCancel>(),
    method<"actions", &AlertControllerObject::actions>(),
    method<"addAction:", &AlertControllerObject::addAction>(),
    method<"addTextFieldWithConfigurationHandler:", &AlertControllerObject::addTextField>(),
    classMethod<"alertControllerWithTitle:message:preferredStyle:", &alertWithTitle>(),
    method<"message", &AlertControllerObject::message>(),
    method<"modalPresentationStyle", &AlertControllerObject::presentationStyle>(),
    method<"preferredAction", &AlertControllerObject::preferredAction>(),
    method<"preferredContentSize", &AlertControllerObject::contentSize>(),
    method<"preferredStyle", &AlertControllerObject::preferredStyle>(),
    method<"setMessage:", &AlertControllerObject::setMessage>(),
    method<"setPreferredAction:", &AlertControllerObject::setPreferredAction>(),
    method<"setTitle:", &AlertControllerObject::setAlertTitle>(),
    method<"textFields", &AlertControllerObject::textFields>(),
    method<"traitCollectionDidChange:", &AlertControllerObject::traitsDidChange>(),
    method<"viewDidAppear:", &AlertControllerObject::didAppear>(),
};

} // namespace

void AlertActionObject::setEnabled(bool enabled)
{
    if (std::exchange(isEnabled_, enabled) == enabled)
        return;
    const id shown = alert.get();
    if (auto* const controller = as<AlertControllerObject>(shown))
        controller->refill();
}

const ClassDefinition UIAlertAction_class {
    .name = "UIAlertAction", .allocate = allocate<AlertActionObject>, .methods = actionMethods
};

const ClassDefinition UIAlertController_class { .name = "UIAlertController",
    .superclass = &ViewControllerObject::definition,
    .allocate = allocate<AlertControllerObject>,
    .methods = methods };

} // namespace platform
