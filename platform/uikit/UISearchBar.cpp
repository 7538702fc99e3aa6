#include "platform/foundation/block.h"
#include "platform/foundation/index_set.h"
#include "platform/foundation/values.h"
#include "platform/handles/UIButton.h"
#include "platform/handles/UIImageView.h"
#include "platform/handles/UITextField.h"
#include "platform/runtime/message.h"
#include "platform/uikit/search.h"
#include "platform/uikit/shades.h"
#include "platform/uikit/views.h"

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

// Points.
constexpr double fieldHeight = 36;
constexpr double sideMargin = 8;
constexpr double sideMarginInBar = 16; ///< as what else stands in a navigation bar
constexpr double fieldRadius = 10;
constexpr double iconRoom = 30;
constexpr double iconSide = 17;
constexpr double cancelGap = 12;

/// The glass before the text.
UIView makeGlass()
{
    const UIView box = UIView::withFrame(CGRectMake(0, 0, iconRoom, iconSide + 4));
    const UIImageView glass = UIImageView::withImage(
        UIImage(send<"systemImageNamed:">(id(classNamed<"UIImage">()), string("magnifyingglass"))));
    glass.setTintColor(UIColor::secondaryLabel());
    glass.setContentMode(UIViewContentMode::ScaleAspectFit);
    glass.setFrame(CGRectMake(7, 2, iconSide, iconSide));
    box.addSubview(glass);
    box.setUserInteractionEnabled(false);
    return box;
}

} // namespace

id SearchBarObject::initWithFrame(CGRect frame)
{
    const id self = sendSuper<"initWithFrame:">(classNamed<"UIView">(), id(this), frame);
    const UITextField field = UITextField(send<"new">(id(classNamed<"UISearchTextField">())));
    field.setDelegate(self);
    field.setClearButtonMode(UITextFieldViewMode::WhileEditing);
    field.setLeftView(makeGlass());
    field.setLeftViewMode(UITextFieldViewMode::Always);
    field.setReturnKeyType(UIReturnKeyType::Search);
    field.setEnablesReturnKeyAutomatically(true);
    field.setBackgroundColor(UIColor(send<"tertiarySystemFillColor">(id(UIColor::classObject()))));
    field.layer().setCornerRadius(fieldRadius);
    field.addTarget(self, sel_registerName("_textChanged"), UIControlEvents::EditingChanged);
    field_ = Ref<ViewObject>(asViewObject(field));
    insertSubview(field_, 0);
    return self;
}

void SearchBarObject::setText(const id& text)
{
    if (isEqual(field().text(), text ? text : string("")))
        return;
    field().setText(text);
    if (const Ref<SearchControllerObject> owner = controller.get())
        owner->update();
}

void SearchBarObject::setPlaceholder(const id& placeholder)
{
    send<"setPlaceholder:", void>(id(field_), placeholder);
}

void SearchBarObject::setShowsCancelButton(bool shows, bool animated)
{
    if (std::exchange(showsCancel_, shows) == shows)
        return;
    if (!cancel_) {
        const UIButton button = UIButton::withType(UIButtonType::System);
        button.setTitle(string("Cancel"), UIControlState::Normal);
        button.titleLabel().setFont(UIFont::systemFont(17));
        button.addTarget(id(this), sel_registerName("_cancelled"), UIControlEvents::TouchUpInside);
        cancel_ = Ref<ViewObject>(asViewObject(button));
        cancel_->setAlpha(0);
        insertSubview(cancel_, subviews.size());
    }
    setNeedsLayout();
    constexpr double duration = 0.25;
    if (animated && window())
        UIView::animate(duration, [self = Ref<SearchBarObject>(this)] { self->layoutTree(); });
}

void SearchBarObject::layoutSubviews()
{
    const double side = standsInBar ? sideMarginInBar : sideMargin;
    const Ref<SearchControllerObject> owner = controller.get();
    const bool isUnderTitle = standsInBar && !(owner && owner->isActive() && owner->hidesNavigationBar);
    const double top = isUnderTitle ? 1 : (bounds.size.height - fieldHeight) / 2;
    double right = bounds.size.width - side;
    if (cancel_) {
        const CGSize size = send<"sizeThatFits:", CGSize>(id(cancel_), CGSize {});
        if (showsCancel_)
            right -= size.width + cancelGap;
        place(*cancel_, CGRectMake(showsCancel_ ? right + cancelGap : bounds.size.width, top, size.width, fieldHeight));
        cancel_->setAlpha(showsCancel_ ? 1 : 0);
    }
    place(*field_, CGRectMake(side, top, std::max(right - side, 0.0), fieldHeight));
}

CGSize SearchBarObject::sizeThatFits(CGSize size) const
{
    return { size.width, searchBarHeight + 4 };
}

void SearchBarObject::drawContent(Canvas& canvas, const CGRect& seen) const
{
    constexpr Shade ground { shade::rgb(242, 242, 247), shade::rgb(28, 28, 30) };
    if (style != Style::Minimal && !standsInBar)
        canvas.fill(Path::roundedRect(seen, 0), asColor(barTintColor).value_or(ground.color()));
}

