#include "platform/dispatch/clock.h"
#include "platform/dispatch/run_loop.h"
#include "platform/foundation/classes.h"
#include "platform/foundation/values.h"
#include "platform/handles/UIAlertController.h"
#include "platform/handles/UINavigationController.h"
#include "platform/handles/UISearchController.h"
#include "platform/handles/UITableViewController.h"
#include "platform/handles/UIWindow.h"
#include "platform/runtime/class_definition.h"
#include "support/view_test.h"

namespace {

using namespace platform;
using namespace std::chrono_literals;

std::string journal;

void note(const std::string& line)
{
    journal += (journal.empty() ? "" : ", ") + line;
}
std::string told()
{
    return std::exchange(journal, {});
}

template <Name Word> void say(const id&, SEL, const id&)
{
    note(std::string(Word.view()));
}

void updated(const id&, SEL, const id& search)
{
    const auto text = asString(UISearchController(search).searchBar().text());
    note("update '" + text->text() + "'" + (UISearchController(search).isActive() ? "" : " over"));
}

void changed(const id&, SEL, const id&, const id& text)
{
    note("text '" + asString(text)->text() + "'");
}

constexpr MethodDefinition listenerMethods[] {
    method<"didDismissSearchController:", &say<"dismissed">>(),
    method<"didPresentSearchController:", &say<"presented">>(),
    method<"searchBar:textDidChange:", &changed>(),
    method<"searchBarCancelButtonClicked:", &say<"cancel">>(),
    method<"searchBarSearchButtonClicked:", &say<"search">>(),
    method<"searchBarTextDidBeginEditing:", &say<"begun">>(),
    method<"searchBarTextDidEndEditing:", &say<"ended">>(),
    method<"updateSearchResultsForSearchController:", &updated>(),
    method<"willDismissSearchController:", &say<"dismisses">>(),
    method<"willPresentSearchController:", &say<"presents">>(),
};
const ClassDefinition Listener_class { .name = "SearchListener", .methods = listenerMethods };

NSInteger manyRows(const id&, SEL, const id&, NSInteger)
{
    return 50;
}
id plainCell(const id&, SEL, const id&, const id&)
{
    return UITableViewCell::withStyle(UITableViewCellStyle::Default, nil).object();
}
constexpr MethodDefinition rowsMethods[] {
    method<"tableView:cellForRowAtIndexPath:", &plainCell>(),
    method<"tableView:numberOfRowsInSection:", &manyRows>(),
};
const ClassDefinition Rows_class {
    .name = "RowsController", .superclassName = "UITableViewController", .methods = rowsMethods
};

class Search : public support::ViewTest {
protected:
    Search()
    {
        for (const ClassDefinition* definition : foundationClasses())
            registerClass(*definition);
        setScreen({ 390, 844 }, 2);
        listener = send<"new">(id(registerClass(Listener_class)));
        rows = UITableViewController(
            send<"initWithStyle:">(send<"alloc">(id(registerClass(Rows_class))), UITableViewStyle::Plain));
        search.setSearchResultsUpdater(listener);
        search.setDelegate(listener);
        search.searchBar().setDelegate(listener);
        rows.navigationItem().setSearchController(search);
        navigation = UINavigationController::withRootViewController(rows);
        window.setFrame(CGRectMake(0, 0, 390, 844));
        window.setRootViewController(navigation);
        window.setHidden(false);
        settle();
        journal.clear();
    }

    static void settle()
    {
        advanceClock(1s);
        runUntilIdle();
    }
    static void tap(CGPoint point)
    {
        advanceClock(1s);
        touchScreenAt(point, TouchKind::Began);
        touchScreenAt(point, TouchKind::Ended);
        settle();
    }
    double barHeight() const { return navigation.navigationBar().frame().size.height; }
    double topInset() const { return rows.tableView().adjustedContentInset().top; }
    UITextField field() const { return search.searchBar().searchTextField(); }

