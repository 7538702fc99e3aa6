#pragma once

#include "platform/handles/UITableView.h"
#include "platform/handles/UIViewController.h"

namespace platform {

class UITableViewController : public UIViewController {
public:
    using UIViewController::UIViewController;
    static Class classObject() { return classNamed<"UITableViewController">(); }
    static UITableViewController withStyle(UITableViewStyle style)
    {
        return initialised<UITableViewController, "initWithStyle:">(style);
    }

    UITableView tableView() const { return call<"tableView", UITableView>(); }
    void setClearsSelectionOnViewWillAppear(bool clears) const { call<"setClearsSelectionOnViewWillAppear:">(clears); }
};

} // namespace platform