void SearchBarObject::textChanged()
{
    const Ref<SearchBarObject> self(this);
    ask<"searchBar:textDidChange:", void>(delegate.get(), id(this), field().text());
    if (const Ref<SearchControllerObject> owner = controller.get())
        owner->update();
}

void SearchBarObject::cancelled()
{
    const Ref<SearchBarObject> self(this);
    ask<"searchBarCancelButtonClicked:", void>(delegate.get(), id(this));
    if (const Ref<SearchControllerObject> owner = controller.get())
        owner->setActive(false);
}

void SearchBarObject::searchClicked()
{
    const Ref<SearchBarObject> self(this);
    ask<"searchBarSearchButtonClicked:", void>(delegate.get(), id(this));
    if (controller.get())
        send<"resignFirstResponder", bool>(id(field_));
}

namespace {

using Bar = SearchBarObject;

Bar& barIn(const id& self)
{
    return static_cast<Bar&>(*self);
}

// What its field asks and tells, which the bar passes on under names of its own.

template <Name Question> bool askOn(const id& self, SEL, const id&)
{
    return ask<Question, bool>(barIn(self).delegate.get(), self).value_or(true);
}

void didBegin(const id& self, SEL, const id&)
{
    if (const Ref<SearchControllerObject> owner = barIn(self).controller.get())
        owner->didBegin();
    ask<"searchBarTextDidBeginEditing:", void>(barIn(self).delegate.get(), self);
}

void didEnd(const id& self, SEL, const id&)
{
    ask<"searchBarTextDidEndEditing:", void>(barIn(self).delegate.get(), self);
}

bool shouldChange(const id& self, SEL, const id&, NSRange range, const id& replacement)
{
    return ask<"searchBar:shouldChangeTextInRange:replacementText:", bool>(
        barIn(self).delegate.get(), self, range, replacement)
        .value_or(true);
}

bool shouldReturn(const id& self, SEL, const id&)
{
    barIn(self).searchClicked();
    return false;
}

template <Name Message> bool onField(const id& self, SEL)
{
    return send<Message, bool>(barIn(self).searchField());
}

void setShowsCancel(const id& self, SEL, bool shows)
{
    barIn(self).setShowsCancelButton(shows, false);
}

constexpr MethodDefinition methods[] {
    method<"_cancelled", &Bar::cancelled>(),
    method<"_textChanged", &Bar::textChanged>(),
    method<"_traitsDidChange", &Bar::traitsDidChange>(),
    getter<"barTintColor", &Bar::barTintColor>(),
    method<"becomeFirstResponder", &onField<"becomeFirstResponder">>(),
    method<"canBecomeFirstResponder", &onField<"canBecomeFirstResponder">>(),
    getter<"delegate", &Bar::delegate>(),
    method<"initWithFrame:", &Bar::initWithFrame>(),
    method<"isFirstResponder", &onField<"isFirstResponder">>(),
    method<"layoutSubviews", &Bar::layoutSubviews>(),
    method<"placeholder", &Bar::placeholder>(),
    method<"resignFirstResponder", &onField<"resignFirstResponder">>(),
    getter<"searchBarStyle", &Bar::style>(),
    method<"searchTextField", &Bar::searchField>().since(13),
    setterThatAsks<"setBarTintColor:", &Bar::barTintColor, Asks::Drawing>(),
    setter<"setDelegate:", &Bar::delegate>(),
    method<"setPlaceholder:", &Bar::setPlaceholder>(),
    setterThatAsks<"setSearchBarStyle:", &Bar::style, Asks::Drawing>(),
    method<"setShowsCancelButton:", &setShowsCancel>(),
    method<"setShowsCancelButton:animated:", &Bar::setShowsCancelButton>(),
    method<"setText:", &Bar::setText>(),
    method<"showsCancelButton", &Bar::showsCancelButton>(),
    method<"text", &Bar::text>(),
    method<"textField:shouldChangeCharactersInRange:replacementString:", &shouldChange>(),
    method<"textFieldDidBeginEditing:", &didBegin>(),
    method<"textFieldDidEndEditing:", &didEnd>(),
    method<"textFieldShouldBeginEditing:", &askOn<"searchBarShouldBeginEditing:">>(),
    method<"textFieldShouldEndEditing:", &askOn<"searchBarShouldEndEditing:">>(),
    method<"textFieldShouldReturn:", &shouldReturn>(),
};

std::span<const MethodDefinition> allMethods()
{
    static const auto* const all = [] {
        auto* const joined = new std::vector<MethodDefinition>(std::begin(methods), std::end(methods));
        joined->insert(joined->end(), std::begin(TraitMethods<Bar>::rows), std::end(TraitMethods<Bar>::rows));
        return joined;
    }();
    return *all;
}

} // namespace

const ClassDefinition SearchBarObject::definition { .name = "UISearchBar",
    .superclass = &ViewObject::definition,
    .allocate = allocate<SearchBarObject>,
    .methods = allMethods() };

const ClassDefinition UISearchTextField_class { .name = "UISearchTextField",
    .superclass = &TextFieldObject::definition };

} // namespace platform
