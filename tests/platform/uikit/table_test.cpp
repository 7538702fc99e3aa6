#include "platform/dispatch/clock.h"
#include "platform/dispatch/run_loop.h"
#include "platform/foundation/block.h"
#include "platform/foundation/index_path.h"
#include "platform/foundation/index_set.h"
#include "platform/foundation/values.h"
#include "platform/graphics/bitmap.h"
#include "platform/handles/UITableView.h"
#include "platform/handles/UIWindow.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/exception.h"
#include "support/view_test.h"

namespace {

using namespace platform;
using namespace std::chrono_literals;

std::string nameOf(const id& path)
{
    const auto value = asIndexPath(path);
    return value ? std::to_string(value->section) + "." + std::to_string(value->row) : "none";
}

/// Sections of texts, and a journal of what is asked and told.
struct TableOwner : NSObject {
    static const ClassDefinition definition;
    std::vector<std::vector<std::string>> sections {};
    std::map<std::string, double> heights {}; ///< by text; -1 for all others
    std::map<NSInteger, double> headers {}; ///< by section
    std::map<NSInteger, double> footers {};
    std::map<NSInteger, std::string> titles {};
    std::string log {};
    id answer {}; ///< to whether a row may be selected
    bool refusesHighlight = false;

    std::string told() { return std::exchange(log, {}); }
    void note(const char* what, const id& path) { log += what + nameOf(path) + " "; }

    NSInteger numberOfSections(const id&)
    {
        log += "sections ";
        return static_cast<NSInteger>(sections.size());
    }
    NSInteger numberOfRows(const id&, NSInteger section)
    {
        log += "rows" + std::to_string(section) + " ";
        return static_cast<NSInteger>(sections[static_cast<std::size_t>(section)].size());
    }
    id cellForRow(const id& table, const id& path)
    {
        note("cell", path);
        UITableViewCell cell = UITableView(table).dequeueReusableCell(string("row"));
        if (!cell)
            cell = UITableViewCell::withStyle(UITableViewCellStyle::Default, string("row"));
        const auto value = asIndexPath(path);
        cell.textLabel().setText(string(sections[value->section][value->row]));
        return cell;
    }
    id titleForHeader(const id&, NSInteger section)
    {
        const auto found = titles.find(section);
        return found == titles.end() ? nil : string(found->second);
    }
    id willSelect(const id&, const id& path)
    {
        note("willSelect", path);
        return answer ? answer : path;
    }
    bool shouldHighlight(const id&, const id& path)
    {
        note("may", path);
        return !refusesHighlight;
    }
    void didHighlight(const id&, const id& path) { note("highlight", path); }
    void didUnhighlight(const id&, const id& path) { note("unhighlight", path); }
    void didSelect(const id&, const id& path) { note("select", path); }
    void didDeselect(const id&, const id& path) { note("deselect", path); }
};
constexpr MethodDefinition ownerMethods[] {
    method<"numberOfSectionsInTableView:", &TableOwner::numberOfSections>(),
    method<"tableView:cellForRowAtIndexPath:", &TableOwner::cellForRow>(),
    method<"tableView:didDeselectRowAtIndexPath:", &TableOwner::didDeselect>(),
    method<"tableView:didHighlightRowAtIndexPath:", &TableOwner::didHighlight>(),
    method<"tableView:didSelectRowAtIndexPath:", &TableOwner::didSelect>(),
    method<"tableView:didUnhighlightRowAtIndexPath:", &TableOwner::didUnhighlight>(),
    method<"tableView:numberOfRowsInSection:", &TableOwner::numberOfRows>(),
    method<"tableView:shouldHighlightRowAtIndexPath:", &TableOwner::shouldHighlight>(),
    method<"tableView:titleForHeaderInSection:", &TableOwner::titleForHeader>(),
    method<"tableView:willSelectRowAtIndexPath:", &TableOwner::willSelect>(),
};
const ClassDefinition TableOwner::definition {
    .name = "TableOwner", .allocate = allocate<TableOwner>, .methods = ownerMethods
};

/// One who says heights too.
struct MeasuringOwner : TableOwner {
    static const ClassDefinition definition;
    static double of(const std::map<NSInteger, double>& heights, NSInteger section)
    {
        const auto found = heights.find(section);
        return found == heights.end() ? UITableViewAutomaticDimension : found->second;
    }
    double heightForRow(const id&, const id& path)
    {
        note("height", path);
        const auto value = asIndexPath(path);
        const auto found = heights.find(sections[value->section][value->row]);
        return found == heights.end() ? UITableViewAutomaticDimension : found->second;
    }
    double heightForHeader(const id&, NSInteger section) { return of(headers, section); }
    double heightForFooter(const id&, NSInteger section) { return of(footers, section); }
};
constexpr MethodDefinition measuringMethods[] {
    method<"tableView:heightForFooterInSection:", &MeasuringOwner::heightForFooter>(),
    method<"tableView:heightForHeaderInSection:", &MeasuringOwner::heightForHeader>(),
    method<"tableView:heightForRowAtIndexPath:", &MeasuringOwner::heightForRow>(),
};
const ClassDefinition MeasuringOwner::definition { .name = "MeasuringTableOwner",
    .superclass = &TableOwner::definition,
    .allocate = allocate<MeasuringOwner>,
    .methods = measuringMethods };

id path(NSInteger section, NSInteger row)
{
    return NSIndexPath::forRow(row, section);
}
id paths(std::initializer_list<id> list)
{
    return array(std::vector<id>(list));
}

class Tables : public support::ViewTest {
protected:
    /// What was asked for while a layout ran is laid out with the next frame.
    static void nextFrame() { advanceClock(std::chrono::milliseconds(17)); }

