#include "panel/actions_bar_view.h"

#include "core/haptics.h"
#include "panel/action_button.h"
#include "platform/handles/UIStackView.h"

namespace appledger {

using namespace platform;

namespace {

constexpr CGFloat spacing = 1;
constexpr double dimmed = 0.5;

struct ActionsBarFields {
    id stackView {}; ///< never set: the view is the stack itself
};

id initWithFrame(const id& allocated, SEL, CGRect frame)
{
    id self = sendSuper<"initWithFrame:">(classNamed<"UIStackView">(), allocated, frame);
    const UIStackView bar(self);
    bar.setAxis(UILayoutConstraintAxis::Horizontal);
    bar.setDistribution(UIStackViewDistribution::FillEqually);
    bar.setSpacing(spacing);
    bar.setBackgroundColor(UIColor::clear());
    return self;
}

/// Nil where there is none.
id buttonAt(const id& bar, NSInteger index)
{
    const ArrayValue buttons = itemsOf(send<"arrangedSubviews">(bar));
    return index >= 0 && static_cast<std::size_t>(index) < buttons.size() ? buttons[static_cast<std::size_t>(index)]
                                                                          : nil;
}

template <auto Part> id partAt(const id& bar, NSInteger index)
{
    const id button = buttonAt(bar, index);
    return button ? fieldsOf<ActionButtonFields>(button).*Part : nil;
}

void addItem(const id& self, SEL, const id& title, const id& detail, const id& image, const id& handler)
{
    static constexpr struct {
        UIControlEvents event;
        const char* action;
    } events[] {
        { UIControlEvents::TouchDown, "buttonTouchDown:" },
        { UIControlEvents::TouchUpInside, "buttonTouchUpInside:" },
        { UIControlEvents::TouchUpOutside, "touchUpOutside:" },
        { UIControlEvents::TouchDragOutside, "buttonDragOutside:" },
        { UIControlEvents::TouchDragInside, "buttonDragInside:" },
    };
    const UIButton button = makeActionButton(title, detail, image, handler);
    for (const auto& [event, action] : events)
        button.addTarget(self, sel_registerName(action), event);
    UIStackView(self).addArrangedSubview(button);
}

void setItemEnabled(const id& self, SEL, bool enabled, NSInteger index)
{
    const id button = buttonAt(self, index);
    if (!button)
        return;
    UIButton(button).setEnabled(enabled);
    setAlphaOfParts(button, enabled ? 1 : dimmed);
}

template <auto Label> void setText(const id& self, SEL, const id& text, NSInteger index)
{
    ask<"setText:", void>(partAt<Label>(self, index), text);
}

void showLoadingIndicator(const id& self, SEL, NSInteger index)
{
    ask<"setHidden:", void>(partAt<&ActionButtonFields::actionImageView>(self, index), true);
    ask<"startAnimating", void>(partAt<&ActionButtonFields::activityIndicatorView>(self, index));
}

void hideLoadingIndicator(const id& self, SEL, NSInteger index)
{
    ask<"stopAnimating", void>(partAt<&ActionButtonFields::activityIndicatorView>(self, index));
    ask<"setHidden:", void>(partAt<&ActionButtonFields::actionImageView>(self, index), false);
}

void setHighlighted(const id&, SEL, const id& button, bool highlighted)
{
    setAlphaOfParts(button, highlighted ? dimmed : 1);
}

template <bool IsHighlighted> void highlight(const id& self, SEL, const id& button)
{
    send<"setSubviewsOfButton:highlighted:", void>(self, button, IsHighlighted);
}

void touchUpInside(const id& self, SEL, const id& button)
{
    send<"setSubviewsOfButton:highlighted:", void>(self, button, false);
    const id action = fieldsOf<ActionButtonFields>(button).actionBlock;
    if (!action)
        return;
    playSelectionHaptic();
    callBlock(action);
}

constexpr MethodDefinition methods[] {
    method<"addItemWithTitle:detail:image:handler:", &addItem>(),
    method<"buttonDragInside:", &highlight<true>>(),
    method<"buttonDragOutside:", &highlight<false>>(),
    method<"buttonTouchDown:", &highlight<true>>(),
    method<"buttonTouchUpInside:", &touchUpInside>(),
    method<"hideLoadingIndicatorForItemAtIndex:", &hideLoadingIndicator>(),
    method<"initWithFrame:", &initWithFrame>(),
    method<"setDetail:forItemAtIndex:", &setText<&ActionButtonFields::detailLabel>>(),
    method<"setItemEnabled:atIndex:", &setItemEnabled>(),
    method<"setSubviewsOfButton:highlighted:", &setHighlighted>(),
    method<"setTitle:forItemAtIndex:", &setText<&ActionButtonFields::nameLabel>>(),
    method<"showLoadingIndicatorForItemAtIndex:", &showLoadingIndicator>(),
    getter<"stackView", &ActionsBarFields::stackView>(),
    method<"touchUpOutside:", &highlight<false>>(),
};

} // namespace

const ClassDefinition ALActionsBarView_class {
    .name = "ALActionsBarView", .superclassName = "UIStackView", .methods = methods
};

} // namespace appledger
