#include "platform/foundation/index_path.h"
#include "platform/foundation/values.h"
#include "platform/runtime/exception.h"
#include "platform/runtime/message.h"
#include "platform/uikit/table_view.h"

namespace platform {

namespace {

/// Raises where the section isn't there.
std::size_t checked(NSInteger section, std::size_t count)
{
    if (section < 0 || static_cast<std::size_t>(section) >= count)
        throw NSException(
            "NSRangeException", "section " + std::to_string(section) + " of a table that has " + std::to_string(count));
    return static_cast<std::size_t>(section);
}

id newView(Class cls, const id& identifier, bool isCell)
{
    const id made = send<"alloc">(id(cls));
    return isCell ? send<"initWithStyle:reuseIdentifier:">(made, NSInteger { 0 }, identifier)
                  : send<"initWithReuseIdentifier:">(made, identifier);
}

} // namespace

id TableViewObject::initWithStyle(CGRect frame, NSInteger style)
{
    style_ = static_cast<TableStyle>(style);
    alwaysBounceVertical = true;
    return sendSuper<"initWithFrame:">(classNamed<"UIScrollView">(), id(this), frame);
}

void TableViewObject::setDataSource(const id& source)
{
    dataSource_ = source;
    loaded_ = false;
    setNeedsLayout();
}

void TableViewObject::setTableDelegate(const id& newDelegate)
{
    delegate = newDelegate;
    loaded_ = false;
    setNeedsLayout();
}

void TableViewObject::setEnd(Ref<ViewObject>& present, const id& view)
{
    if (present && id(present) != view)
        present->removeFromSuperview();
    present = Ref<ViewObject>(asViewObject(view));
    insertSubview(present, subviews.size());
    measureAnew();
}

void TableViewObject::reloadData()
{
    if (loading_)
        return;
    loaded_ = false;
    load();
}

NSInteger TableViewObject::numberOfSections()
{
    loadIfNeeded();
    return static_cast<NSInteger>(counts_.size());
}

NSInteger TableViewObject::numberOfRowsInSection(NSInteger section)
{
    loadIfNeeded();
    return static_cast<NSInteger>(counts_[checked(section, counts_.size())]);
}

std::optional<RowPath> TableViewObject::pathIn(const id& object) const
{
    const auto path = asIndexPath(object);
    if (!path || path->section >= counts_.size() || path->row >= counts_[path->section])
        return std::nullopt;
    return RowPath { path->section, path->row };
}

CGRect TableViewObject::rectForRow(const id& path)
{
    loadIfNeeded();
    const std::optional<RowPath> row = pathIn(path);
    return row ? CGRectOffset(layout_.rectOf(*row), 0, top_) : CGRectZero;
}

CGRect TableViewObject::rectForSection(NSInteger section)
{
    const CGRect header = rectForHeader(section);
    const double bottom = CGRectGetMaxY(rectForFooter(section));
    return CGRectMake(0, header.origin.y, header.size.width, bottom - header.origin.y);
}

CGRect TableViewObject::rectForHeader(NSInteger section)
{
    loadIfNeeded();
    return CGRectOffset(layout_.rectOfHeader(checked(section, counts_.size())), 0, top_);
}

CGRect TableViewObject::rectForFooter(NSInteger section)
{
    loadIfNeeded();
    return CGRectOffset(layout_.rectOfFooter(checked(section, counts_.size())), 0, top_);
}

id TableViewObject::indexPathForRowAtPoint(CGPoint point)
{
    loadIfNeeded();
    const auto row = layout_.rowAt(point.y - top_);
    return row ? indexPath(row->section, row->row) : nil;
}

id TableViewObject::indexPathsForRowsInRect(CGRect rect)
{
    loadIfNeeded();
    std::vector<id> paths;
    for (const RowPath& path : layout_.rowsIn(CGRectOffset(rect, 0, -top_)))
        paths.push_back(indexPath(path.section, path.row));
    return array(std::move(paths));
}

id TableViewObject::indexPathForCell(const id& cell) const
{
    for (const auto& [path, shown] : cells_)
        if (id(shown) == cell)
            return indexPath(path.section, path.row);
    return nil;
}

id TableViewObject::cellAt(const RowPath& path) const
{
    const auto found = cells_.find(path);
    return found == cells_.end() ? nil : id(found->second);
}

id TableViewObject::cellForRow(const id& path) const
{
    const std::optional<RowPath> row = pathIn(path);
    return row ? cellAt(*row) : nil;
}

id TableViewObject::sectionView(Part part, NSInteger section) const
{
    const auto found = sectionViews_.find({ static_cast<std::size_t>(section), part });
    return found == sectionViews_.end() ? nil : id(found->second);
}

id TableViewObject::visibleCells() const
{
    std::vector<id> cells;
    for (const auto& [path, cell] : cells_)
        cells.emplace_back(cell);
    return array(std::move(cells));
}

id TableViewObject::indexPathsForVisibleRows() const
{
    std::vector<id> paths;
    for (const auto& [path, cell] : cells_)
        paths.push_back(indexPath(path.section, path.row));
    return array(std::move(paths));
}

void TableViewObject::registerCellClass(Class cls, const id& identifier)
{
    if (const auto name = asString(identifier))
        cellClasses_[name->text()] = cls;
}

void TableViewObject::registerSectionViewClass(Class cls, const id& identifier)
{
    if (const auto name = asString(identifier))
        sectionViewClasses_[name->text()] = cls;
}

/// A view that has gone out of sight, or a new one of the class that is registered; nil for neither.
id TableViewObject::dequeue(CellPool& pool, const Classes& classes, const id& identifier, bool isCell)
{
    const auto name = asString(identifier);
    if (!name)
        return nil;
    if (id pooled = pool.take(*name))
        return pooled;
    const auto found = classes.find(name->view());
    return found == classes.end() || !found->second ? nil : newView(found->second, identifier, isCell);
}

id TableViewObject::dequeueCell(const id& identifier)
{
    return dequeue(pool_, cellClasses_, identifier, true);
}

id TableViewObject::dequeueCellForRow(const id& identifier, const id&)
{
    const id cell = dequeueCell(identifier);
    if (!cell)
        throw NSException("NSInternalInconsistencyException",
            "no cell class is registered for the identifier " + describe(identifier));
    return cell;
}

id TableViewObject::dequeueSectionView(const id& identifier)
{
    return dequeue(sectionPool_, sectionViewClasses_, identifier, false);
}

namespace {

id initWithFrame(const id& self, SEL, CGRect frame)
{
    return send<"initWithFrame:style:">(self, frame, NSInteger { 0 });
}

using Table = TableViewObject;
constexpr MethodDefinition methods[] {
    getter<"allowsMultipleSelection", &Table::allowsMultipleSelection>(),
    getter<"allowsSelection", &Table::allowsSelection>(),
    method<"beginUpdates", &Table::beginUpdates>(),
    method<"cellForRowAtIndexPath:", &Table::cellForRow>(),
    method<"dataSource", &Table::dataSource>(),
    method<"deleteRowsAtIndexPaths:withRowAnimation:", &Table::deleteRows>(),
    method<"deleteSections:withRowAnimation:", &Table::deleteSections>(),
    method<"dequeueReusableCellWithIdentifier:", &Table::dequeueCell>(),
    method<"dequeueReusableCellWithIdentifier:forIndexPath:", &Table::dequeueCellForRow>(),
    method<"dequeueReusableHeaderFooterViewWithIdentifier:", &Table::dequeueSectionView>(),
    method<"deselectRowAtIndexPath:animated:", &Table::deselectRow>(),
    method<"endUpdates", &Table::endUpdates>(),
    getter<"estimatedRowHeight", &Table::estimatedRowHeight>(),
    method<"footerViewForSection:", &Table::footerViewForSection>(),
    method<"headerViewForSection:", &Table::headerViewForSection>(),
    method<"indexPathForCell:", &Table::indexPathForCell>(),
    method<"indexPathForRowAtPoint:", &Table::indexPathForRowAtPoint>(),
    method<"indexPathForSelectedRow", &Table::indexPathForSelectedRow>(),
    method<"indexPathsForRowsInRect:", &Table::indexPathsForRowsInRect>(),
    method<"indexPathsForSelectedRows", &Table::indexPathsForSelectedRows>(),
    method<"indexPathsForVisibleRows", &Table::indexPathsForVisibleRows>(),
    method<"initWithFrame:", &initWithFrame>(),
    method<"initWithFrame:style:", &Table::initWithStyle>(),
    method<"insertRowsAtIndexPaths:withRowAnimation:", &Table::insertRows>(),
    method<"insertSections:withRowAnimation:", &Table::insertSections>(),
    method<"layoutSubviews", &Table::layoutTable>(),
    method<"moveRowAtIndexPath:toIndexPath:", &Table::moveRow>(),
    method<"numberOfRowsInSection:", &Table::numberOfRowsInSection>(),
    method<"numberOfSections", &Table::numberOfSections>(),
    method<"performBatchUpdates:completion:", &Table::performBatchUpdates>(),
    method<"rectForFooterInSection:", &Table::rectForFooter>(),
    method<"rectForHeaderInSection:", &Table::rectForHeader>(),
    method<"rectForRowAtIndexPath:", &Table::rectForRow>(),
    method<"rectForSection:", &Table::rectForSection>(),
    method<"registerClass:forCellReuseIdentifier:", &Table::registerCellClass>(),
    method<"registerClass:forHeaderFooterViewReuseIdentifier:", &Table::registerSectionViewClass>(),
    method<"reloadData", &Table::reloadData>(),
    method<"reloadRowsAtIndexPaths:withRowAnimation:", &Table::reloadRows>(),
    method<"reloadSections:withRowAnimation:", &Table::reloadSections>(),
    getter<"rowHeight", &Table::rowHeight>(),
    method<"scrollToNearestSelectedRowAtScrollPosition:animated:", &Table::scrollToSelectedRow>(),
    method<"scrollToRowAtIndexPath:atScrollPosition:animated:", &Table::scrollToRow>(),
    getter<"sectionFooterHeight", &Table::sectionFooterHeight>(),
    getter<"sectionHeaderHeight", &Table::sectionHeaderHeight>(),
    getter<"sectionHeaderTopPadding", &Table::sectionHeaderTopPadding>(),
    method<"selectRowAtIndexPath:animated:scrollPosition:", &Table::selectRow>(),
    getter<"separatorColor", &Table::separatorColor>(),
    getter<"separatorStyle", &Table::separatorStyle>(),
    setter<"setAllowsMultipleSelection:", &Table::allowsMultipleSelection>(),
    setter<"setAllowsSelection:", &Table::allowsSelection>(),
    method<"setDataSource:", &Table::setDataSource>(),
    method<"setDelegate:", &Table::setTableDelegate>(),
    setter<"setEstimatedRowHeight:", &Table::estimatedRowHeight>(),
    setter<"setEstimatedSectionFooterHeight:", &Table::estimatedSectionFooterHeight>(),
    setter<"setEstimatedSectionHeaderHeight:", &Table::estimatedSectionHeaderHeight>(),
    method<"setRowHeight:", &Table::setHeight<&Table::rowHeight>>(),
    method<"setSectionFooterHeight:", &Table::setHeight<&Table::sectionFooterHeight>>(),
    method<"setSectionHeaderHeight:", &Table::setHeight<&Table::sectionHeaderHeight>>(),
    setter<"setSectionHeaderTopPadding:", &Table::sectionHeaderTopPadding>(),
    method<"setSeparatorColor:", &Table::setSeparatorColor>(),
    method<"setSeparatorStyle:", &Table::setSeparatorStyle>(),
    method<"setTableFooterView:", &Table::setTableFooterView>(),
    method<"setTableHeaderView:", &Table::setTableHeaderView>(),
    method<"style", &Table::style>(),
    method<"tableFooterView", &Table::tableFooterView>(),
    method<"tableHeaderView", &Table::tableHeaderView>(),
    method<"touchesBegan:withEvent:", &Table::touchesBegan>(),
    method<"touchesCancelled:withEvent:", &Table::touchesCancelled>(),
    method<"touchesEnded:withEvent:", &Table::touchesEnded>(),
    method<"touchesMoved:withEvent:", &Table::touchesMoved>(),
    method<"visibleCells", &Table::visibleCells>(),
};

} // namespace

const ClassDefinition TableViewObject::definition { .name = "UITableView",
    .superclass = &ScrollViewObject::definition,
    .allocate = allocate<TableViewObject>,
    .methods = methods };

} // namespace platform
