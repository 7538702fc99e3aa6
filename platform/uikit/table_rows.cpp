#include "platform/foundation/index_path.h"
#include "platform/foundation/values.h"
#include "platform/runtime/exception.h"
#include "platform/runtime/message.h"
#include "platform/uikit/shades.h"
#include "platform/uikit/table_view.h"

/// What a table knows of its rows, and the views of those that are seen.

namespace platform {

namespace {

constexpr double standardRowHeight = 44;
constexpr double plainHeaderHeight = 28;
constexpr double gapOfGroups = 17.5; ///< above and below a group, where nothing else stands
constexpr double gapAboveFirstGroup = 35;

/// Heights that somebody says; what isn't one counts as the automatic one.
bool isAutomatic(double height)
{
    return !(height >= 0);
}

std::size_t countFrom(NSInteger count)
{
    return count > 0 ? static_cast<std::size_t>(count) : 0;
}

} // namespace

void TableViewObject::loadIfNeeded()
{
    if (!loaded_ && !loading_)
        load();
}

/// Asks for all counts and heights, and has all rows made anew.
void TableViewObject::load()
{
    loading_ = true;
    forgetAll();
    selected_.clear();
    highlighted_.reset();
    counts_ = askCounts();
    loading_ = false;
    loaded_ = true;
    measure();
    setNeedsLayout();
}

TableUpdates::Counts TableViewObject::askCounts() const
{
    const id self(const_cast<TableViewObject*>(this));
    const id source = dataSource_.get();
    TableUpdates::Counts counts;
    if (!source)
        return counts;
    const NSInteger sections = ask<"numberOfSectionsInTableView:", NSInteger>(source, self).value_or(1);
    for (std::size_t section = 0; section < countFrom(sections); ++section)
        counts.push_back(countFrom(
            send<"tableView:numberOfRowsInSection:", NSInteger>(source, self, static_cast<NSInteger>(section))));
    return counts;
}

/// The heights of everything, in the present width.
void TableViewObject::measure()
{
    measuredWidth_ = bounds.size.width;
    const id self(this);
    const id teller = delegate.get();
    std::vector<SectionHeights> sections(counts_.size());
    const bool tellsHeights = respondsTo<"tableView:heightForRowAtIndexPath:">(teller);
    for (std::size_t section = 0; section < counts_.size(); ++section) {
        sections[section].header = heightOf(Part::Header, section);
        sections[section].footer = heightOf(Part::Footer, section);
        sections[section].rows.resize(counts_[section], isAutomatic(rowHeight) ? standardRowHeight : rowHeight);
        if (!tellsHeights)
            continue;
        for (std::size_t row = 0; row < counts_[section]; ++row) {
            const double height
                = send<"tableView:heightForRowAtIndexPath:", CGFloat>(teller, self, indexPath(section, row));
            if (!isAutomatic(height))
                sections[section].rows[row] = height;
        }
    }
    layout_ = RowLayout(sections, bounds.size.width);
    top_ = headerView_ ? headerView_->bounds.size.height : 0;
    const double footer = footerView_ ? footerView_->bounds.size.height : 0;
    send<"setContentSize:", void>(self, CGSize { bounds.size.width, top_ + layout_.height() + footer });
}

/// The delegate's word, the table's, or what the style gives.
double TableViewObject::heightOf(Part part, std::size_t section)
{
    const id self(this);
    const auto number = static_cast<NSInteger>(section);
    const bool isHeader = part == Part::Header;
    const auto told = isHeader ? ask<"tableView:heightForHeaderInSection:", CGFloat>(delegate, self, number)
                               : ask<"tableView:heightForFooterInSection:", CGFloat>(delegate, self, number);
    const double own = told.value_or(isHeader ? sectionHeaderHeight : sectionFooterHeight);
    if (!isAutomatic(own))
        return own;
    const id title = titleOf(part, section);
    const bool hasView = isHeader ? respondsTo<"tableView:viewForHeaderInSection:">(delegate)
                                  : respondsTo<"tableView:viewForFooterInSection:">(delegate);
    if (style_ == TableStyle::Plain)
        return title || hasView ? plainHeaderHeight : 0;
    const double gap = isHeader && section == 0 ? gapAboveFirstGroup : gapOfGroups;
    if (!title)
        return gap;
    const Ref<TableSectionViewObject> measured = make<TableSectionViewObject>();
    measured->setPlace(style_, !isHeader);
    measured->setTitle(title);
    const double text = measured->sizeThatFits({ bounds.size.width - 2 * marginOfRows(), 0 }).height;
    return isHeader ? std::max(text + gapOfGroups / 2, gap) : text;
}

id TableViewObject::titleOf(Part part, std::size_t section) const
{
    const id self(const_cast<TableViewObject*>(this));
    const auto number = static_cast<NSInteger>(section);
    const id source = dataSource_.get();
    const id title = part == Part::Header ? askObject<"tableView:titleForHeaderInSection:">(source, self, number)
                                          : askObject<"tableView:titleForFooterInSection:">(source, self, number);
    const auto text = asString(title);
    return text && !text->empty() ? title : nil;
}

double TableViewObject::marginOfRows() const noexcept
{
    return style_ == TableStyle::InsetGrouped ? tableMargin : 0;
}

CGRect TableViewObject::frameOfRow(const RowPath& path) const
{
    return CGRectInset(CGRectOffset(layout_.rectOf(path), 0, top_), marginOfRows(), 0);
}

/// Headers of a plain table stay in sight as long as their sections are.
CGRect TableViewObject::frameOfPart(Part part, std::size_t section) const
{
    const CGRect rect = part == Part::Header ? layout_.rectOfHeader(section) : layout_.rectOfFooter(section);
    CGRect frame = CGRectInset(CGRectOffset(rect, 0, top_), marginOfRows(), 0);
    if (style_ == TableStyle::Plain && part == Part::Header) {
        const double last = top_ + layout_.rectOfFooter(section).origin.y - frame.size.height;
        frame.origin.y
            = std::clamp(bounds.origin.y + adjustedContentInset().top, frame.origin.y, std::max(last, frame.origin.y));
    }
    return frame;
}

void TableViewObject::measureAnew()
{
    measuredWidth_ = -1;
    setNeedsLayout();
}

void TableViewObject::setSeparatorStyle(NSInteger style)
{
    separatorStyle = style;
    for (const auto& [path, cell] : cells_)
        configure(*cell, path);
}

void TableViewObject::setSeparatorColor(const id& color)
{
    separatorColor = color;
    for (const auto& [path, cell] : cells_)
        configure(*cell, path);
}

void TableViewObject::layoutTable()
{
    loadIfNeeded();
    if (measuredWidth_ != bounds.size.width)
        measure();
    ScrollViewObject::layoutSubviews();
    if (headerView_)
        place(*headerView_, CGRectMake(0, 0, bounds.size.width, headerView_->bounds.size.height));
    if (footerView_)
        place(*footerView_, CGRectMake(0, top_ + layout_.height(), bounds.size.width, footerView_->bounds.size.height));
    showRows();
    showSectionViews();
}

void TableViewObject::showRows()
{
    const std::vector<RowPath> wanted = layout_.rowsIn(CGRectOffset(bounds, -bounds.origin.x, -top_));
    for (auto shown = cells_.begin(); shown != cells_.end();) {
        if (std::ranges::binary_search(wanted, shown->first)) {
            ++shown;
            continue;
        }
        const auto [path, cell] = *shown;
        shown = cells_.erase(shown);
        if (changing_) {
            leave(path, cell);
            place(*cell, frameOfRow(path));
        } else {
            dismiss(path, cell);
        }
    }
    for (const RowPath& path : wanted) {
        auto found = cells_.find(path);
        if (found == cells_.end())
            found = cells_.emplace(path, makeCell(path)).first;
        place(*found->second, frameOfRow(path));
    }
}

TableViewObject::CellRef TableViewObject::makeCell(const RowPath& path)
{
    const id self(this);
    const id number = indexPath(path.section, path.row);
    const id made = send<"tableView:cellForRowAtIndexPath:">(dataSource_.get(), self, number);
    CellRef cell(as<TableCellObject>(made));
    if (!cell)
        throw NSException("NSInternalInconsistencyException",
            "the data source has no cell for row " + std::to_string(path.row) + " of section "
                + std::to_string(path.section));
    // A cell that is shown for another row already has left it.
    std::erase_if(cells_, [&](const auto& shown) { return shown.second == cell; });
    withoutAnimation([&] {
        configure(*cell, path);
        place(*cell, frameOfRow(path));
        insertSubview(cell, 0);
        cell->layoutTree();
    });
    if (changing_)
        enter(*cell, path);
    ask<"tableView:willDisplayCell:forRowAtIndexPath:", void>(delegate, self, made, number);
    return cell;
}

void TableViewObject::configure(TableCellObject& cell, const RowPath& path)
{
    const std::size_t last = counts_[path.section] - 1;
    constexpr NSInteger noSeparators = 0;
    const bool endsGroup = style_ != TableStyle::Plain && path.row == last;
    cell.setPlace(
        { style_, path.row == 0, path.row == last, separatorStyle != noSeparators && !endsGroup, separatorColor });
    send<"setSelected:animated:", void>(id(&cell), selected_.contains(path), false);
    send<"setHighlighted:animated:", void>(id(&cell), highlighted_ == path, false);
}

void TableViewObject::dismiss(const RowPath& path, const CellRef& cell)
{
    cell->removeFromSuperview();
    ask<"tableView:didEndDisplayingCell:forRowAtIndexPath:", void>(
        delegate, id(this), id(cell), indexPath(path.section, path.row));
    if (const auto identifier = asString(cell->reuseIdentifier))
        pool_.put(*identifier, id(cell));
}

void TableViewObject::showSectionViews()
{
    std::set<std::pair<std::size_t, Part>> wanted;
    for (std::size_t section = 0; section < counts_.size(); ++section)
        for (const Part part : { Part::Header, Part::Footer }) {
            const CGRect frame = frameOfPart(part, section);
            if (frame.size.height > 0 && CGRectGetMaxY(frame) > bounds.origin.y
                && frame.origin.y < CGRectGetMaxY(bounds))
                wanted.emplace(section, part);
        }
    for (auto shown = sectionViews_.begin(); shown != sectionViews_.end();) {
        if (wanted.contains(shown->first)) {
            ++shown;
            continue;
        }
        const auto [place, view] = *shown;
        shown = sectionViews_.erase(shown);
        dismissSectionView(place.second, place.first, view);
    }
    for (const auto& [section, part] : wanted) {
        auto found = sectionViews_.find({ section, part });
        if (found == sectionViews_.end())
            found = sectionViews_.emplace(std::pair { section, part }, makeSectionView(part, section)).first;
        if (found->second)
            place(*found->second, frameOfPart(part, section));
    }
}

/// The delegate's view; else the system's own with the data source's title. Null where there is neither.
Ref<ViewObject> TableViewObject::makeSectionView(Part part, std::size_t section)
{
    const id self(this);
    const auto number = static_cast<NSInteger>(section);
    const bool isHeader = part == Part::Header;
    Ref<ViewObject> view(
        asViewObject(isHeader ? askObject<"tableView:viewForHeaderInSection:">(delegate, self, number)
                              : askObject<"tableView:viewForFooterInSection:">(delegate, self, number)));
    const id title = view ? id() : titleOf(part, section);
    if (title)
        view = make<TableSectionViewObject>();
    if (!view)
        return nullptr;
    if (auto* const own = dynamic_cast<TableSectionViewObject*>(view.get())) {
        own->setPlace(style_, !isHeader);
        if (title)
            own->setTitle(title);
    }
    withoutAnimation([&] {
        place(*view, frameOfPart(part, section));
        insertSubview(view, cells_.size() + leaving_.size());
    });
    if (isHeader)
        ask<"tableView:willDisplayHeaderView:forSection:", void>(delegate, self, id(view), number);
    else
        ask<"tableView:willDisplayFooterView:forSection:", void>(delegate, self, id(view), number);
    return view;
}

void TableViewObject::dismissSectionView(Part part, std::size_t section, const Ref<ViewObject>& view)
{
    if (!view)
        return;
    view->removeFromSuperview();
    const auto number = static_cast<NSInteger>(section);
    if (part == Part::Header)
        ask<"tableView:didEndDisplayingHeaderView:forSection:", void>(delegate, id(this), id(view), number);
    else
        ask<"tableView:didEndDisplayingFooterView:forSection:", void>(delegate, id(this), id(view), number);
    const auto* const own = dynamic_cast<const TableSectionViewObject*>(view.get());
    if (const auto identifier = own ? asString(own->reuseIdentifier) : std::nullopt)
        sectionPool_.put(*identifier, id(view));
}

void TableViewObject::forgetAll()
{
    const auto cells = std::exchange(cells_, {});
    for (const auto& [path, cell] : cells)
        dismiss(path, cell);
    const auto views = std::exchange(sectionViews_, {});
    for (const auto& [place, view] : views)
        dismissSectionView(place.second, place.first, view);
}

void TableViewObject::drawContent(Canvas& canvas, const CGRect& seen) const
{
    if (!backgroundColor)
        canvas.fill(Path::roundedRect(seen, 0),
            (style_ == TableStyle::Plain ? shade::background : shade::groupedBackground).color());
}

} // namespace platform
