#include "platform/foundation/values.h"
#include "platform/handles/UILabel.h"
#include "platform/runtime/message.h"
#include "platform/uikit/navigation.h"

#include <algorithm>

namespace platform {

namespace {

// Points.
constexpr double side = 16;
constexpr double gap = 12;
constexpr double chevronWidth = 12;
constexpr double chevronHeight = 21;
constexpr double chevronInset = 8;
constexpr double titleSize = 17;

/// The way back: an arrowhead and where it leads.
class BackChevronObject : public ViewObject {
public:
    static const ClassDefinition definition;

    void drawContent(Canvas& canvas, const CGRect& seen) const override
    {
        constexpr double thickness = 2.75;
        const double inset = thickness / 2;
        Path line;
        line.moveTo({ seen.origin.x + seen.size.width - inset, seen.origin.y + inset });
        line.lineTo({ seen.origin.x + inset, CGRectGetMidY(seen) });
        line.lineTo({ seen.origin.x + seen.size.width - inset, CGRectGetMaxY(seen) - inset });
        canvas.stroke(line, effectiveTint(), thickness);
    }
};

const ClassDefinition BackChevronObject::definition {
    .name = "_UIBackButtonChevron", .superclass = &ViewObject::definition, .allocate = allocate<BackChevronObject>
};

UILabel makeLabel(const id& text, bool isBold, const id& color)
{
    constexpr double semibold = 0.3;
    const UILabel label = UILabel::create();
    label.setText(text);
    label.setFont(isBold ? UIFont(send<"systemFontOfSize:weight:">(id(UIFont::classObject()), titleSize, semibold))
                         : UIFont::systemFont(titleSize));
    label.setTextColor(UIColor(color));
    return label;
}

} // namespace

void NavigationBarObject::setItems(const std::vector<Ref<NavigationItemObject>>& items)
{
    items_ = items;
    collapsed_ = 0;
    for (const Ref<NavigationItemObject>& item : items_)
        item->bar = Ref<NavigationBarObject>(this);
    setNeedsLayout();
}

void NavigationBarObject::addSide(const id& list, bool leading, double& used)
{
    const ArrayValue buttons = itemsOf(list);
    for (const id& object : buttons) {
        auto* const button = as<BarButtonItemObject>(object);
        if (!button || button->isSpace)
            continue;
        button->bar = Ref<NavigationBarObject>(this);
        const UIView view { id(button->makeView()) };
        CGRect frame = view.frame();
        const bool left = leading != runsRightToLeft(*this);
        frame.origin = { left ? used : bounds.size.width - used - frame.size.width,
            std::round((navigationBarHeight - frame.size.height) / 2) };
        view.setFrame(frame);
        UIView(id(content_)).addSubview(view);
        used += frame.size.width + gap;
    }
}

void NavigationBarObject::addBack(double& used)
{
    const NavigationItemObject& former = *items_[items_.size() - 2];
    const id own = askObject<"title">(former.backBarButtonItem);
    id text = own ? own : former.backButtonTitle ? former.backButtonTitle : former.title;
    if (!asString(text))
        text = string("Back");
    UILabel label = makeLabel(text, false, send<"tintColor">(id(this)));
    CGSize size = label.sizeThatFits({ unlimitedWidth, unlimitedWidth });
    if (size.width > bounds.size.width / 3) {
        label.setText(string("Back"));
        size = label.sizeThatFits({ unlimitedWidth, unlimitedWidth });
    }
    const bool mirrored = runsRightToLeft(*this);
    const double width = chevronInset + chevronWidth + 6 + size.width;
    const UIView box
        = UIView::withFrame(CGRectMake(mirrored ? bounds.size.width - width : 0, 0, width, navigationBarHeight));
    const UIView chevron { id(make<BackChevronObject>()) };
    chevron.setFrame(CGRectMake(mirrored ? width - chevronInset - chevronWidth : chevronInset,
        (navigationBarHeight - chevronHeight) / 2, chevronWidth, chevronHeight));
    if (mirrored)
        chevron.setTransform(CGAffineTransformMakeScale(-1, 1));
    label.setFrame(CGRectMake(mirrored ? 0 : chevronInset + chevronWidth + 6,
        std::round((navigationBarHeight - size.height) / 2), size.width, size.height));
    chevron.setUserInteractionEnabled(false);
    box.addSubview(chevron);
    box.addSubview(label);
    send<"setAccessibilityIdentifier:", void>(box.object(), string("BackButton"));
    send<"addGestureRecognizer:", void>(box.object(),
        send<"initWithTarget:action:">(send<"alloc">(id(classNamed<"UITapGestureRecognizer">())), id(navigation.get()),
            sel_registerName("_goBack")));
    UIView(id(content_)).addSubview(box);
    used = width + gap;
}

/// In the middle of the bar where there is room for it, else in the middle of what is left.
void NavigationBarObject::addTitle(double leading, double trailing)
{
    const NavigationItemObject& item = *items_.back();
    const bool mirrored = runsRightToLeft(*this);
    const double left = mirrored ? trailing : leading;
    const double right = bounds.size.width - (mirrored ? leading : trailing);
    const double room = std::max(right - left, 0.0);
    UIView view(item.titleView);
    if (!view) {
        const UILabel label = makeLabel(item.title, true, send<"labelColor">(id(UIColor::classObject())));
        label.setTextAlignment(NSTextAlignment::Center);
        view = label;
    }
    CGSize size = item.titleView ? view.bounds().size : view.sizeThatFits({ unlimitedWidth, navigationBarHeight });
    size.width = std::min(size.width, room);
    size.height = std::min(size.height, navigationBarHeight);
    const double x = std::clamp((bounds.size.width - size.width) / 2, left, std::max(left, right - size.width));
    view.setFrame(
        CGRectMake(std::round(x), std::round((navigationBarHeight - size.height) / 2), size.width, size.height));
    UIView(id(content_)).addSubview(view);
}

bool NavigationBarObject::isSearchAlone() const
{
    const SearchControllerObject* const shown = search();
    return shown && shown->isActive() && shown->hidesNavigationBar;
}

double NavigationBarObject::height() const
{
    return (isSearchAlone() ? 0 : navigationBarHeight) + (search() ? searchBarHeight : 0);
}

void NavigationBarObject::collapseSearch(double by)
{
    const SearchControllerObject* const shown = search();
    const bool stays = !shown || shown->isActive() || !items_.back()->hidesSearchBarWhenScrolling;
    const double collapsed = stays ? 0 : std::clamp(by, 0.0, searchBarHeight);
    if (std::exchange(collapsed_, collapsed) != collapsed)
        setNeedsLayout();
}

/// At the lower edge, and cut off there where it has gone in part.
void NavigationBarObject::showSearch()
{
    SearchControllerObject* const shown = search();
    const id wanted = shown ? shown->searchBar() : nil;
    if (search_ && id(search_) != wanted)
        search_->removeFromSuperview();
    search_ = Ref<ViewObject>(asViewObject(wanted));
    if (!search_)
        return;
    static_cast<SearchBarObject&>(*search_).standsInBar = true;
    insertSubview(search_, subviews.size());
    constexpr double fades = 1.6; ///< it is gone before its room is
    search_->setAlpha(std::max(1 - fades * collapsed_ / searchBarHeight, 0.0));
    platform::place(*search_,
        CGRectMake(0, bounds.size.height - searchBarHeight + collapsed_ / 2, bounds.size.width, searchBarHeight));
}

void NavigationBarObject::layOut()
{
    if (!ground_) {
        constexpr NSInteger chrome = 10;
        const id glass = send<"initWithEffect:">(send<"alloc">(id(classNamed<"UIVisualEffectView">())),
            send<"effectWithStyle:">(id(classNamed<"UIBlurEffect">()), chrome));
        ground_ = Ref<ViewObject>(asViewObject(glass));
        ground_->userInteractionEnabled = false;
        line_ = make<ViewObject>();
        line_->userInteractionEnabled = false;
        line_->setBackgroundColor(send<"separatorColor">(id(classNamed<"UIColor">())));
        content_ = make<ViewObject>();
        insertSubview(ground_, 0);
        insertSubview(line_, 1);
        insertSubview(content_, 2);
    }
    const double hairline = 1 / std::max(screenFacts().scale, 1.0);
    showSearch();
    const double searchRoom = search_ ? searchBarHeight - collapsed_ : 0;
    const double top = bounds.size.height - searchRoom - navigationBarHeight;
    platform::place(*ground_, bounds);
    if (barTintColor)
        ground_->setBackgroundColor(barTintColor);
    platform::place(*line_, CGRectMake(0, bounds.size.height, bounds.size.width, hairline));
    platform::place(*content_, CGRectMake(0, top, bounds.size.width, navigationBarHeight));
    content_->setAlpha(isSearchAlone() ? 0 : 1);
    const std::vector<Ref<ViewObject>> former = content_->subviews;
    for (const Ref<ViewObject>& view : former)
        view->removeFromSuperview();
    if (items_.empty())
        return;
    const NavigationItemObject& item = *items_.back();
    double leading = side;
    double trailing = side;
    const bool hasOwnLeft = !itemsOf(item.leftItems).empty();
    if (items_.size() > 1 && !item.hidesBackButton && (!hasOwnLeft || item.leftItemsSupplementBackButton))
        addBack(leading);
    addSide(item.leftItems, true, leading);
    addSide(item.rightItems, false, trailing);
    addTitle(leading, trailing);
}

namespace {

id topItem(const id& self, SEL)
{
    const auto& items = static_cast<NavigationBarObject&>(*self).items();
    return items.empty() ? id() : id(items.back());
}

id items(const id& self, SEL)
{
    const auto& items = static_cast<NavigationBarObject&>(*self).items();
    return array({ items.begin(), items.end() });
}

void traitsDidChange(const id& self, SEL, const id&)
{
    static_cast<NavigationBarObject&>(*self).setNeedsLayout();
}

constexpr MethodDefinition methods[] {
    getter<"barTintColor", &NavigationBarObject::barTintColor>(),
    getter<"isTranslucent", &NavigationBarObject::isTranslucent>(),
    method<"items", &items>(),
    method<"layoutSubviews", &NavigationBarObject::layOut>(),
    getter<"prefersLargeTitles", &NavigationBarObject::prefersLargeTitles>(),
    setterThatAsks<"setBarTintColor:", &NavigationBarObject::barTintColor, Asks::Layout>(),
    setter<"setPrefersLargeTitles:", &NavigationBarObject::prefersLargeTitles>(),
    setterThatAsks<"setTranslucent:", &NavigationBarObject::isTranslucent, Asks::Drawing>(),
    method<"topItem", &topItem>(),
    method<"traitCollectionDidChange:", &traitsDidChange>(),
};

} // namespace

const ClassDefinition NavigationBarObject::definition { .name = "UINavigationBar",
    .superclass = &ViewObject::definition,
    .allocate = allocate<NavigationBarObject>,
    .methods = methods };

} // namespace platform
