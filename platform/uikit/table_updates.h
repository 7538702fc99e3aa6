#pragma once

#include "platform/uikit/row_layout.h"

#include <map>
#include <set>

/// What becomes of a list's sections and rows in one update. Values alone.

namespace platform {

/// Where the entries of a list are after some have been taken out and others put in.
class IndexMap {
public:
    using Indices = std::set<std::size_t>;

    IndexMap() = default;
    /// `removed` are indices before, `inserted` indices after; nothing is asked of either.
    IndexMap(std::size_t count, Indices removed, Indices inserted);

    /// Whether all that is said fits the list before and the one after.
    bool isSound() const noexcept;
    std::size_t countAfter() const noexcept { return count_ + inserted_.size() - removed_.size(); }
    /// None for what was removed.
    std::optional<std::size_t> newIndexOf(std::size_t old) const;
    bool isNew(std::size_t index) const { return inserted_.contains(index); }

private:
    std::size_t count_ = 0;
    Indices removed_;
    Indices inserted_;
};

/// What was said between the beginning and the end of an update. Removals and reloads mean the indices before it,
/// insertions those after it, whatever the order in which they are said.
class TableUpdates {
public:
    using Counts = std::vector<std::size_t>; ///< of the rows, by section

    /// What the list had before.
    explicit TableUpdates(Counts before)
        : before_(std::move(before))
    {
    }

    void removeSection(std::size_t section) { removedSections_.insert(section); }
    void insertSection(std::size_t section) { insertedSections_.insert(section); }
    void reloadSection(std::size_t section) { reloadedSections_.insert(section); }
    void removeRow(const RowPath& path) { removedRows_[path.section].insert(path.row); }
    void insertRow(const RowPath& path) { insertedRows_[path.section].insert(path.row); }
    void reloadRow(const RowPath& path) { reloadedRows_.insert(path); }

    /// Takes what the list has now. Raises NSInternalInconsistencyException, with both numbers, where that isn't what
    /// was said. Once, before the questions below.
    void end(const Counts& after);

    /// None for a row that was removed, by itself or with its section.
    std::optional<RowPath> newPathOf(const RowPath& old) const;
    std::optional<std::size_t> newSectionOf(std::size_t old) const { return sections_.newIndexOf(old); }
    bool isReloadedSection(std::size_t old) const { return reloadedSections_.contains(old); }
    /// Whether the row wasn't there before.
    bool isNew(const RowPath& path) const;
    /// Whether the row, by its path before, is there with something else in it.
    bool isReloaded(const RowPath& old) const;

private:
    Counts before_;
    IndexMap::Indices removedSections_;
    IndexMap::Indices insertedSections_;
    IndexMap::Indices reloadedSections_;
    std::map<std::size_t, IndexMap::Indices> removedRows_;
    std::map<std::size_t, IndexMap::Indices> insertedRows_;
    std::set<RowPath> reloadedRows_;
    IndexMap sections_;
    std::map<std::size_t, IndexMap> rows_; ///< by the section's index before; those that stay
    std::map<std::size_t, std::size_t> oldSections_; ///< by the index after
};

} // namespace platform
