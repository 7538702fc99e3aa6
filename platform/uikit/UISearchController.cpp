#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/handles/UIView.h"
#include "platform/runtime/message.h"
#include "platform/uikit/navigation.h"
#include "platform/uikit/search.h"

namespace platform {

namespace {

constexpr double duration = 0.3;

} // namespace

id SearchControllerObject::searchBar()
{
    if (!bar_) {
        const id made = send<"new">(id(classNamed<"UISearchBar">()));
        bar_ = Ref<SearchBarObject>(as<SearchBarObject>(made));
        bar_->controller = Ref<SearchControllerObject>(this);
    }
    return id(bar_);
}

void SearchControllerObject::didBegin()
{
    if (isActive_)
        update();
    else
        setActive(true);
}

void SearchControllerObject::update()
{
    ask<"updateSearchResultsForSearchController:", void>(updater.get(), id(this));
}

void SearchControllerObject::setActive(bool active)
{
    const Ref<SearchControllerObject> self(this);
    if (isActive_ == active)
        return;
    const id listener = delegate.get();
    const id bar = searchBar();
    if (active)
        ask<"willPresentSearchController:", void>(listener, id(this));
    else
        ask<"willDismissSearchController:", void>(listener, id(this));
    isActive_ = active;
    send<"setShowsCancelButton:animated:", void>(bar, active, true);
    if (active) {
        send<"becomeFirstResponder", bool>(bar);
        update();
    } else {
        send<"resignFirstResponder", bool>(bar);
        // The search is over with its text, which the updater hears of.
        if (bar_->field().hasText())
            bar_->setText(nil);
        else
            update();
    }
    tellNavigation();
    showDimming();
    UIView::animate(
        duration, [] {},
        [self, active](bool) {
            const id told = self->delegate.get();
            if (active)
                ask<"didPresentSearchController:", void>(told, id(self));
            else
                ask<"didDismissSearchController:", void>(told, id(self));
        });
}

void SearchControllerObject::tellNavigation()
{
    bar_->setNeedsLayout();
    if (const auto* const shower = dynamic_cast<const NavigationBarObject*>(bar_->superview))
        ask<"_searchChanged", void>(shower->navigation.get());
}

/// Over the content that is searched, where that isn't where the results are.
void SearchControllerObject::showDimming()
{
    const bool shows = isActive_ && obscuresBackground;
    if (!shows) {
        if (dimming_)
            dimming_->removeFromSuperview();
        dimming_ = nullptr;
        return;
    }
    const auto* const shower = dynamic_cast<const NavigationBarObject*>(bar_->superview);
    const id navigation = shower ? shower->navigation.get() : nullptr;
    ViewObject* const content = asViewObject(askObject<"viewIfLoaded">(askObject<"topViewController">(navigation)));
    if (!content || !content->superview || dimming_)
        return;
    dimming_ = makeDimming({ 0, 0, 0, 0.2 }, { 0, 0, 0, 0.4 }, id(this), sel_registerName("_dimmingTapped"));
    dimming_->setFrame(content->frame());
    content->superview->insertSubview(dimming_, content->superview->subviews.size());
}

namespace {

using Search = SearchControllerObject;

Search& searchIn(const id& self)
{
    return static_cast<Search&>(*self);
}

/// With nil the results stand in the content that is searched, which is the only way here.
id initWithResults(const id& self, SEL, const id& results)
{
    if (results)
        complain("UISearchController shows no results controller: the searched content has to show the results");
    return send<"init">(self);
}

void dimmingTapped(const id& self, SEL)
{
    searchIn(self).setActive(false);
}

constexpr MethodDefinition methods[] {
    method<"_dimmingTapped", &dimmingTapped>(),
    getter<"delegate", &Search::delegate>(),
    getter<"hidesNavigationBarDuringPresentation", &Search::hidesNavigationBar>(),
    method<"initWithSearchResultsController:", &initWithResults>(),
    method<"isActive", &Search::isActive>(),
    getter<"obscuresBackgroundDuringPresentation", &Search::obscuresBackground>(),
    method<"searchBar", &Search::searchBar>(),
    getter<"searchResultsUpdater", &Search::updater>(),
    method<"setActive:", &Search::setActive>(),
    setter<"setDelegate:", &Search::delegate>(),
    setter<"setHidesNavigationBarDuringPresentation:", &Search::hidesNavigationBar>(),
    setter<"setObscuresBackgroundDuringPresentation:", &Search::obscuresBackground>(),
    setter<"setSearchResultsUpdater:", &Search::updater>(),
};

} // namespace

const ClassDefinition SearchControllerObject::definition { .name = "UISearchController",
    .superclass = &ViewControllerObject::definition,
    .allocate = allocate<SearchControllerObject>,
    .methods = methods };

} // namespace platform