    id listener;
    UITableViewController rows;
    UISearchController search = UISearchController::withSearchResultsController(UIViewController());
    UINavigationController navigation;
    const UIWindow window = UIWindow::create();
};

TEST_F(Search, BeginsWithATouchAndEndsWithTheCancelButton)
{
    tap({ 200, 110 });
    EXPECT_EQ(told(), "presents, update '', begun, presented");
    EXPECT_TRUE(field().isEditing());
    typeOnKeyboard("a");
    EXPECT_EQ(told(), "text 'a', update 'a'");
    pressKey("return");
    EXPECT_EQ(told(), "search, ended");
    EXPECT_TRUE(search.isActive());
    settle();
    tap({ 350, 73 });
    EXPECT_EQ(told(), "cancel, dismisses, update '' over, dismissed");
    EXPECT_FALSE(search.isActive() || search.searchBar().showsCancelButton());
}

TEST_F(Search, TakesThePlaceOfTheTitlesUnlessItMayNot)
{
    EXPECT_EQ(barHeight(), 47 + 44 + 52);
    EXPECT_EQ(topInset(), 47 + 44 + 52);
    search.setActive(true);
    settle();
    EXPECT_EQ(barHeight(), 47 + 52);
    EXPECT_EQ(topInset(), 47 + 52);
    search.setActive(false);
    settle();
    EXPECT_EQ(barHeight(), 47 + 44 + 52);
    search.setHidesNavigationBarDuringPresentation(false);
    search.setActive(true);
    settle();
    EXPECT_EQ(barHeight(), 47 + 44 + 52);
    rows.navigationItem().setSearchController(nil);
    settle();
    EXPECT_EQ(barHeight(), 47 + 44);
    EXPECT_EQ(topInset(), 47 + 44);
}

TEST_F(Search, TheBarGoesWithTheContentThatIsScrolledUnlessItMayNot)
{
    const UITableView table = rows.tableView();
    EXPECT_EQ(table.contentOffset().y, -143);
    const struct {
        double scrolled;
        double height; ///< of what is left of the search bar
    } cases[] { { 0, 52 }, { 20, 32 }, { 60, 0 }, { 500, 0 }, { 10, 42 }, { -30, 52 } };
    for (const auto& [scrolled, height] : cases) {
        table.setContentOffset({ 0, scrolled - 143 });
        runUntilIdle();
        EXPECT_EQ(barHeight(), 91 + height) << scrolled;
        EXPECT_EQ(topInset(), 143) << "the content doesn't jump";
    }
    rows.navigationItem().setHidesSearchBarWhenScrolling(false);
    table.setContentOffset({ 0, 200 });
    settle();
    EXPECT_EQ(barHeight(), 143);
}

TEST_F(Search, DimsTheContentUnlessTheResultsStandInIt)
{
    const auto isDimmed = [] { return descriptionOfScreen().find("UIDimmingView") != std::string::npos; };
    search.setActive(true);
    EXPECT_TRUE(isDimmed());
    tap({ 200, 300 });
    EXPECT_FALSE(search.isActive()) << "a tap beside it";
    EXPECT_FALSE(isDimmed());
    search.setObscuresBackgroundDuringPresentation(false);
    search.setActive(true);
    EXPECT_FALSE(isDimmed());
}

TEST_F(Search, ATablesLastRowsStayAboveTheKeyboard)
{
    const double bottom = rows.tableView().adjustedContentInset().bottom;
    search.setActive(true);
    settle();
    EXPECT_EQ(rows.tableView().adjustedContentInset().bottom, bottom + 216);
    search.setActive(false);
    settle();
    EXPECT_EQ(rows.tableView().adjustedContentInset().bottom, bottom);
}

TEST_F(Search, ATableControllerDeselectsWhenItAppears)
{
    const UITableView table = rows.tableView();
    for (const bool clears : { true, false }) {
        rows.setClearsSelectionOnViewWillAppear(clears);
        table.selectRow(NSIndexPath(send<"indexPathForRow:inSection:">(
                            id(classNamed<"NSIndexPath">()), NSInteger { 2 }, NSInteger { 0 })),
            false, UITableViewScrollPosition::None);
        navigation.push(UIViewController::create(), false);
        settle();
        navigation.pop(false);
        settle();
        EXPECT_EQ(!table.indexPathForSelectedRow(), clears);
    }
}

TEST_F(Search, AnAlertsFirstFieldHasTheKeyboardAndTheAlertMakesRoomForIt)
{
    const UIAlertController alert(send<"alertControllerWithTitle:message:preferredStyle:">(
        id(classNamed<"UIAlertController">()), string("Title"), nil, NSInteger { 1 }));
    send<"addTextFieldWithConfigurationHandler:", void>(alert, nil);
    navigation.present(alert, true);
    settle();
    settle();
    const id field = itemsOf(send<"textFields">(alert))[0];
    EXPECT_TRUE(UITextField(field).isEditing());
    const CGRect frame = UIViewController(alert).view().frame();
    EXPECT_NEAR(CGRectGetMidY(frame), (844 - 250) / 2.0, 1);
    navigation.dismiss(true);
    settle();
    EXPECT_FALSE(typeOnKeyboard("x"));
}

} // namespace
