#pragma once

#include "platform/uikit/text_field.h"
#include "platform/uikit/view_controllers.h"

namespace platform {

class SearchControllerObject;

/// A field for what is searched, and a button that ends the search.
class SearchBarObject : public ViewObject {
public:
    static const ClassDefinition definition;

    enum class Style : NSInteger { Default = 0, Prominent = 1, Minimal = 2 };

    Weak<NSObject> delegate {};
    Weak<SearchControllerObject> controller {}; ///< whose bar it is; nil for most
    Style style = Style::Default;
    id barTintColor {};
    bool standsInBar = false; ///< of navigation, which is its ground

    id initWithFrame(CGRect frame);
    TextTraits& textTraits() noexcept { return field().textTraits(); }
    void traitsDidChange() { field().traitsDidChange(); }
    TextFieldObject& field() const noexcept { return static_cast<TextFieldObject&>(*field_); }
    id searchField() const { return id(field_); }
    id text() const { return field().text(); }
    void setText(const id& text);
    id placeholder() const { return field().placeholder; }
    void setPlaceholder(const id& placeholder);
    bool showsCancelButton() const noexcept { return showsCancel_; }
    void setShowsCancelButton(bool shows, bool animated);

    void textChanged();
    void cancelled();
    void searchClicked();
    void layoutSubviews();

    CGSize sizeThatFits(CGSize size) const override;
    CGSize intrinsicContentSize() const override { return { -1, sizeThatFits({}).height }; }
    bool constrainsSubview(const ViewObject&) const noexcept override { return false; }
    void drawContent(Canvas& canvas, const CGRect& seen) const override;

private:
    Ref<ViewObject> field_ {};
    Ref<ViewObject> cancel_ {};
    bool showsCancel_ = false;
};

constexpr double searchBarHeight = 52;

/// A search in a controller's content: it is active from the moment in which its bar is edited until it is cancelled,
/// and its updater is told of the start and of every other text. The results stand in the content itself.
class SearchControllerObject : public ViewControllerObject {
public:
    static const ClassDefinition definition;

    Weak<NSObject> updater {};
    Weak<NSObject> delegate {};
    bool obscuresBackground = true;
    bool hidesNavigationBar = true;

    id searchBar();
    bool isActive() const noexcept { return isActive_; }
    void setActive(bool active);
    /// What the bar tells.
    void didBegin();
    void update();

private:
    void tellNavigation();
    void showDimming();

    Ref<SearchBarObject> bar_ {};
    Ref<ViewObject> dimming_ {};
    bool isActive_ = false;
};

extern const ClassDefinition UISearchTextField_class;
extern const ClassDefinition UITableViewController_class;

} // namespace platform
