#pragma once

#include "platform/uikit/search.h"
#include "platform/uikit/transitions.h"

namespace platform {

class NavigationBarObject;

/// What a controller puts into the bar.
class NavigationItemObject : public NSObject {
public:
    static const ClassDefinition definition;

    id title {};
    id titleView {};
    id backButtonTitle {};
    id backBarButtonItem {};
    id leftItems {}; ///< an array, or nil
    id rightItems {};
    bool hidesBackButton = false;
    bool leftItemsSupplementBackButton = false;
    NSInteger largeTitleDisplayMode = 0;
    id searchController {};
    bool hidesSearchBarWhenScrolling = true;

    SearchControllerObject* search() const { return as<SearchControllerObject>(searchController); }

    Weak<NavigationBarObject> bar {}; ///< the one that shows it
};

/// A button of a bar.
class BarButtonItemObject : public NSObject {
public:
    static const ClassDefinition definition;

    id title {};
    id image {};
    id customView {};
    id tintColor {};
    Weak<NSObject> target {};
    SEL action = nullptr;
    NSInteger style = 0;
    bool isEnabled = true;
    bool isSpace = false;

    /// Made anew at each layout of the bar.
    Ref<ViewObject> makeView();
    Weak<ViewObject> view {};
    Weak<NavigationBarObject> bar {};
    void perform();
};

constexpr double navigationBarHeight = 44;

/// The bar over a navigation controller's content: a title, a way back, and the buttons of the topmost item.
class NavigationBarObject : public ViewObject {
public:
    static const ClassDefinition definition;

    Weak<NSObject> navigation {}; ///< is sent `_goBack`
    id barTintColor {};
    bool isTranslucent = true;
    bool prefersLargeTitles = false;

    void setItems(const std::vector<Ref<NavigationItemObject>>& items);
    const std::vector<Ref<NavigationItemObject>>& items() const noexcept { return items_; }
    void layOut();
    /// Below the screen's own bars, as far as the content may count on: with the search bar, and without the row of
    /// title and buttons while a search has taken its place.
    double height() const;
    /// By so much the search bar has gone with the content that is scrolled under it.
    void collapseSearch(double by);
    double collapsed() const noexcept { return collapsed_; }

private:
    void addSide(const id& list, bool leading, double& used);
    void addBack(double& used);
    void addTitle(double leading, double trailing);
    SearchControllerObject* search() const { return items_.empty() ? nullptr : items_.back()->search(); }
    bool isSearchAlone() const;
    void showSearch();

    std::vector<Ref<NavigationItemObject>> items_ {};
    Ref<ViewObject> ground_ {};
    Ref<ViewObject> line_ {};
    Ref<ViewObject> content_ {};
    Ref<ViewObject> search_ {}; ///< the bar of the search that is shown
    double collapsed_ = 0;
};

/// Controllers one upon the other, of which the topmost is seen.
class NavigationControllerObject : public ViewControllerObject {
public:
    static const ClassDefinition definition;

    Weak<NSObject> delegate {};

    void push(const Ref<ViewControllerObject>& controller, bool animated);
    /// Those that have gone, the lowest first.
    std::vector<id> popTo(std::size_t count, bool animated);
    void setControllers(const std::vector<Ref<ViewControllerObject>>& next, bool animated);
    const std::vector<Ref<ViewControllerObject>>& controllers() const noexcept { return stack_; }
    Ref<ViewControllerObject> top() const { return stack_.empty() ? nullptr : stack_.back(); }

    NavigationBarObject& bar();
    id edgeGesture();
    bool isBarHidden() const noexcept { return isBarHidden_; }
    void setBarHidden(bool hidden, bool animated);

    void layOut();
    void goBack();
    /// A search in what is on top has begun or ended.
    void searchChanged();
    /// What is on top has been scrolled so far from its beginning.
    void contentScrolled(double distance);
    void edgeSwiped(const id& gesture);
    bool edgeShouldBegin(const id& gesture);

protected:
    id makeView() override;

private:
    enum class Operation : long { Push = 1, Pop = 2 };

    void show(const Ref<ViewControllerObject>& from, const Ref<ViewControllerObject>& to, Operation operation,
        bool animated, std::function<void()> gone);
    void place(ViewControllerObject& controller);
    id shownView() const { return id(viewIfLoaded()); }
    void updateBar();

    std::vector<Ref<ViewControllerObject>> stack_ {};
    Ref<NavigationBarObject> bar_ {};
    Ref<ViewObject> content_ {};
    id edge_ {};
    bool isBarHidden_ = false;
    bool isDragged_ = false;
};

/// The animator of pushes and pops.
id makeNavigationSlide(bool isPop);
constexpr double navigationDuration = 0.35;
constexpr double navigationParallax = 0.3; ///< how far what is covered goes along
bool runsRightToLeft(const ViewObject& view);

/// The view has been scrolled so far from its beginning: if it is what a navigation controller shows, its search bar
/// may go along.
void contentDidScroll(const ViewObject& view, double distance);

/// The nearest that holds the controller; nil for none.
id navigationControllerOf(const ViewControllerObject& controller);
id makeNavigationItem(const id& title);

} // namespace platform
