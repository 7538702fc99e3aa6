#pragma once

#include "cli/history/value_change.h"

#include <cstdint>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// What a verb has done to the policies, as the history keeps it, and what follows from all of it.

namespace cli {

using ChangeNumber = std::uint64_t; ///< from 1 on, in order

/// All that one verb changed at once.
struct Transaction {
    ChangeNumber number = 0;
    double time = 0; ///< seconds since 1970
    std::string verb {}; ///< as it was given: "policy allow com.example.notes"
    std::vector<ValueChange> changes {};
    std::optional<double> until {}; ///< when it takes itself back, in seconds since 1970
    /// Of lists and tables it also spoke of these items, without changing them: what was to take itself back there
    /// stays, or ends as late as this says.
    std::vector<ItemChange> confirmed {};
    std::optional<ChangeNumber> undoes {};
    std::optional<ChangeNumber> redoes {};
    std::vector<ChangeNumber> ends {}; ///< whose time was over
    /// The phone made the change itself: what it was begins here, and the change is what differs at the end.
    std::optional<nlohmann::json> watched {};

    nlohmann::json toJson() const;
    static std::optional<Transaction> fromJson(const nlohmann::json& object);
};

/// Something that takes itself back.
struct Timer {
    ChangeNumber number; ///< whose change it is
    double until;
    ItemChange item; ///< with what it was before
};

/// The transactions in their order, and what they come to.
class History {
public:
    void add(Transaction transaction);

    const std::vector<Transaction>& transactions() const noexcept { return transactions_; }
    const Transaction* find(ChangeNumber number) const;
    ChangeNumber nextNumber() const noexcept { return last_ + 1; }
    /// Those before have been forgotten.
    void countFrom(ChangeNumber last) noexcept { last_ = last; }

    /// What the next undo takes back, and the next redo does again.
    std::optional<ChangeNumber> undoable() const;
    std::optional<ChangeNumber> redoable() const;

    const std::vector<Timer>& timers() const noexcept { return timers_; }
    const Timer* timerOf(const ItemChange& item) const;
    /// When the first of them is over.
    std::optional<double> deadline() const;

private:
    void updateTimers(const Transaction& transaction);

    std::vector<Transaction> transactions_;
    std::vector<ChangeNumber> done_;
    std::vector<ChangeNumber> undone_;
    std::vector<Timer> timers_;
    ChangeNumber last_ = 0;
};

} // namespace cli
