#include "platform/uikit/table_updates.h"

#include "platform/runtime/exception.h"

#include <string>
#include <utility>

namespace platform {

IndexMap::IndexMap(std::size_t count, Indices removed, Indices inserted)
    : count_(count)
    , removed_(std::move(removed))
    , inserted_(std::move(inserted))
{
}

bool IndexMap::isSound() const noexcept
{
    return (removed_.empty() || *removed_.rbegin() < count_)
        && (inserted_.empty() || *inserted_.rbegin() < countAfter());
}

std::optional<std::size_t> IndexMap::newIndexOf(std::size_t old) const
{
    if (removed_.contains(old))
        return std::nullopt;
    std::size_t index = old - static_cast<std::size_t>(std::distance(removed_.begin(), removed_.lower_bound(old)));
    for (const std::size_t inserted : inserted_) {
        if (inserted > index)
            break;
        ++index;
    }
    return index;
}

namespace {

[[noreturn]] void raise(const std::string& what, std::size_t after, std::size_t expected)
{
    throw NSException("NSInternalInconsistencyException",
        "invalid update: " + what + " there are " + std::to_string(after) + " after it, and what was said makes "
            + std::to_string(expected));
}

} // namespace

void TableUpdates::end(const Counts& after)
{
    sections_ = IndexMap(before_.size(), removedSections_, insertedSections_);
    if (!sections_.isSound() || sections_.countAfter() != after.size())
        raise("of sections", after.size(), sections_.countAfter());
    const auto saidOf = [](const auto& rows, std::size_t section) {
        const auto found = rows.find(section);
        return found == rows.end() ? IndexMap::Indices() : found->second;
    };
    for (std::size_t old = 0; old < before_.size(); ++old) {
        const auto section = sections_.newIndexOf(old);
        if (!section)
            continue;
        oldSections_[*section] = old;
        // All the rows of a section that is reloaded are asked for anew, and may be as many as they like.
        if (reloadedSections_.contains(old))
            continue;
        const IndexMap rows(before_[old], saidOf(removedRows_, old), saidOf(insertedRows_, *section));
        if (!rows.isSound() || rows.countAfter() != after[*section])
            raise("of rows in section " + std::to_string(*section), after[*section], rows.countAfter());
        rows_.emplace(old, rows);
    }
}

std::optional<RowPath> TableUpdates::newPathOf(const RowPath& old) const
{
    const auto section = sections_.newIndexOf(old.section);
    const auto rows = rows_.find(old.section);
    if (!section || rows == rows_.end())
        return std::nullopt;
    const auto row = rows->second.newIndexOf(old.row);
    return row ? std::optional(RowPath { *section, *row }) : std::nullopt;
}

bool TableUpdates::isNew(const RowPath& path) const
{
    const auto old = oldSections_.find(path.section);
    const auto rows = old == oldSections_.end() ? rows_.end() : rows_.find(old->second);
    return rows == rows_.end() || rows->second.isNew(path.row);
}

bool TableUpdates::isReloaded(const RowPath& old) const
{
    return reloadedRows_.contains(old) && newPathOf(old);
}

} // namespace platform
