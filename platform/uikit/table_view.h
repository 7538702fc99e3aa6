#pragma once

#include "platform/handles/UITableView.h"
#include "platform/uikit/cell_pool.h"
#include "platform/uikit/scroll_view.h"
#include "platform/uikit/table_cell.h"
#include "platform/uikit/table_updates.h"

#include <functional>
#include <map>
#include <memory>

namespace platform {

using RowAnimation = UITableViewRowAnimation;
using ScrollPosition = UITableViewScrollPosition;

/// Rows in sections. Its data source is asked for counts and its delegate for heights at a reload and at the end of an
/// update, and for a cell when its row comes into sight.
class TableViewObject : public ScrollViewObject {
public:
    static const ClassDefinition definition;

    double rowHeight = automaticHeight;
    double sectionHeaderHeight = automaticHeight;
    double sectionFooterHeight = automaticHeight;
    double estimatedRowHeight = automaticHeight;
    double estimatedSectionHeaderHeight = automaticHeight;
    double estimatedSectionFooterHeight = automaticHeight;
    double sectionHeaderTopPadding = automaticHeight;
    bool allowsSelection = true;
    bool allowsMultipleSelection = false;
    NSInteger separatorStyle = 1; ///< 0: none
    UIEdgeInsets separatorInset { 0, tableMargin, 0, 0 };
    id separatorColor {}; ///< nil: the system's

    /// Rows, headers and footers whose height nobody says.
    static constexpr double automaticHeight = -1;

    id initWithStyle(CGRect frame, NSInteger style);
    TableStyle style() const noexcept { return style_; }
    id dataSource() const { return dataSource_; }
    void setDataSource(const id& source);
    void setTableDelegate(const id& delegate);
    id tableHeaderView() const { return id(headerView_); }
    void setTableHeaderView(const id& view) { setEnd(headerView_, view); }
    id tableFooterView() const { return id(footerView_); }
    void setTableFooterView(const id& view) { setEnd(footerView_, view); }
    template <double TableViewObject::*Height> void setHeight(double height)
    {
        if (std::exchange(this->*Height, height) != height)
            measureAnew();
    }
    void setSeparatorStyle(NSInteger style);
    void setSeparatorColor(const id& color);

    void reloadData();
    NSInteger numberOfSections();
    NSInteger numberOfRowsInSection(NSInteger section);
    CGRect rectForRow(const id& path);
    CGRect rectForSection(NSInteger section);
    CGRect rectForHeader(NSInteger section);
    CGRect rectForFooter(NSInteger section);
    id indexPathForRowAtPoint(CGPoint point);
    id indexPathsForRowsInRect(CGRect rect);
    id indexPathForCell(const id& cell) const;
    /// Of rows in sight; nil for all others.
    id cellForRow(const id& path) const;
    id headerViewForSection(NSInteger section) const { return sectionView(Part::Header, section); }
    id footerViewForSection(NSInteger section) const { return sectionView(Part::Footer, section); }
    id visibleCells() const;
    id indexPathsForVisibleRows() const;

    void registerCellClass(Class cls, const id& identifier);
    void registerSectionViewClass(Class cls, const id& identifier);
    id dequeueCell(const id& identifier);
    id dequeueCellForRow(const id& identifier, const id& path);
    id dequeueSectionView(const id& identifier);

    id indexPathForSelectedRow() const;
    id indexPathsForSelectedRows() const;
    void selectRow(const id& path, bool animated, NSInteger position);
    void deselectRow(const id& path, bool animated);
    void scrollToRow(const id& path, NSInteger position, bool animated);
    void scrollToSelectedRow(NSInteger position, bool animated);

    void beginUpdates();
    void endUpdates();
    void insertRows(const id& paths, NSInteger animation);
    void deleteRows(const id& paths, NSInteger animation);
    void reloadRows(const id& paths, NSInteger animation);
    void moveRow(const id& from, const id& to);
    void insertSections(const id& indexes, NSInteger animation);
    void deleteSections(const id& indexes, NSInteger animation);
    void reloadSections(const id& indexes, NSInteger animation);
    void performBatchUpdates(const id& updates, const id& completion);

