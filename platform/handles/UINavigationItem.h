#pragma once

#include "platform/handles/UIBarButtonItem.h"

namespace platform {

class UINavigationItem : public Handle {
public:
    using Handle::Handle;
    static Class classObject() { return classNamed<"UINavigationItem">(); }

    void setTitle(const id& title) const { call<"setTitle:">(title); }
    void setTitleView(const UIView& view) const { call<"setTitleView:">(view); }
    void setLeftBarButtonItem(const UIBarButtonItem& item) const { call<"setLeftBarButtonItem:">(item); }
    void setRightBarButtonItem(const UIBarButtonItem& item) const { call<"setRightBarButtonItem:">(item); }
    void setBackButtonTitle(const id& title) const { call<"setBackButtonTitle:">(title); }
    /// A UISearchController, whose bar stands below the titles.
    void setSearchController(const id& controller) const { call<"setSearchController:">(controller); }
    void setHidesSearchBarWhenScrolling(bool hides) const { call<"setHidesSearchBarWhenScrolling:">(hides); }
    void setHidesBackButton(bool hides) const { call<"setHidesBackButton:">(hides); }
};

} // namespace platform
