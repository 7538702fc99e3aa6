#include "platform/uikit/alert_view.h"

#include "platform/foundation/values.h"
#include "platform/handles/UILabel.h"
#include "platform/runtime/message.h"

#include <algorithm>

namespace platform {

namespace {

// Points.
constexpr double unlimited = 10000;
constexpr double radius = 14;
constexpr double fieldHeight = 28;

/// How the two kinds of alert differ.
struct Measures {
    double side; ///< of the texts
    double top;
    double bottom;
    double between;
    double titleSize;
    double messageSize;
    double buttonHeight;
    double buttonSize;
};
constexpr Measures alertMeasures { 16, 19, 20, 3, 17, 13, 44, 17 };
constexpr Measures sheetMeasures { 16, 14, 16, 4, 13, 13, 57, 20 };
constexpr double gapOfCancel = 8;

/// A colour that follows the appearance.
id shade(const Color& light, const Color& dark)
{
    const Ref<ColorObject> color = make<ColorObject>();
    color->color = light;
    color->darkColor = dark;
    return color;
}

double hairline()
{
    return 1 / std::max(screenFacts().scale, 1.0);
}

const Measures& measuresOf(const AlertContents& contents)
{
    return contents.style == AlertStyle::Alert ? alertMeasures : sheetMeasures;
}

UILabel makeLabel(const id& text, double size, bool isBold, const id& color)
{
    const UILabel label = UILabel::create();
    label.setText(text);
    label.setNumberOfLines(0);
    label.setTextAlignment(NSTextAlignment::Center);
    constexpr double semibold = 0.3;
    label.setFont(isBold ? UIFont(send<"systemFontOfSize:weight:">(id(UIFont::classObject()), size, semibold))
                         : UIFont::systemFont(size));
    label.setTextColor(UIColor(color));
    return label;
}

void addLine(const UIView& ground, const CGRect& frame)
{
    const UIView line = UIView::withFrame(frame);
    line.setBackgroundColor(UIColor(shade({ 60 / 255.0, 60 / 255.0, 67 / 255.0, 0.36 }, { 0.55, 0.55, 0.58, 0.5 })));
    line.setUserInteractionEnabled(false);
    ground.addSubview(line);
}

const AlertActionObject& actionIn(const id& action)
{
    return static_cast<const AlertActionObject&>(*action);
}

/// Two that fit beside each other stand so.
bool standSideBySide(const std::vector<id>& actions, const AlertContents& contents, double width)
{
    if (contents.style != AlertStyle::Alert || actions.size() != 2)
        return false;
    constexpr double padding = 8;
    return std::ranges::all_of(actions, [&](const id& action) {
        const UILabel label = makeLabel(actionIn(action).title, alertMeasures.buttonSize, true, nil);
        return label.sizeThatFits({ unlimited, unlimited }).width <= width / 2 - 2 * padding;
    });
}

} // namespace

id AlertViewObject::makeGround(const CGRect& frame, bool isOpaque)
{
    const id self(this);
    if (isOpaque) {
        const UIView plain = UIView::withFrame(frame);
        plain.setBackgroundColor(UIColor(shade({ 1, 1, 1, 1 }, { 0.173, 0.173, 0.18, 1 })));
        plain.layer().setCornerRadius(radius);
        plain.layer().setCornerCurve(string("continuous"));
        plain.setClipsToBounds(true);
        UIView(self).addSubview(plain);
        return plain;
    }
    constexpr NSInteger material = 8;
    const id effect = send<"effectWithStyle:">(id(classNamed<"UIBlurEffect">()), material);
    const UIView glass(send<"initWithEffect:">(send<"alloc">(id(classNamed<"UIVisualEffectView">())), effect));
    glass.setFrame(frame);
    glass.layer().setCornerRadius(radius);
    glass.layer().setCornerCurve(string("continuous"));
    glass.setClipsToBounds(true);
    UIView(self).addSubview(glass);
    return send<"contentView">(glass);
}

double AlertViewObject::addTexts(const id& ground, const AlertContents& contents, double width)
{
    const Measures& m = measuresOf(contents);
    const bool isSheet = contents.style == AlertStyle::ActionSheet;
    const id strong = isSheet
        ? shade({ 60 / 255.0, 60 / 255.0, 67 / 255.0, 0.6 }, { 235 / 255.0, 235 / 255.0, 245 / 255.0, 0.6 })
        : shade({ 0, 0, 0, 1 }, { 1, 1, 1, 1 });
    const auto message = asString(contents.message);
    const auto title = asString(contents.title);
    double y = 0;
    const auto add = [&](const id& text, double size, bool isBold) {
        const UILabel label = makeLabel(text, size, isBold, strong);
        const CGSize fitting = label.sizeThatFits({ width - 2 * m.side, unlimited });
        y += y == 0 ? m.top : m.between;
        label.setFrame(CGRectMake(m.side, y, width - 2 * m.side, fitting.height));
        UIView(ground).addSubview(label);
        y += fitting.height;
    };
    if (title && !title->empty())
        add(contents.title, m.titleSize, true);
    if (message && !message->empty())
        add(contents.message, m.messageSize, false);
    for (const id& field : contents.textFields) {
        y += y == 0 ? m.top : 2 * gapOfCancel;
        send<"setFrame:", void>(field, CGRectMake(m.side, y, width - 2 * m.side, fieldHeight));
        UIView(ground).addSubview(UIView(field));
        y += fieldHeight;
    }
    return y > 0 ? std::ceil(y + m.bottom) : 0;
}

void AlertViewObject::addButton(const id& ground, const id& action, const CGRect& frame, bool isBold, double fontSize)
{
    const AlertActionObject& fields = actionIn(action);
    const UIView button = UIView::withFrame(frame);
    const id color = !fields.isEnabled()
        ? shade({ 60 / 255.0, 60 / 255.0, 67 / 255.0, 0.3 }, { 235 / 255.0, 235 / 255.0, 245 / 255.0, 0.3 })
        : fields.style == ActionStyle::Destructive
        ? shade({ 1, 59 / 255.0, 48 / 255.0, 1 }, { 1, 69 / 255.0, 58 / 255.0, 1 })
        : shade({ 0, 122 / 255.0, 1, 1 }, { 10 / 255.0, 132 / 255.0, 1, 1 });
    const UILabel label = makeLabel(fields.title, fontSize, isBold, color);
    label.setNumberOfLines(1);
    label.setLineBreakMode(NSLineBreakMode::TruncatingMiddle);
    label.setFrame(CGRectMake(8, 0, std::max(frame.size.width - 16, 0.0), frame.size.height));
    button.addSubview(label);
    UIView(ground).addSubview(button);
    buttons_.push_back({ action, button.object() });
}

double AlertViewObject::addButtons(
    const id& ground, const std::vector<id>& actions, const AlertContents& contents, double y)
{
    const Measures& m = measuresOf(contents);
    const double width = UIView(ground).bounds().size.width;
    const auto isBold = [&](const id& action) {
        if (contents.preferred)
            return action == contents.preferred;
        return contents.style == AlertStyle::Alert && actionIn(action).style == ActionStyle::Cancel;
    };
    if (standSideBySide(actions, contents, width)) {
        for (std::size_t index = 0; index < actions.size(); ++index)
            addButton(ground, actions[index],
                CGRectMake(static_cast<double>(index) * width / 2, y, width / 2, m.buttonHeight),
                isBold(actions[index]), m.buttonSize);
        addLine(UIView(ground), CGRectMake(0, y, width, hairline()));
        addLine(UIView(ground), CGRectMake(width / 2, y, hairline(), m.buttonHeight));
        return y + m.buttonHeight;
    }
    for (const id& action : actions) {
        addButton(ground, action, CGRectMake(0, y, width, m.buttonHeight), isBold(action), m.buttonSize);
        if (y > 0)
            addLine(UIView(ground), CGRectMake(0, y, width, hairline()));
        y += m.buttonHeight;
    }
    return y;
}

/// What was there goes last, so that a field that is being edited never leaves the window.
double AlertViewObject::fill(const AlertContents& contents, double width)
{
    const std::vector<Ref<ViewObject>> former = subviews;
    const double height = build(contents, width);
    for (const Ref<ViewObject>& view : former)
        view->removeFromSuperview();
    return height;
}

double AlertViewObject::build(const AlertContents& contents, double width)
{
    buttons_.clear();
    highlighted_ = nil;
    std::vector<id> actions = contents.actions;
    id cancel;
    if (contents.style == AlertStyle::ActionSheet && !actions.empty()
        && actionIn(actions.back()).style == ActionStyle::Cancel) {
        cancel = actions.back();
        actions.pop_back();
    }
    double height = 0;
    if (contents.isInPopover) {
        const UIView ground = UIView::withFrame(CGRectMake(0, 0, width, 0));
        UIView(id(this)).addSubview(ground);
        height = addButtons(ground, actions, contents, addTexts(ground, contents, width));
        ground.setFrame(CGRectMake(0, 0, width, height));
        return height;
    }
    const UIView ground(makeGround(CGRectMake(0, 0, width, 0), false));
    height = addButtons(ground, actions, contents, addTexts(ground, contents, width));
    ground.superview().setFrame(CGRectMake(0, 0, width, height));
    if (cancel) {
        const double y = height > 0 ? height + gapOfCancel : 0;
        const double tall = measuresOf(contents).buttonHeight;
        const UIView last(makeGround(CGRectMake(0, y, width, tall), true));
        addButton(last, cancel, CGRectMake(0, 0, width, tall), true, measuresOf(contents).buttonSize);
        height = y + tall;
    }
    return height;
}

const AlertViewObject::Button* AlertViewObject::buttonAt(const id& touches) const
{
    const id touch = send<"anyObject">(touches);
    for (const Button& button : buttons_)
        if (actionIn(button.action).isEnabled()
            && CGRectContainsPoint(UIView(button.view).bounds(), send<"locationInView:", CGPoint>(touch, button.view)))
            return &button;
    return nullptr;
}

void AlertViewObject::highlight(const Button* button)
{
    const id view = button ? button->view : id();
    if (view == highlighted_)
        return;
    UIView(highlighted_).setBackgroundColor(UIColor());
    UIView(view).setBackgroundColor(UIColor(shade({ 0.75, 0.75, 0.78, 0.5 }, { 1, 1, 1, 0.12 })));
    highlighted_ = view;
}

void AlertViewObject::touched(const id& touches, const id&)
{
    highlight(buttonAt(touches));
}

void AlertViewObject::lifted(const id& touches, const id&)
{
    const Button* const button = buttonAt(touches);
    const id action = button ? button->action : id();
    highlight(nullptr);
    if (action)
        send<"_choose:", void>(id(chooser.get()), action);
}

void AlertViewObject::cancelled(const id&, const id&)
{
    highlight(nullptr);
}

namespace {

constexpr MethodDefinition methods[] {
    method<"touchesBegan:withEvent:", &AlertViewObject::touched>(),
    method<"touchesCancelled:withEvent:", &AlertViewObject::cancelled>(),
    method<"touchesEnded:withEvent:", &AlertViewObject::lifted>(),
    method<"touchesMoved:withEvent:", &AlertViewObject::touched>(),
};

} // namespace

const ClassDefinition AlertViewObject::definition { .name = "_UIAlertControllerView",
    .superclass = &ViewObject::definition,
    .allocate = allocate<AlertViewObject>,
    .methods = methods };

} // namespace platform
