#include "platform/foundation/block.h"
#include "platform/foundation/index_path.h"
#include "platform/foundation/index_set.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/uikit/table_view.h"

/// Rows that come, go and are made anew, and the table's way from what was to what is.

namespace platform {

namespace {

constexpr double changeDuration = 0.3;

/// Where a row that goes is headed, and one that comes is from: beside or above its place.
CGRect asideOf(const CGRect& place, RowAnimation animation)
{
    switch (animation) {
    case RowAnimation::Left:
        return CGRectOffset(place, -place.size.width, 0);
    case RowAnimation::Right:
        return CGRectOffset(place, place.size.width, 0);
    case RowAnimation::Top:
    case RowAnimation::Middle:
    case RowAnimation::Automatic:
        return CGRectOffset(place, 0, -place.size.height);
    case RowAnimation::Bottom:
        return CGRectOffset(place, 0, place.size.height);
    case RowAnimation::Fade:
    case RowAnimation::None:
        return place;
    }
    return place;
}

} // namespace

void TableViewObject::withoutAnimation(const std::function<void()>& actions)
{
    send<"performWithoutAnimation:", void>(id(classNamed<"UIView">()), block([&actions] { actions(); }));
}

void TableViewObject::beginUpdates()
{
    loadIfNeeded();
    if (updateDepth_++ > 0)
        return;
    updates_ = std::make_unique<TableUpdates>(counts_);
    animation_ = RowAnimation::Automatic;
}

void TableViewObject::endUpdates()
{
    if (updateDepth_ == 0 || --updateDepth_ > 0)
        return;
    const std::unique_ptr<TableUpdates> updates = std::exchange(updates_, nullptr);
    const TableUpdates::Counts after = askCounts();
    updates->end(after);
    counts_ = after;
    carryOut(*updates);
}

template <class Say> void TableViewObject::update(NSInteger animation, Say say)
{
    beginUpdates();
    animation_ = static_cast<RowAnimation>(animation);
    say(*updates_);
    endUpdates();
}

void TableViewObject::sayRows(const id& paths, NSInteger animation, void (TableUpdates::*say)(const RowPath&))
{
    update(animation, [&](TableUpdates& updates) {
        for (const id& item : itemsOf(paths))
            if (const auto path = asIndexPath(item))
                (updates.*say)({ path->section, path->row });
    });
}

void TableViewObject::saySections(const id& indexes, NSInteger animation, void (TableUpdates::*say)(std::size_t))
{
    update(animation, [&](TableUpdates& updates) {
        for (const NSUInteger section : indexesOf(indexes))
            (updates.*say)(section);
    });
}

void TableViewObject::insertRows(const id& paths, NSInteger animation)
{
    sayRows(paths, animation, &TableUpdates::insertRow);
}

void TableViewObject::deleteRows(const id& paths, NSInteger animation)
{
    sayRows(paths, animation, &TableUpdates::removeRow);
}

void TableViewObject::reloadRows(const id& paths, NSInteger animation)
{
    sayRows(paths, animation, &TableUpdates::reloadRow);
}

void TableViewObject::moveRow(const id& from, const id& to)
{
    beginUpdates();
    deleteRows(array(std::vector<id> { from }), static_cast<NSInteger>(RowAnimation::Fade));
    insertRows(array(std::vector<id> { to }), static_cast<NSInteger>(RowAnimation::Fade));
    endUpdates();
}

void TableViewObject::insertSections(const id& indexes, NSInteger animation)
{
    saySections(indexes, animation, &TableUpdates::insertSection);
}

void TableViewObject::deleteSections(const id& indexes, NSInteger animation)
{
    saySections(indexes, animation, &TableUpdates::removeSection);
}

void TableViewObject::reloadSections(const id& indexes, NSInteger animation)
{
    saySections(indexes, animation, &TableUpdates::reloadSection);
}

void TableViewObject::performBatchUpdates(const id& updates, const id& completion)
{
    beginUpdates();
    callBlock(updates);
    completions_.push_back(completion);
    endUpdates();
}

void TableViewObject::carryOut(const TableUpdates& updates)
{
    const bool animates = window() && animation_ != RowAnimation::None;
    std::vector<std::pair<RowPath, CellRef>> gone;
    std::map<RowPath, CellRef> kept;
    for (const auto& [path, cell] : cells_) {
        const std::optional<RowPath> now = updates.newPathOf(path);
        if (now && !updates.isReloaded(path))
            kept.emplace(*now, cell);
        else
            gone.emplace_back(path, cell);
    }
    cells_ = std::move(kept);
    std::set<RowPath> selected;
    for (const RowPath& path : selected_)
        if (const std::optional<RowPath> now = updates.newPathOf(path); now && !updates.isReloaded(path))
            selected.insert(*now);
    selected_ = std::move(selected);
    if (highlighted_)
        highlighted_ = updates.newPathOf(*highlighted_);
    SectionViews keptViews;
    for (const auto& [place, view] : sectionViews_) {
        const auto [section, part] = place;
        const std::optional<std::size_t> now = updates.newSectionOf(section);
        if (now && !updates.isReloadedSection(section))
            keptViews.emplace(std::pair { *now, part }, view);
        else
            dismissSectionView(part, section, view);
    }
    sectionViews_ = std::move(keptViews);

    const auto completions = std::exchange(completions_, {});
    const auto finish = [self = Ref<TableViewObject>(this), completions] {
        for (const id& completion : completions)
            callBlock(completion, true);
    };
    if (!animates) {
        for (const auto& [path, cell] : gone)
            dismiss(path, cell);
        measure();
        for (const auto& [path, cell] : cells_)
            configure(*cell, path);
        showRows();
        showSectionViews();
        return finish();
    }
    const auto change = [this, &updates, &gone] {
        changing_ = &updates;
        measure();
        for (const auto& [path, cell] : gone) {
            leave(path, cell);
            cell->setAlpha(0);
            place(*cell, asideOf(cell->frame(), animation_));
        }
        for (const auto& [path, cell] : cells_)
            configure(*cell, path);
        showRows();
        showSectionViews();
        changing_ = nullptr;
    };
    send<"animateWithDuration:animations:completion:", void>(id(classNamed<"UIView">()), changeDuration, block(change),
        block([self = Ref<TableViewObject>(this), finish](bool) {
            self->letGo();
            finish();
        }));
}

/// The row is no longer the table's, and stays in sight until the update has come to its end.
void TableViewObject::leave(const RowPath& path, const CellRef& cell)
{
    leaving_.emplace_back(path, cell);
    insertSubview(cell, 0);
}

void TableViewObject::letGo()
{
    const auto gone = std::exchange(leaving_, {});
    for (const auto& [path, cell] : gone) {
        cell->setAlpha(1);
        dismiss(path, cell);
    }
}

/// A row that an update brings in: from aside, and faint at first.
void TableViewObject::enter(TableCellObject& cell, const RowPath& path)
{
    const CGRect frame = frameOfRow(path);
    const bool isNew = changing_->isNew(path);
    withoutAnimation([&] {
        place(cell, isNew ? asideOf(frame, animation_) : frame);
        cell.setAlpha(0);
    });
    place(cell, frame);
    cell.setAlpha(1);
}

} // namespace platform
