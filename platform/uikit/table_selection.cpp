#include "platform/foundation/index_path.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/uikit/table_view.h"
#include "platform/uikit/touches.h"

/// Rows under a finger, and rows that are selected.

namespace platform {

namespace {

id numberOf(const RowPath& path)
{
    return indexPath(path.section, path.row);
}

} // namespace

std::optional<RowPath> TableViewObject::rowOfTouch(const id& touches)
{
    const id touch = send<"anyObject">(touches);
    const Ref<ViewObject> view(asViewObject(send<"view">(touch)));
    for (const auto& [path, cell] : cells_)
        if (view && view->isDescendantOf(*cell))
            return path;
    return std::nullopt;
}

void TableViewObject::highlight(std::optional<RowPath> path)
{
    const id self(this);
    const std::optional<RowPath> former = std::exchange(highlighted_, path);
    if (former == path)
        return;
    if (former) {
        send<"setHighlighted:animated:", void>(cellAt(*former), false, false);
        ask<"tableView:didUnhighlightRowAtIndexPath:", void>(delegate, self, numberOf(*former));
    }
    if (path) {
        send<"setHighlighted:animated:", void>(cellAt(*path), true, false);
        ask<"tableView:didHighlightRowAtIndexPath:", void>(delegate, self, numberOf(*path));
    }
}

void TableViewObject::touchesBegan(const id& touches, const id&)
{
    const std::optional<RowPath> path = rowOfTouch(touches);
    if (!path || !allowsSelection)
        return;
    if (ask<"tableView:shouldHighlightRowAtIndexPath:", bool>(delegate, id(this), numberOf(*path)).value_or(true))
        highlight(path);
}

void TableViewObject::touchesMoved(const id&, const id&) { }

void TableViewObject::touchesEnded(const id&, const id&)
{
    const Ref<TableViewObject> self(this); // the delegate may take it away
    const std::optional<RowPath> path = highlighted_;
    if (!path)
        return;
    // The row stays pressed until it is known whether it is selected, so that it doesn't blink.
    highlighted_.reset();
    ask<"tableView:didUnhighlightRowAtIndexPath:", void>(delegate, id(this), numberOf(*path));
    choose(*path);
    if (highlighted_ != path)
        send<"setHighlighted:animated:", void>(cellAt(*path), false, false);
}

void TableViewObject::touchesCancelled(const id&, const id&)
{
    highlight(std::nullopt);
}

/// As a finger does it: the delegate is asked and told.
void TableViewObject::choose(const RowPath& touched)
{
    const id self(this);
    std::optional<RowPath> path = touched;
    if (allowsMultipleSelection && selected_.contains(touched)) {
        deselectAsFinger(touched);
        return;
    }
    if (respondsTo<"tableView:willSelectRowAtIndexPath:">(delegate))
        path = pathIn(send<"tableView:willSelectRowAtIndexPath:">(delegate.get(), self, numberOf(touched)));
    if (!path)
        return;
    if (!allowsMultipleSelection) {
        const std::set<RowPath> former = selected_;
        for (const RowPath& other : former)
            if (other != *path && !deselectAsFinger(other))
                return;
    }
    selected_.insert(*path);
    send<"setSelected:animated:", void>(cellAt(*path), true, false);
    ask<"tableView:didSelectRowAtIndexPath:", void>(delegate, self, numberOf(*path));
}

/// False where the delegate keeps the row selected.
bool TableViewObject::deselectAsFinger(const RowPath& path)
{
    const id self(this);
    if (respondsTo<"tableView:willDeselectRowAtIndexPath:">(delegate)
        && !send<"tableView:willDeselectRowAtIndexPath:">(delegate.get(), self, numberOf(path)))
        return false;
    deselect(path, false);
    ask<"tableView:didDeselectRowAtIndexPath:", void>(delegate, self, numberOf(path));
    return true;
}

void TableViewObject::deselect(const RowPath& path, bool animated)
{
    if (selected_.erase(path) > 0)
        send<"setSelected:animated:", void>(cellAt(path), false, animated);
}

id TableViewObject::indexPathForSelectedRow() const
{
    return selected_.empty() ? nil : numberOf(*selected_.begin());
}

id TableViewObject::indexPathsForSelectedRows() const
{
    std::vector<id> paths;
    for (const RowPath& path : selected_)
        paths.push_back(numberOf(path));
    return paths.empty() ? nil : array(std::move(paths));
}

/// By the program: the delegate isn't told.
void TableViewObject::selectRow(const id& number, bool animated, NSInteger position)
{
    loadIfNeeded();
    const std::optional<RowPath> path = pathIn(number);
    const std::set<RowPath> former = selected_;
    if (!path || !allowsMultipleSelection)
        for (const RowPath& other : former)
            if (other != path)
                deselect(other, animated);
    if (!path)
        return;
    selected_.insert(*path);
    send<"setSelected:animated:", void>(cellAt(*path), true, animated);
    if (position != static_cast<NSInteger>(ScrollPosition::None))
        scrollToRow(number, position, animated);
}

void TableViewObject::deselectRow(const id& number, bool animated)
{
    if (const std::optional<RowPath> path = pathIn(number))
        deselect(*path, animated);
}

void TableViewObject::scrollToRow(const id& number, NSInteger position, bool animated)
{
    loadIfNeeded();
    const std::optional<RowPath> path = pathIn(number);
    if (!path)
        return;
    const CGRect row = frameOfRow(*path);
    if (position == static_cast<NSInteger>(ScrollPosition::None))
        return scrollRectToVisible(CGRectMake(bounds.origin.x, row.origin.y, 1, row.size.height), animated);
    const UIEdgeInsets insets = adjustedContentInset();
    const CGRect seen = UIEdgeInsetsInsetRect(bounds, insets);
    double y = row.origin.y;
    if (position == static_cast<NSInteger>(ScrollPosition::Middle))
        y -= (seen.size.height - row.size.height) / 2;
    else if (position == static_cast<NSInteger>(ScrollPosition::Bottom))
        y -= seen.size.height - row.size.height;
    else if (style_ == TableStyle::Plain)
        y -= layout_.rectOfHeader(path->section).size.height; // it lies over the first row in sight
    send<"setContentOffset:animated:", void>(id(this), restingOffset({ bounds.origin.x, y - insets.top }), animated);
}

void TableViewObject::scrollToSelectedRow(NSInteger position, bool animated)
{
    if (!selected_.empty())
        scrollToRow(indexPathForSelectedRow(), position, animated);
}

} // namespace platform
