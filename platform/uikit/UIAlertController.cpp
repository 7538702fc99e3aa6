#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/uikit/gestures.h"
#include "platform/uikit/view_controllers.h"
#include "platform/uikit/views.h"

#include <algorithm>

namespace platform {

namespace {

enum class ActionStyle : long { Default = 0, Cancel = 1, Destructive = 2 };

// Points.
constexpr double alertWidth = 270;
constexpr double margin = 16;
constexpr double gap = 4;
constexpr double buttonHeight = 44;
constexpr double cornerRadius = 14;
constexpr double hairline = 0.5;
constexpr double unlimited = 10000;

/// A choice in an alert.
class AlertActionObject : public NSObject {
public:
    id title {};
    id handler {}; ///< a block of the action, or nil
    bool enabled = true;
    ActionStyle style = ActionStyle::Default;

    NSInteger styleNumber() const { return static_cast<NSInteger>(style); }
};

id actionWithTitle(const id& self, SEL, const id& title, NSInteger style, const id& handler)
{
    id action = send<"new">(self);
    auto& fields = static_cast<AlertActionObject&>(*action);
    fields.title = title;
    fields.style = static_cast<ActionStyle>(style);
    fields.handler = handler;
    return action;
}

constexpr MethodDefinition actionMethods[] {
    classMethod<"actionWithTitle:style:handler:", &actionWithTitle>(),
    getter<"isEnabled", &AlertActionObject::enabled>(),
    setter<"setEnabled:", &AlertActionObject::enabled>(),
    method<"style", &AlertActionObject::styleNumber>(),
    getter<"title", &AlertActionObject::title>(),
};

id makeLabel(const id& text, double size, bool isBold)
{
    const id fonts(classNamed<"UIFont">());
    id label = send<"new">(id(classNamed<"UILabel">()));
    send<"setText:", void>(label, text);
    send<"setNumberOfLines:", void>(label, NSInteger { 0 });
    send<"setTextAlignment:", void>(label, NSInteger { 1 });
    send<"setFont:", void>(
        label, isBold ? send<"boldSystemFontOfSize:">(fonts, size) : send<"systemFontOfSize:">(fonts, size));
    return label;
}

/// A question or a piece of news over everything else, with a button for each answer.
class AlertControllerObject : public ViewControllerObject {
public:
    id message {};
    NSInteger preferredStyle = 0;
    std::vector<id> chosen {};
    id actions() const { return array(std::vector<id>(actions_)); }
    void addAction(const id& action) { actions_.push_back(action); }

    /// Goes away, and has the action's handler told. The host's and a finger's way to answer.
    void choose(const id& action)
    {
        const auto* const known = as<AlertActionObject>(action);
        if (!known || !known->enabled || std::ranges::find(actions_, action) == actions_.end())
            return;
        const id self(this); // it may be kept by nothing but its presentation
        dismiss(true, nil);
        callBlock(known->handler, action);
    }

    void didTap(const id& gesture)
    {
        const id button = send<"view">(gesture);
        for (std::size_t index = 0; index < buttons_.size(); ++index)
            if (buttons_[index] == button)
                return choose(actions_[index]);
    }

protected:
    id loadView() override
    {
        id shade = ViewControllerObject::loadView();
        asViewObject(shade)->setBackgroundColor(colorObject({ 0, 0, 0, 0.2 }));
        const Ref<ViewObject> box = make<ViewObject>();
        double y = margin;
        y = addText(*box, makeLabel(title, 17, true), y);
        y = addText(*box, makeLabel(message, 13, false), y) + margin - gap;
        for (const id& action : actions_)
            y = addButton(*box, action, y);
        const CGSize screen = screenFacts().size;
        box->setFrame({ { (screen.width - alertWidth) / 2, (screen.height - y) / 2 }, { alertWidth, y } });
        const bool isDark = screenFacts().style == InterfaceStyle::Dark;
        box->setBackgroundColor(colorObject(isDark ? Color { 0.15, 0.15, 0.16, 1 } : Color { 0.95, 0.95, 0.96, 1 }));
        box->layer().setCornerRadius(cornerRadius);
        box->layer().masksToBounds = true;
        send<"addSubview:", void>(shade, box);
        return shade;
    }

private:
    static void color(const id& label)
    {
        const bool isDark = screenFacts().style == InterfaceStyle::Dark;
        send<"setTextColor:", void>(label, colorObject(isDark ? Color { 1, 1, 1, 1 } : Color { 0, 0, 0, 1 }));
    }

