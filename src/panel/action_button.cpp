#include "panel/action_button.h"

#include "core/appearance.h"
#include "panel/actions_bar_view.h"
#include "panel/template_image.h"

namespace appledger {

using namespace platform;

namespace {

// Points.
constexpr CGFloat imageSide = 31;
constexpr CGFloat fontSize = 11;
constexpr CGFloat above = 8;
constexpr CGFloat betweenParts = 4;
constexpr CGFloat betweenLabels = 1;

ActionButtonFields& fieldsIn(const id& button)
{
    return fieldsOf<ActionButtonFields>(button);
}

UILabel makeLabel(const UIView& button, const id& text)
{
    const UILabel label = UILabel::create();
    label.setText(text);
    label.setFont(UIFont::systemFont(fontSize));
    label.setTextAlignment(NSTextAlignment::Center);
    label.setAdjustsFontSizeToFitWidth(true);
    label.setTranslatesAutoresizingMaskIntoConstraints(false);
    button.addSubview(label);
    label.leadingAnchor().equalTo(button.leadingAnchor(), 2).setActive(true);
    label.trailingAnchor().equalTo(button.trailingAnchor(), -2).setActive(true);
    return label;
}

/// The colours of the appearance as it is now.
void layoutSubviews(const id& self, SEL)
{
    sendSuper<"layoutSubviews", void>(classNamed<"UIButton">(), self);
    const ALAppearance& appearance = ALAppearance::sharedInstance();
    const ActionButtonFields& fields = fieldsIn(self);
    ask<"setTextColor:", void>(fields.nameLabel, appearance.primaryTextColor());
    ask<"setTextColor:", void>(fields.detailLabel, appearance.secondaryTextColor());
    ask<"setTintColor:", void>(fields.actionImageView, appearance.actionsBarIconTintColor());
}

constexpr MethodDefinition methods[] {
    getter<"actionBlock", &ActionButtonFields::actionBlock>(),
    getter<"actionImageView", &ActionButtonFields::actionImageView>(),
    getter<"activityIndicatorView", &ActionButtonFields::activityIndicatorView>(),
    getter<"detailLabel", &ActionButtonFields::detailLabel>(),
    method<"layoutSubviews", &layoutSubviews>(),
    getter<"nameLabel", &ActionButtonFields::nameLabel>(),
    setter<"setActionBlock:", &ActionButtonFields::actionBlock>(),
};

} // namespace

UIButton makeActionButton(const id& title, const id& detail, const id& image, const id& handler)
{
    const UIButton button(send<"buttonWithType:">(id(classNamed<"ALActionButton">()), UIButtonType::Custom));
    ActionButtonFields& fields = fieldsIn(button);
    fields.actionBlock = handler;

    const UIImageView picture = UIImageView::withImage(UIImage(templateImage(image)));
    picture.setContentMode(UIViewContentMode::ScaleAspectFit);
    picture.setTranslatesAutoresizingMaskIntoConstraints(false);
    button.addSubview(picture);
    picture.topAnchor().equalTo(button.topAnchor(), above).setActive(true);
    picture.centerXAnchor().equalTo(button.centerXAnchor()).setActive(true);
    picture.widthAnchor().equalTo(imageSide).setActive(true);
    picture.heightAnchor().equalTo(imageSide).setActive(true);
    fields.actionImageView = picture;

    const UILabel name = makeLabel(button, title);
    name.topAnchor().equalTo(picture.bottomAnchor(), betweenParts).setActive(true);
    fields.nameLabel = name;
    const UILabel described = makeLabel(button, detail);
    described.topAnchor().equalTo(name.bottomAnchor(), betweenLabels).setActive(true);
    fields.detailLabel = described;

    const UIView wheel(ALAppearance::sharedInstance().activityIndicatorView());
    if (wheel) {
        wheel.setTranslatesAutoresizingMaskIntoConstraints(false);
        button.addSubview(wheel);
        wheel.centerXAnchor().equalTo(picture.centerXAnchor()).setActive(true);
        wheel.centerYAnchor().equalTo(picture.centerYAnchor()).setActive(true);
        fields.activityIndicatorView = wheel;
    }
    return button;
}

void setAlphaOfParts(const id& button, double alpha)
{
    const ActionButtonFields& fields = fieldsIn(button);
    for (const id& part : { fields.actionImageView, fields.nameLabel, fields.detailLabel })
        ask<"setAlpha:", void>(part, alpha);
}

const ClassDefinition ALActionButton_class {
    .name = "ALActionButton", .superclassName = "UIButton", .methods = methods
};

} // namespace appledger
