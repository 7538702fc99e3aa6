#pragma once

#include "platform/handles/NSIndexPath.h"
#include "platform/handles/UIScrollView.h"
#include "platform/handles/UITableViewCell.h"
#include "platform/handles/UITableViewHeaderFooterView.h"

namespace platform {

enum class UITableViewStyle : NSInteger { Plain = 0, Grouped = 1, InsetGrouped = 2 };
enum class UITableViewScrollPosition : NSInteger { None = 0, Top = 1, Middle = 2, Bottom = 3 };
enum class UITableViewRowAnimation : NSInteger {
    Fade = 0,
    Right = 1,
    Left = 2,
    Top = 3,
    Bottom = 4,
    None = 5,
    Middle = 6,
    Automatic = 100,
};
enum class UITableViewCellSeparatorStyle : NSInteger { None = 0, SingleLine = 1 };

inline constexpr CGFloat UITableViewAutomaticDimension = -1;

class UITableView : public UIScrollView {
public:
    using UIScrollView::UIScrollView;
    static Class classObject() { return classNamed<"UITableView">(); }
    static UITableView withFrame(const CGRect& frame, UITableViewStyle style)
    {
        return initialised<UITableView, "initWithFrame:style:">(frame, style);
    }

    /// Neither it nor the delegate is kept.
    void setDataSource(const id& source) const { call<"setDataSource:">(source); }
    void reloadData() const { call<"reloadData">(); }
    NSInteger numberOfSections() const { return call<"numberOfSections", NSInteger>(); }
    NSInteger numberOfRowsInSection(NSInteger section) const
    {
        return call<"numberOfRowsInSection:", NSInteger>(section);
    }
    UITableViewStyle style() const { return call<"style", UITableViewStyle>(); }
    void setRowHeight(CGFloat height) const { call<"setRowHeight:">(height); }
    void setSectionHeaderHeight(CGFloat height) const { call<"setSectionHeaderHeight:">(height); }
    void setSectionFooterHeight(CGFloat height) const { call<"setSectionFooterHeight:">(height); }
    void setSeparatorColor(const UIColor& color) const { call<"setSeparatorColor:">(color); }
    void setSeparatorStyle(UITableViewCellSeparatorStyle style) const { call<"setSeparatorStyle:">(style); }
    void setTableHeaderView(const UIView& view) const { call<"setTableHeaderView:">(view); }
    void setTableFooterView(const UIView& view) const { call<"setTableFooterView:">(view); }
    void setAllowsSelection(bool allows) const { call<"setAllowsSelection:">(allows); }
    void setAllowsMultipleSelection(bool allows) const { call<"setAllowsMultipleSelection:">(allows); }

    void registerCellClass(Class cls, const id& identifier) const
    {
        call<"registerClass:forCellReuseIdentifier:">(cls, identifier);
    }
    void registerHeaderFooterViewClass(Class cls, const id& identifier) const
    {
        call<"registerClass:forHeaderFooterViewReuseIdentifier:">(cls, identifier);
    }
    UITableViewCell dequeueReusableCell(const id& identifier) const
    {
        return call<"dequeueReusableCellWithIdentifier:", UITableViewCell>(identifier);
    }
    UITableViewCell dequeueReusableCell(const id& identifier, const NSIndexPath& path) const
    {
        return call<"dequeueReusableCellWithIdentifier:forIndexPath:", UITableViewCell>(identifier, path);
    }
    UITableViewHeaderFooterView dequeueReusableHeaderFooterView(const id& identifier) const
    {
        return call<"dequeueReusableHeaderFooterViewWithIdentifier:", UITableViewHeaderFooterView>(identifier);
    }

    CGRect rectForRow(const NSIndexPath& path) const { return call<"rectForRowAtIndexPath:", CGRect>(path); }
    CGRect rectForHeader(NSInteger section) const { return call<"rectForHeaderInSection:", CGRect>(section); }
    CGRect rectForFooter(NSInteger section) const { return call<"rectForFooterInSection:", CGRect>(section); }
    NSIndexPath indexPathForRowAtPoint(CGPoint point) const
    {
        return call<"indexPathForRowAtPoint:", NSIndexPath>(point);
    }
    NSIndexPath indexPathForCell(const UITableViewCell& cell) const
    {
        return call<"indexPathForCell:", NSIndexPath>(cell);
    }
    /// Of rows in sight alone, as the next two.
    UITableViewCell cellForRow(const NSIndexPath& path) const
    {
        return call<"cellForRowAtIndexPath:", UITableViewCell>(path);
    }
    UIView headerViewForSection(NSInteger section) const { return call<"headerViewForSection:", UIView>(section); }
    UIView footerViewForSection(NSInteger section) const { return call<"footerViewForSection:", UIView>(section); }
    id visibleCells() const { return call<"visibleCells", id>(); }
    id indexPathsForVisibleRows() const { return call<"indexPathsForVisibleRows", id>(); }

    NSIndexPath indexPathForSelectedRow() const { return call<"indexPathForSelectedRow", NSIndexPath>(); }
    id indexPathsForSelectedRows() const { return call<"indexPathsForSelectedRows", id>(); }
    void selectRow(const NSIndexPath& path, bool animated, UITableViewScrollPosition position) const
    {
        call<"selectRowAtIndexPath:animated:scrollPosition:">(path, animated, position);
    }
    void deselectRow(const NSIndexPath& path, bool animated) const
    {
        call<"deselectRowAtIndexPath:animated:">(path, animated);
    }
    void scrollToRow(const NSIndexPath& path, UITableViewScrollPosition position, bool animated) const
    {
        call<"scrollToRowAtIndexPath:atScrollPosition:animated:">(path, position, animated);
    }

    void beginUpdates() const { call<"beginUpdates">(); }
    void endUpdates() const { call<"endUpdates">(); }
    void insertRows(const id& paths, UITableViewRowAnimation animation) const
    {
        call<"insertRowsAtIndexPaths:withRowAnimation:">(paths, animation);
    }
    void deleteRows(const id& paths, UITableViewRowAnimation animation) const
    {
        call<"deleteRowsAtIndexPaths:withRowAnimation:">(paths, animation);
    }
    void reloadRows(const id& paths, UITableViewRowAnimation animation) const
    {
        call<"reloadRowsAtIndexPaths:withRowAnimation:">(paths, animation);
    }
    /// Of an index set, as the next two.
    void insertSections(const id& sections, UITableViewRowAnimation animation) const
    {
        call<"insertSections:withRowAnimation:">(sections, animation);
    }
    void deleteSections(const id& sections, UITableViewRowAnimation animation) const
    {
        call<"deleteSections:withRowAnimation:">(sections, animation);
    }
    void reloadSections(const id& sections, UITableViewRowAnimation animation) const
    {
        call<"reloadSections:withRowAnimation:">(sections, animation);
    }
};

} // namespace platform
