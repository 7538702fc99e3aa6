#include "platform/foundation/values.h"
#include "platform/handles/UITableView.h"
#include "platform/runtime/exception.h"
#include "platform/runtime/message.h"
#include "platform/uikit/keyboard.h"
#include "platform/uikit/search.h"

#include <algorithm>

namespace platform {

namespace {

/// A controller whose view is a table that it fills itself.
class TableViewControllerObject : public ViewControllerObject {
public:
    bool clearsSelection = true;

    id initWithStyle(NSInteger style)
    {
        style_ = static_cast<UITableViewStyle>(style);
        return send<"init">(id(this));
    }

    void setTableView(const id& table) { setView(table); }

    void willAppear(bool animated)
    {
        sendSuper<"viewWillAppear:", void>(classNamed<"UIViewController">(), id(this), animated);
        const UITableView table(view());
        if (!std::exchange(hasAppeared_, true))
            table.reloadData();
        if (!clearsSelection)
            return;
        for (const id& path : itemsOf(table.indexPathsForSelectedRows()))
            table.deselectRow(NSIndexPath(path), animated);
    }

    void didAppear(bool animated)
    {
        sendSuper<"viewDidAppear:", void>(classNamed<"UIViewController">(), id(this), animated);
        UITableView(view()).flashScrollIndicators();
    }

    /// The last rows stay above the keyboard.
    void keyboardMoved()
    {
        if (!viewIfLoaded())
            return;
        const UITableView table(view());
        const double covered = std::max(keyboardHeight() - table.safeAreaInsets().bottom, 0.0);
        UIEdgeInsets insets = table.contentInset();
        insets.bottom += covered - std::exchange(covered_, covered);
        table.setContentInset(insets);
    }

protected:
    id makeView() override
    {
        const UITableView table = UITableView::withFrame({ {}, screenFacts().size }, style_);
        table.setDataSource(id(this));
        table.setDelegate(id(this));
        send<"addObserver:selector:name:object:", void>(send<"defaultCenter">(id(classNamed<"NSNotificationCenter">())),
            id(this), sel_registerName("_keyboardMoved"), string("UIKeyboardWillChangeFrameNotification"), nil);
        return table;
    }

private:
    UITableViewStyle style_ = UITableViewStyle::Plain;
    bool hasAppeared_ = false;
    double covered_ = 0; ///< by the keyboard
};

NSInteger oneSection(const id&, SEL, const id&)
{
    return 1;
}

NSInteger noRows(const id&, SEL, const id&, NSInteger)
{
    return 0;
}

id noCell(const id&, SEL, const id&, const id&)
{
    throw NSException("NSInternalInconsistencyException", "a table view controller has to make its cells itself");
}

id tableView(const id& self, SEL)
{
    return send<"view">(self);
}

using Table = TableViewControllerObject;
constexpr MethodDefinition methods[] {
    method<"_keyboardMoved", &Table::keyboardMoved>(),
    getter<"clearsSelectionOnViewWillAppear", &Table::clearsSelection>(),
    method<"initWithStyle:", &Table::initWithStyle>(),
    method<"numberOfSectionsInTableView:", &oneSection>(),
    setter<"setClearsSelectionOnViewWillAppear:", &Table::clearsSelection>(),
    method<"setTableView:", &Table::setTableView>(),
    method<"tableView", &tableView>(),
    method<"tableView:cellForRowAtIndexPath:", &noCell>(),
    method<"tableView:numberOfRowsInSection:", &noRows>(),
    method<"viewDidAppear:", &Table::didAppear>(),
    method<"viewWillAppear:", &Table::willAppear>(),
};

} // namespace

const ClassDefinition UITableViewController_class { .name = "UITableViewController",
    .superclass = &ViewControllerObject::definition,
    .allocate = allocate<TableViewControllerObject>,
    .methods = methods };

} // namespace platform
