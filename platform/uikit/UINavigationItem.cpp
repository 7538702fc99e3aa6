#include "platform/foundation/values.h"
#include "platform/handles/UIImageView.h"
#include "platform/handles/UILabel.h"
#include "platform/runtime/message.h"
#include "platform/uikit/navigation.h"

#include <algorithm>

namespace platform {

namespace {

enum class ButtonStyle : NSInteger { Plain = 0, Bordered = 1, Done = 2 };

NavigationItemObject& itemIn(const id& self)
{
    return static_cast<NavigationItemObject&>(*self);
}

void tellBar(const Ref<NavigationBarObject>& bar)
{
    if (bar)
        bar->setNeedsLayout();
}

template <auto Field> void setField(const id& self, SEL,
    detail::ArgumentType<std::remove_reference_t<decltype(std::declval<NavigationItemObject&>().*Field)>> value)
{
    itemIn(self).*Field = value;
    tellBar(itemIn(self).bar.get());
}

id initWithTitle(const id& self, SEL, const id& title)
{
    itemIn(self).title = title;
    return self;
}

id firstOf(const id& list)
{
    const ArrayValue items = itemsOf(list);
    return items.empty() ? id() : items[0];
}

template <auto List> id single(const id& self, SEL)
{
    return firstOf(itemIn(self).*List);
}

template <auto List> void setSingle(const id& self, SEL, const id& item)
{
    itemIn(self).*List = item ? array(std::vector<id> { item }) : id();
    tellBar(itemIn(self).bar.get());
}

template <auto List> void setSingleAnimated(const id& self, SEL cmd, const id& item, bool)
{
    setSingle<List>(self, cmd, item);
}

/// The content has more or less room below the bar.
void setSearchController(const id& self, SEL, const id& controller)
{
    itemIn(self).searchController = controller;
    const Ref<NavigationBarObject> bar = itemIn(self).bar.get();
    tellBar(bar);
    if (bar)
        ask<"_searchChanged", void>(bar->navigation.get());
}

void setHidesSearchBar(const id& self, SEL, bool hides)
{
    itemIn(self).hidesSearchBarWhenScrolling = hides;
    if (const Ref<NavigationBarObject> bar = itemIn(self).bar.get(); bar && !hides)
        bar->collapseSearch(0);
}

constexpr MethodDefinition itemMethods[] {
    getter<"backBarButtonItem", &NavigationItemObject::backBarButtonItem>(),
    getter<"backButtonTitle", &NavigationItemObject::backButtonTitle>(),
    getter<"hidesBackButton", &NavigationItemObject::hidesBackButton>(),
    getter<"hidesSearchBarWhenScrolling", &NavigationItemObject::hidesSearchBarWhenScrolling>().since(11),
    method<"initWithTitle:", &initWithTitle>(),
    getter<"largeTitleDisplayMode", &NavigationItemObject::largeTitleDisplayMode>(),
    method<"leftBarButtonItem", &single<&NavigationItemObject::leftItems>>(),
    getter<"leftBarButtonItems", &NavigationItemObject::leftItems>(),
    getter<"leftItemsSupplementBackButton", &NavigationItemObject::leftItemsSupplementBackButton>(),
    method<"rightBarButtonItem", &single<&NavigationItemObject::rightItems>>(),
    getter<"rightBarButtonItems", &NavigationItemObject::rightItems>(),
    getter<"searchController", &NavigationItemObject::searchController>().since(11),
    method<"setBackBarButtonItem:", &setField<&NavigationItemObject::backBarButtonItem>>(),
    method<"setBackButtonTitle:", &setField<&NavigationItemObject::backButtonTitle>>(),
    method<"setHidesBackButton:", &setField<&NavigationItemObject::hidesBackButton>>(),
    method<"setHidesSearchBarWhenScrolling:", &setHidesSearchBar>().since(11),
    method<"setLargeTitleDisplayMode:", &setField<&NavigationItemObject::largeTitleDisplayMode>>(),
    method<"setLeftBarButtonItem:", &setSingle<&NavigationItemObject::leftItems>>(),
    method<"setLeftBarButtonItem:animated:", &setSingleAnimated<&NavigationItemObject::leftItems>>(),
    method<"setLeftBarButtonItems:", &setField<&NavigationItemObject::leftItems>>(),
    method<"setLeftItemsSupplementBackButton:", &setField<&NavigationItemObject::leftItemsSupplementBackButton>>(),
    method<"setRightBarButtonItem:", &setSingle<&NavigationItemObject::rightItems>>(),
    method<"setRightBarButtonItem:animated:", &setSingleAnimated<&NavigationItemObject::rightItems>>(),
    method<"setRightBarButtonItems:", &setField<&NavigationItemObject::rightItems>>(),
    method<"setSearchController:", &setSearchController>().since(11),
    method<"setTitle:", &setField<&NavigationItemObject::title>>(),
    method<"setTitleView:", &setField<&NavigationItemObject::titleView>>(),
    getter<"title", &NavigationItemObject::title>(),
    getter<"titleView", &NavigationItemObject::titleView>(),
};

BarButtonItemObject& buttonIn(const id& self)
{
    return static_cast<BarButtonItemObject&>(*self);
}

id finish(const id& self, NSInteger style, const id& target, SEL action)
{
    buttonIn(self).style = style;
    buttonIn(self).target = target;
    buttonIn(self).action = action;
    return self;
}

id initWithButtonTitle(const id& self, SEL, const id& title, NSInteger style, const id& target, SEL action)
{
    buttonIn(self).title = title;
    return finish(self, style, target, action);
}

id initWithImage(const id& self, SEL, const id& image, NSInteger style, const id& target, SEL action)
{
    buttonIn(self).image = image;
    return finish(self, style, target, action);
}

id initWithCustomView(const id& self, SEL, const id& view)
{
    buttonIn(self).customView = view;
    return self;
}

/// The system's own, by its numbers. Those with a picture show one if the system has it.
id initWithSystemItem(const id& self, SEL, NSInteger number, const id& target, SEL action)
{
    struct SystemItem {
        NSInteger number;
        std::string_view title;
        std::string_view symbol;
    };
    static constexpr SystemItem items[] { { 0, "Done", "" }, { 1, "Cancel", "" }, { 2, "Edit", "" }, { 3, "Save", "" },
        { 4, "Add", "plus" }, { 9, "Share", "square.and.arrow.up" }, { 12, "Search", "magnifyingglass" },
        { 16, "Delete", "trash" }, { 21, "Undo", "" }, { 22, "Redo", "" }, { 24, "Close", "xmark" } };
    constexpr NSInteger flexibleSpace = 5;
    constexpr NSInteger fixedSpace = 6;
    BarButtonItemObject& button = buttonIn(self);
    button.isSpace = number == flexibleSpace || number == fixedSpace;
    for (const SystemItem& item : items)
        if (item.number == number) {
            button.title = string(item.title);
            if (!item.symbol.empty())
                button.image = askObject<"systemImageNamed:">(id(classNamed<"UIImage">()), string(item.symbol));
        }
    const bool isDone = number == 0 || number == 3;
    return finish(self, static_cast<NSInteger>(isDone ? ButtonStyle::Done : ButtonStyle::Plain), target, action);
}

id target(const id& self, SEL)
{
    return buttonIn(self).target.get();
}

void setTarget(const id& self, SEL, const id& target)
{
    buttonIn(self).target = target;
}

void setEnabled(const id& self, SEL, bool enabled)
{
    buttonIn(self).isEnabled = enabled;
    tellBar(buttonIn(self).bar.get());
}

void setButtonTitle(const id& self, SEL, const id& title)
{
    buttonIn(self).title = title;
    tellBar(buttonIn(self).bar.get());
}

void setImage(const id& self, SEL, const id& image)
{
    buttonIn(self).image = image;
    tellBar(buttonIn(self).bar.get());
}

void setTintColor(const id& self, SEL, const id& color)
{
    buttonIn(self).tintColor = color;
    tellBar(buttonIn(self).bar.get());
}

id shownView(const id& self, SEL)
{
    return buttonIn(self).view.get();
}

constexpr MethodDefinition buttonMethods[] {
    method<"_perform", &BarButtonItemObject::perform>(),
    method<"_view", &shownView>(),
    getter<"action", &BarButtonItemObject::action>(),
    getter<"customView", &BarButtonItemObject::customView>(),
    getter<"image", &BarButtonItemObject::image>(),
    method<"initWithBarButtonSystemItem:target:action:", &initWithSystemItem>(),
    method<"initWithCustomView:", &initWithCustomView>(),
    method<"initWithImage:style:target:action:", &initWithImage>(),
    method<"initWithTitle:style:target:action:", &initWithButtonTitle>(),
    getter<"isEnabled", &BarButtonItemObject::isEnabled>(),
    setter<"setAction:", &BarButtonItemObject::action>(),
    method<"setEnabled:", &setEnabled>(),
    method<"setImage:", &setImage>(),
    setter<"setStyle:", &BarButtonItemObject::style>(),
    method<"setTarget:", &setTarget>(),
    method<"setTintColor:", &setTintColor>(),
    method<"setTitle:", &setButtonTitle>(),
    getter<"style", &BarButtonItemObject::style>(),
    method<"target", &target>(),
    getter<"tintColor", &BarButtonItemObject::tintColor>(),
    getter<"title", &BarButtonItemObject::title>(),
};

} // namespace

/// An action takes nothing, or the item.
void BarButtonItemObject::perform()
{
    const id receiver = target.get();
    if (!isEnabled || !receiver || !action)
        return;
    if (sel_getName(action).ends_with(':'))
        sendSelector<void>(receiver, action, id(this));
    else
        sendSelector<void>(receiver, action);
}

Ref<ViewObject> BarButtonItemObject::makeView()
{
    if (customView)
        return Ref<ViewObject>(asViewObject(customView));
    constexpr double fontSize = 17;
    constexpr double semibold = 0.3;
    constexpr double disabledAlpha = 0.35;
    constexpr double imageSide = 22;
    UIView content;
    CGSize size;
    if (image) {
        const UIImageView picture = UIImageView::withImage(UIImage(image));
        picture.setContentMode(UIViewContentMode::ScaleAspectFit);
        content = picture;
        size = { imageSide, imageSide };
    } else {
        const UILabel label = UILabel::create();
        label.setText(title);
        label.setFont(style == static_cast<NSInteger>(ButtonStyle::Done)
                ? UIFont(send<"systemFontOfSize:weight:">(id(UIFont::classObject()), fontSize, semibold))
                : UIFont::systemFont(fontSize));
        const Ref<NavigationBarObject> shower = bar.get();
        label.setTextColor(UIColor(tintColor ? tintColor : send<"tintColor">(id(shower))));
        content = label;
        size = label.sizeThatFits({ unlimitedWidth, unlimitedWidth });
    }
    const UIView box = UIView::withFrame(CGRectMake(0, 0, size.width, navigationBarHeight));
    content.setFrame(CGRectMake(0, (navigationBarHeight - size.height) / 2, size.width, size.height));
    content.setUserInteractionEnabled(false);
    if (tintColor)
        box.setTintColor(UIColor(tintColor));
    box.addSubview(content);
    box.setAlpha(isEnabled ? 1 : disabledAlpha);
    send<"addGestureRecognizer:", void>(box.object(),
        send<"initWithTarget:action:">(
            send<"alloc">(id(classNamed<"UITapGestureRecognizer">())), id(this), sel_registerName("_perform")));
    const Ref<ViewObject> made(asViewObject(box.object()));
    view = made;
    return made;
}

const ClassDefinition NavigationItemObject::definition {
    .name = "UINavigationItem", .allocate = allocate<NavigationItemObject>, .methods = itemMethods
};
const ClassDefinition BarButtonItemObject::definition {
    .name = "UIBarButtonItem", .allocate = allocate<BarButtonItemObject>, .methods = buttonMethods
};

} // namespace platform