    UIWindow window { makeWindow() };
    Ref<TableOwner> owner = make<TableOwner>();
    UITableView table;

    void show(UITableViewStyle style)
    {
        table = UITableView::withFrame(CGRectMake(0, 0, 300, 200), style);
        table.setContentInsetAdjustmentBehavior(UIScrollViewContentInsetAdjustmentBehavior::Never);
        table.setDataSource(owner);
        table.setDelegate(owner);
        window.addSubview(table);
        runUntilIdle();
    }

    void fill(std::size_t rows)
    {
        owner->sections = { {} };
        for (std::size_t row = 0; row < rows; ++row)
            owner->sections[0].push_back("row " + std::to_string(row));
    }

    UITableViewCell cell(NSInteger section, NSInteger row) const
    {
        return table.cellForRow(NSIndexPath(path(section, row)));
    }

    /// The texts of the rows in sight, from above, each with where it is seen.
    static std::string seen()
    {
        const std::string screen = descriptionOfScreen();
        std::string rows;
        for (std::size_t at = 0; (at = screen.find("UITableViewCell (", at)) != std::string::npos; ++at) {
            const auto end = screen.find(',', screen.find(", ", at) + 1);
            const auto quote = screen.find('"', at);
            rows.insert(0,
                screen.substr(quote + 1, screen.find('"', quote + 1) - quote - 1) + "@"
                    + screen.substr(screen.find(", ", at) + 2, end - screen.find(", ", at) - 2) + " ");
        }
        return rows;
    }

