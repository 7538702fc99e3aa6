#pragma once

#include "platform/handles/UISearchBar.h"
#include "platform/handles/UIViewController.h"

namespace platform {

class UISearchController : public UIViewController {
public:
    using UIViewController::UIViewController;
    static Class classObject() { return classNamed<"UISearchController">(); }
    /// Nil: the results stand in the content that is searched.
    static UISearchController withSearchResultsController(const UIViewController& results)
    {
        return initialised<UISearchController, "initWithSearchResultsController:">(results);
    }

    UISearchBar searchBar() const { return call<"searchBar", UISearchBar>(); }
    bool isActive() const { return call<"isActive", bool>(); }
    void setActive(bool active) const { call<"setActive:">(active); }
    /// Neither it nor the delegate is kept.
    void setSearchResultsUpdater(const id& updater) const { call<"setSearchResultsUpdater:">(updater); }
    void setDelegate(const id& delegate) const { call<"setDelegate:">(delegate); }
    void setObscuresBackgroundDuringPresentation(bool obscures) const
    {
        call<"setObscuresBackgroundDuringPresentation:">(obscures);
    }
    void setHidesNavigationBarDuringPresentation(bool hides) const
    {
        call<"setHidesNavigationBarDuringPresentation:">(hides);
    }
};

} // namespace platform