    void layoutTable();
    void touchesBegan(const id& touches, const id& event);
    void touchesMoved(const id& touches, const id& event);
    void touchesEnded(const id& touches, const id& event);
    void touchesCancelled(const id& touches, const id& event);

    void drawContent(Canvas& canvas, const CGRect& seen) const override;

private:
    using CellRef = Ref<TableCellObject>;
    enum class Part { Header, Footer };
    /// A header or a footer that is seen; its reuse identifier's, where it has one.
    using SectionViews = std::map<std::pair<std::size_t, Part>, Ref<ViewObject>>;
    using Classes = std::map<std::string, Class, std::less<>>;

    void setEnd(Ref<ViewObject>& present, const id& view);
    void load();
    void loadIfNeeded();
    TableUpdates::Counts askCounts() const;
    void measure();
    void measureAnew();
    double heightOf(Part part, std::size_t section);
    id titleOf(Part part, std::size_t section) const;
    double marginOfRows() const noexcept;
    CGRect frameOfRow(const RowPath& path) const;
    CGRect frameOfPart(Part part, std::size_t section) const;

    void showRows();
    void showSectionViews();
    CellRef makeCell(const RowPath& path);
    Ref<ViewObject> makeSectionView(Part part, std::size_t section);
    void configure(TableCellObject& cell, const RowPath& path);
    void dismiss(const RowPath& path, const CellRef& cell);
    void dismissSectionView(Part part, std::size_t section, const Ref<ViewObject>& view);
    void forgetAll();

    id sectionView(Part part, NSInteger section) const;
    static id dequeue(CellPool& pool, const Classes& classes, const id& identifier, bool isCell);
    std::optional<RowPath> pathIn(const id& object) const;
    std::optional<RowPath> rowOfTouch(const id& touches);
    void highlight(std::optional<RowPath> path);
    void choose(const RowPath& path);
    bool deselectAsFinger(const RowPath& path);
    void deselect(const RowPath& path, bool animated);
    id cellAt(const RowPath& path) const;

    static void withoutAnimation(const std::function<void()>& actions);
    template <class Say> void update(NSInteger animation, Say say);
    void sayRows(const id& paths, NSInteger animation, void (TableUpdates::*say)(const RowPath&));
    void saySections(const id& indexes, NSInteger animation, void (TableUpdates::*say)(std::size_t));
    void carryOut(const TableUpdates& updates);
    void leave(const RowPath& path, const CellRef& cell);
    void letGo();
    void enter(TableCellObject& cell, const RowPath& path);

    TableStyle style_ = TableStyle::Plain;
    Weak<NSObject> dataSource_ {};
    bool loaded_ = false;
    bool loading_ = false;
    TableUpdates::Counts counts_ {};
    RowLayout layout_ {};
    double measuredWidth_ = -1;
    double top_ = 0; ///< where the sections begin, below the table's header
    Ref<ViewObject> headerView_ {};
    Ref<ViewObject> footerView_ {};
    std::map<RowPath, CellRef> cells_ {};
    SectionViews sectionViews_ {};
    CellPool pool_ {};
    CellPool sectionPool_ {};
    Classes cellClasses_ {};
    Classes sectionViewClasses_ {};
    std::set<RowPath> selected_ {};
    std::optional<RowPath> highlighted_ {};
    int updateDepth_ = 0;
    std::unique_ptr<TableUpdates> updates_ {};
    RowAnimation animation_ = RowAnimation::None; ///< of the update under way, the one that was said last
    const TableUpdates* changing_ = nullptr; ///< while the views go over from what was to what is
    std::vector<std::pair<RowPath, CellRef>> leaving_ {}; ///< by the paths that they had
    std::vector<id> completions_ {}; ///< of the update under way
};

} // namespace platform