    static double addText(ViewObject& box, const id& label, double y)
    {
        color(label);
        const CGSize size = send<"sizeThatFits:", CGSize>(label, CGSize { alertWidth - 2 * margin, unlimited });
        asViewObject(label)->setFrame({ { margin, y }, { alertWidth - 2 * margin, size.height } });
        send<"addSubview:", void>(id(&box), label);
        return size.height > 0 ? y + size.height + gap : y;
    }

    double addButton(ViewObject& box, const id& action, double y)
    {
        const auto& fields = static_cast<const AlertActionObject&>(*action);
        const Ref<ViewObject> line = make<ViewObject>();
        line->setFrame({ { 0, y }, { alertWidth, hairline } });
        line->setBackgroundColor(colorObject({ 0.5, 0.5, 0.5, 0.4 }));
        const Ref<ViewObject> button = make<ViewObject>();
        button->setFrame({ { 0, y }, { alertWidth, buttonHeight } });
        const id label = makeLabel(fields.title, 17, fields.style == ActionStyle::Cancel);
        const Color blue { 0, 0.48, 1, fields.enabled ? 1 : 0.4 };
        const Color red { 1, 0.23, 0.19, fields.enabled ? 1 : 0.4 };
        send<"setTextColor:", void>(label, colorObject(fields.style == ActionStyle::Destructive ? red : blue));
        asViewObject(label)->setFrame({ {}, { alertWidth, buttonHeight } });
        send<"addSubview:", void>(id(button), label);
        const id tap = send<"initWithTarget:action:">(
            send<"alloc">(id(classNamed<"UITapGestureRecognizer">())), id(this), sel_registerName("_didTapButton:"));
        send<"addGestureRecognizer:", void>(id(button), tap);
        send<"addSubview:", void>(id(&box), button);
        send<"addSubview:", void>(id(&box), line);
        buttons_.push_back(button);
        return y + buttonHeight;
    }

    std::vector<id> actions_ {};
    std::vector<id> buttons_ {};
};

id alertWithTitle(const id& self, SEL, const id& title, const id& message, NSInteger style)
{
    id alert = send<"new">(self);
    auto& fields = static_cast<AlertControllerObject&>(*alert);
    fields.title = title;
    fields.message = message;
    fields.preferredStyle = style;
    return alert;
}

constexpr MethodDefinition methods[] {
    method<"_choose:", &AlertControllerObject::choose>(),
    method<"_didTapButton:", &AlertControllerObject::didTap>(),
    method<"actions", &AlertControllerObject::actions>(),
    method<"addAction:", &AlertControllerObject::addAction>(),
    classMethod<"alertControllerWithTitle:message:preferredStyle:", &alertWithTitle>(),
    getter<"message", &AlertControllerObject::message>(),
    getter<"preferredStyle", &AlertControllerObject::preferredStyle>(),
    setter<"setMessage:", &AlertControllerObject::message>(),
};

} // namespace

const ClassDefinition UIAlertAction_class {
    .name = "UIAlertAction", .allocate = allocate<AlertActionObject>, .methods = actionMethods
};

const ClassDefinition UIAlertController_class { .name = "UIAlertController",
    .superclass = &ViewControllerObject::definition,
    .allocate = allocate<AlertControllerObject>,
    .methods = methods };

} // namespace platform