    static void tap(CGPoint point)
    {
        advanceClock(1s);
        touchScreenAt(point, TouchKind::Began);
        advanceClock(20ms);
        touchScreenAt(point, TouchKind::Ended);
    }
};

TEST_F(Tables, CountsAreAskedOnceAndCellsWhenTheirRowsAreSeen)
{
    fill(10'000);
    show(UITableViewStyle::Plain);
    EXPECT_EQ(owner->told(), "sections rows0 cell0.0 cell0.1 cell0.2 cell0.3 cell0.4 ");
    EXPECT_EQ(table.contentSize().height, 440'000);
    pictureOfScreen(1);
    EXPECT_EQ(owner->told(), "") << "drawing asks for nothing";
    const id first = cell(0, 0);
    table.setContentOffset({ 0, 50 });
    nextFrame();
    EXPECT_EQ(owner->told(), "cell0.5 ");
    EXPECT_EQ(cell(0, 5), first) << "the row that went lends its cell";
    EXPECT_FALSE(cell(0, 0));
    table.setContentOffset({ 0, 220'000 });
    nextFrame();
    EXPECT_EQ(owner->told(), "cell0.5000 cell0.5001 cell0.5002 cell0.5003 cell0.5004 ");
    table.reloadData();
    EXPECT_EQ(owner->told(), "sections rows0 ");
    nextFrame();
    EXPECT_EQ(owner->told(), "cell0.5000 cell0.5001 cell0.5002 cell0.5003 cell0.5004 ");
    EXPECT_FALSE(runUntilIdle());
}

TEST_F(Tables, DrawsItsLinesInTheColourThatItIsGiven)
{
    fill(3);
    show(UITableViewStyle::Plain);
    const auto lineUnderTheFirstRow = [] {
        const Bitmap screen = decodePicture(pictureOfScreen(2)).value();
        return std::lround(screen.colorAt(400, 87).red * 255);
    };
    const long usual = lineUnderTheFirstRow();
    table.setSeparatorColor(UIColor::withRed(1, 0, 0, 1));
    EXPECT_NE(usual, 255);
    EXPECT_EQ(lineUnderTheFirstRow(), 255);
    table.setSeparatorColor(UIColor());
    EXPECT_EQ(lineUnderTheFirstRow(), usual);
}

TEST_F(Tables, HeightsAreTheDelegatesOrTheStandardOnes)
{
    const Ref<MeasuringOwner> measuring = make<MeasuringOwner>();
    owner = measuring;
    owner->sections = { { "a", "b" }, { "c" }, {} };
    owner->heights = { { "a", 20 }, { "c", 0 } };
    owner->headers = { { 0, 10 }, { 1, 0 } };
    owner->footers = { { 0, 0 }, { 1, 5 }, { 2, 7 } };
    show(UITableViewStyle::Grouped);
    EXPECT_EQ(owner->told(), "sections rows0 rows1 rows2 height0.0 height0.1 height1.0 cell0.0 cell0.1 ");
    EXPECT_EQ(table.rectForRow(NSIndexPath(path(0, 0))), CGRectMake(0, 10, 300, 20));
    EXPECT_EQ(table.rectForRow(NSIndexPath(path(0, 1))), CGRectMake(0, 30, 300, 44));
    EXPECT_EQ(table.rectForFooter(0).size.height, 0) << "none";
    EXPECT_EQ(table.rectForHeader(1).size.height, 0);
    EXPECT_EQ(table.rectForRow(NSIndexPath(path(1, 0))), CGRectMake(0, 74, 300, 0));
    EXPECT_EQ(table.rectForFooter(1), CGRectMake(0, 74, 300, 5));
    EXPECT_GT(table.rectForHeader(2).size.height, 0) << "a group has room above it unless somebody says otherwise";
    EXPECT_EQ(table.numberOfRowsInSection(2), 0);
    EXPECT_THROW(table.numberOfRowsInSection(3), NSException);
    EXPECT_EQ(table.rectForRow(NSIndexPath(path(9, 0))), CGRectZero);
    EXPECT_EQ(nameOf(table.indexPathForRowAtPoint({ 5, 31 })), "0.1");
    EXPECT_EQ(nameOf(table.indexPathForRowAtPoint({ 5, 5 })), "none");
}

TEST_F(Tables, HeadersHaveTitlesAndStayInSightInAPlainTable)
{
    owner->sections = { { "a", "b", "c", "d" }, { "e", "f", "g", "h" } };
    owner->titles = { { 0, "First" }, { 1, "Second" } };
    show(UITableViewStyle::Plain);
    const double height = table.rectForHeader(0).size.height;
    const auto headerAt = [&](NSInteger section) { return table.headerViewForSection(section).frame().origin.y; };
    EXPECT_EQ(headerAt(0), 0);
    for (const double offset : { 40.0, 120.0 }) {
        table.setContentOffset({ 0, offset });
        nextFrame();
        EXPECT_EQ(headerAt(0), offset);
    }
    const double second = table.rectForHeader(1).origin.y;
    table.setContentOffset({ 0, second - 10 });
    nextFrame();
    EXPECT_EQ(headerAt(0), second - height) << "pushed out by the next one";
    EXPECT_EQ(headerAt(1), second);
    EXPECT_NE(descriptionOfScreen().find("\"Second\""), std::string::npos);
    show(UITableViewStyle::Grouped);
    EXPECT_NE(descriptionOfScreen().find("\"FIRST\""), std::string::npos);
    owner->titles = {};
    show(UITableViewStyle::Plain);
    EXPECT_EQ(table.rectForHeader(0).size.height, 0);
}

TEST_F(Tables, AnUpdateCarriesRowsToTheirNewPlaces)
{
    owner->sections = { { "a", "b", "c" } };
    show(UITableViewStyle::Plain);
    const id a = cell(0, 0);
    const id c = cell(0, 2);
    table.selectRow(NSIndexPath(path(0, 2)), false, UITableViewScrollPosition::None);
    owner->told();
    EXPECT_EQ(seen(), "a@0 b@44 c@88 ");
    owner->sections = { { "new", "a", "c" } };
    table.beginUpdates();
    table.insertRows(paths({ path(0, 0) }), UITableViewRowAnimation::Fade);
    table.deleteRows(paths({ path(0, 1) }), UITableViewRowAnimation::Fade);
    EXPECT_EQ(owner->told(), "") << "until the end";
    table.endUpdates();
    EXPECT_EQ(owner->told(), "sections rows0 cell0.0 ");
    EXPECT_EQ(cell(0, 1), a);
    EXPECT_EQ(cell(0, 2), c);
    EXPECT_EQ(nameOf(table.indexPathForSelectedRow()), "0.2");
    advanceClock(150ms);
    EXPECT_EQ(seen(), "a@22 c@88 b@44 new@0 ") << "in the middle of the way";
    advanceClock(1s);
    EXPECT_EQ(seen(), "a@44 c@88 new@0 ");
    EXPECT_FALSE(runUntilIdle());
    owner->sections = { { "new", "A", "c" } };
    table.reloadRows(paths({ path(0, 1) }), UITableViewRowAnimation::None);
    EXPECT_EQ(owner->told(), "sections rows0 cell0.1 ");
    EXPECT_NE(seen().find("A@44 "), std::string::npos);
}

TEST_F(Tables, SectionsComeAndGo)
{
    owner->sections = { { "a" }, { "b" } };
    show(UITableViewStyle::Plain);
    const id b = cell(1, 0);
    owner->sections = { { "x", "y" }, { "b" } };
    table.reloadSections(indexSet({ 0 }), UITableViewRowAnimation::None);
    EXPECT_EQ(cell(1, 0), b);
    EXPECT_TRUE(cell(0, 1));
    owner->sections = { { "b" }, { "z" } };
    table.beginUpdates();
    table.deleteSections(indexSet({ 0 }), UITableViewRowAnimation::None);
    table.insertSections(indexSet({ 1 }), UITableViewRowAnimation::None);
    table.endUpdates();
    EXPECT_EQ(cell(0, 0), b);
    EXPECT_EQ(table.numberOfSections(), 2);
}

TEST_F(Tables, CountsThatDoNotAddUpRaiseWithBothNumbers)
{
    owner->sections = { { "a", "b" } };
    show(UITableViewStyle::Plain);
    owner->sections = { { "a", "b", "c", "d" } };
    try {
        table.insertRows(paths({ path(0, 0) }), UITableViewRowAnimation::Fade);
        FAIL();
    } catch (const NSException& exception) {
        EXPECT_EQ(exception.name(), "NSInternalInconsistencyException");
        EXPECT_NE(exception.reason().find("4"), std::string::npos) << exception.reason();
        EXPECT_NE(exception.reason().find("3"), std::string::npos);
    }
    table.reloadData();
    EXPECT_EQ(table.numberOfRowsInSection(0), 4);
}

TEST_F(Tables, CompletionsOfABatchFollowItsAnimation)
{
    owner->sections = { { "a" } };
    show(UITableViewStyle::Plain);
    std::string order;
    send<"performBatchUpdates:completion:", void>(table, block([&] {
        order += "updates ";
        owner->sections[0].push_back("b");
        table.insertRows(paths({ path(0, 1) }), UITableViewRowAnimation::Automatic);
    }),
        block([&](bool finished) { order += finished ? "done " : "cut "; }));
    EXPECT_EQ(order, "updates ");
    advanceClock(1s);
    EXPECT_EQ(order, "updates done ");
}

TEST_F(Tables, AFingerSelectsAndTheDelegateHearsOfEachStep)
{
    fill(100);
    show(UITableViewStyle::Plain);
    const auto told = [&] {
        std::string log = owner->told();
        return log.starts_with("sections") ? log.substr(log.rfind("cell") + 8) : log;
    };
    told();
    tap({ 100, 60 });
    EXPECT_EQ(told(), "may0.1 highlight0.1 unhighlight0.1 willSelect0.1 select0.1 ");
    EXPECT_TRUE(cell(0, 1).isSelected());
    EXPECT_FALSE(cell(0, 1).isHighlighted());
    tap({ 100, 100 });
    EXPECT_EQ(told(), "may0.2 highlight0.2 unhighlight0.2 willSelect0.2 deselect0.1 select0.2 ");
    EXPECT_FALSE(cell(0, 1).isSelected());
    owner->answer = path(0, 0);
    tap({ 100, 60 });
    EXPECT_EQ(nameOf(table.indexPathForSelectedRow()), "0.0") << "another one than was touched";
    owner->answer = string("no path");
    told();
    tap({ 100, 60 });
    EXPECT_EQ(told(), "may0.1 highlight0.1 unhighlight0.1 willSelect0.1 ");
    owner->refusesHighlight = true;
    tap({ 100, 60 });
    EXPECT_EQ(told(), "may0.1 ");
    owner->refusesHighlight = false;
    touchScreenAt({ 100, 60 }, TouchKind::Began);
    advanceClock(200ms);
    EXPECT_TRUE(cell(0, 1).isHighlighted());
    touchScreenAt({ 100, 30 }, TouchKind::Moved);
    EXPECT_EQ(told(), "may0.1 highlight0.1 unhighlight0.1 ") << "a scroll takes the finger away";
    EXPECT_FALSE(cell(0, 1).isHighlighted());
    touchScreenAt({ 100, 30 }, TouchKind::Ended);
    advanceClock(5s);
    table.setAllowsSelection(false);
    told();
    tap({ 100, 60 });
    EXPECT_EQ(told(), "");
}

TEST_F(Tables, TheProgramSelectsWithoutTellingTheDelegate)
{
    fill(100);
    show(UITableViewStyle::Plain);
    owner->told();
    table.selectRow(NSIndexPath(path(0, 50)), false, UITableViewScrollPosition::Middle);
    EXPECT_EQ(table.contentOffset().y, 50 * 44 - (200 - 44) / 2);
    nextFrame();
    EXPECT_TRUE(cell(0, 50).isSelected()) << "also a row that wasn't in sight";
    table.deselectRow(NSIndexPath(path(0, 50)), true);
    EXPECT_FALSE(cell(0, 50).isSelected());
    EXPECT_FALSE(table.indexPathForSelectedRow());
    EXPECT_EQ(owner->log.find("elect"), std::string::npos);
    table.setAllowsMultipleSelection(true);
    for (const NSInteger row : { 1, 2 })
        table.selectRow(NSIndexPath(path(0, row)), false, UITableViewScrollPosition::None);
    EXPECT_EQ(itemsOf(table.indexPathsForSelectedRows()).size(), 2U);
    const struct {
        UITableViewScrollPosition position;
        double offset;
    } cases[] { { UITableViewScrollPosition::Top, 440 }, { UITableViewScrollPosition::Bottom, 440 - 156 },
        { UITableViewScrollPosition::None, 440 - 156 } };
    for (const auto& [position, offset] : cases) {
        table.scrollToRow(NSIndexPath(path(0, 10)), position, false);
        EXPECT_EQ(table.contentOffset().y, offset);
    }
}

TEST_F(Tables, CellsAreMadeOfTheRegisteredClassAndPreparedForAnotherRow)
{
    fill(100);
    show(UITableViewStyle::Plain);
    EXPECT_FALSE(table.dequeueReusableCell(string("other")));
    EXPECT_THROW(table.dequeueReusableCell(string("other"), NSIndexPath(path(0, 0))), NSException);
    table.registerCellClass(UITableViewCell::classObject(), string("other"));
    const UITableViewCell made = table.dequeueReusableCell(string("other"), NSIndexPath(path(0, 0)));
    EXPECT_EQ(asString(made.reuseIdentifier())->view(), "other");
    table.registerHeaderFooterViewClass(UITableViewHeaderFooterView::classObject(), string("head"));
    EXPECT_TRUE(table.dequeueReusableHeaderFooterView(string("head")));
    const UITableViewCell pressed = cell(0, 0);
    pressed.setHighlighted(true, false);
    table.setContentOffset({ 0, 1000 });
    nextFrame();
    EXPECT_FALSE(pressed.isHighlighted());
}

TEST_F(Tables, EachStyleOfACellHasItsOwnPlaces)
{
    using enum UITableViewCellStyle;
    const struct {
        UITableViewCellStyle style;
        bool hasDetail;
        bool detailIsBelow;
    } cases[] { { Default, false, false }, { Value1, true, false }, { Value2, true, false }, { Subtitle, true, true } };
    for (const auto& [style, hasDetail, detailIsBelow] : cases) {
        const UITableViewCell row = UITableViewCell::withStyle(style, nil);
        row.setFrame(CGRectMake(0, 0, 300, 44));
        row.textLabel().setText(string("Title"));
        row.detailTextLabel().setText(string("Detail"));
        EXPECT_EQ(static_cast<bool>(row.detailTextLabel()), hasDetail);
        row.setAccessoryType(UITableViewCellAccessoryType::DisclosureIndicator);
        row.layoutIfNeeded();
        const CGRect text = row.textLabel().frame();
        const CGRect detail = row.detailTextLabel().frame();
        EXPECT_LE(CGRectGetMaxX(row.contentView().frame()), 300 - 8 - 16);
        EXPECT_LE(CGRectGetMaxX(text), row.contentView().frame().size.width);
        if (hasDetail) {
            const double between
                = detailIsBelow ? detail.origin.y - CGRectGetMaxY(text) : detail.origin.x - CGRectGetMaxX(text);
            EXPECT_GE(between, 0);
        }
        row.textLabel().setText(string("A much longer title than before"));
        row.layoutIfNeeded();
        EXPECT_GE(row.textLabel().frame().size.width, text.size.width) << "a new text is a new layout";
        const UIView mine = UIView::withFrame(CGRectMake(0, 0, 60, 20));
        row.setAccessoryView(mine);
        row.layoutIfNeeded();
        EXPECT_EQ(CGRectGetMaxX(mine.frame()), 300 - 16);
    }
}

TEST_F(Tables, ADataSourceThatGoesLeavesNothingToAsk)
{
    fill(3);
    show(UITableViewStyle::Plain);
    owner = nullptr;
    table.reloadData();
    nextFrame();
    EXPECT_EQ(table.numberOfSections(), 0);
    EXPECT_EQ(seen(), "");
}

} // namespace
