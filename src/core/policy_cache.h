#pragma once

#include "core/string_set.h"
#include "platform/foundation/values.h"
#include "platform/runtime/reclamation.h"

#include <span>
#include <string_view>
#include <vector>

namespace appledger {

/// A list of bundle identifiers, in the order of whoever keeps it and valid as long as that lives.
class IdentifierList {
public:
    IdentifierList() = default;

    explicit IdentifierList(std::span<const std::string_view> identifiers, const StringSet* index = nullptr) noexcept
        : identifiers_(identifiers)
        , index_(index)
    {
    }

    bool contains(std::string_view identifier) const noexcept;
    bool contains(const HashedText& identifier) const noexcept;
    auto begin() const noexcept { return identifiers_.begin(); }
    auto end() const noexcept { return identifiers_.end(); }
    std::size_t size() const noexcept { return identifiers_.size(); }

private:
    std::span<const std::string_view> identifiers_;
    const StringSet* index_ = nullptr;
};

/// The strings of a preference value, which it keeps alive; none unless the value is an array. Items that
/// aren't strings are no identifiers.
class IdentifierArray {
public:
    explicit IdentifierArray(platform::id value);

    IdentifierList list() const noexcept { return IdentifierList(identifiers_); }
    const std::vector<std::string_view>& identifiers() const noexcept { return identifiers_; }
    const platform::id& value() const noexcept { return value_; }

private:
    platform::id value_;
    std::vector<std::string_view> identifiers_;
};

/// This process's copy of one preference value that is replaced whole. Reading is possible from every
/// thread at any time, takes no lock and shares no counter with other readers; assigning publishes the
/// new value in one step, and what it replaced is freed once no reader can hold it.
///
/// A cache that was never assigned, and one that holds nil or anything but an array, lists nothing.
class PolicyCache {
    struct Snapshot {
        explicit Snapshot(platform::id value);

        IdentifierArray array;
        StringSet index;
    };

public:
    /// What the cache holds at one moment, held in place as long as this lives. Keep it short; it belongs to
    /// the thread that took it.
    class Reading {
    public:
        explicit Reading(const platform::Published<Snapshot>& present) noexcept
            : snapshot_(present.load())
        {
        }

        /// In the order of the stored array.
        IdentifierList list() const noexcept
        {
            return snapshot_ ? IdentifierList(snapshot_->array.identifiers(), &snapshot_->index) : IdentifierList();
        }

        bool contains(std::string_view identifier) const noexcept
        {
            return snapshot_ && snapshot_->index.contains(identifier);
        }

    private:
        const platform::ReadSection section_;
        const Snapshot* const snapshot_;
    };

    constexpr PolicyCache() noexcept = default;

    void assign(const platform::id& value);
    Reading read() const noexcept { return Reading(present_); }
    bool contains(std::string_view identifier) const noexcept { return read().contains(identifier); }

    /// The value as it was assigned, or nil.
    platform::id value() const;

private:
    platform::Published<Snapshot> present_;
};

} // namespace appledger
