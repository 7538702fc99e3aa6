#pragma once

#include "platform/runtime/object.h"

#include <optional>
#include <string_view>

namespace appledger {

enum class ListChange { Add, Remove, Toggle };

/// A list after a change, and whether the identifier is on it now.
struct ChangedList {
    platform::id list;
    bool isListed = false;
};

/// Nil counts as a list of nothing; empty for any other value that isn't a list. The order stays, a new item is the
/// last, and items that are no identifiers are left alone.
std::optional<ChangedList> changedList(const platform::id& list, ListChange change, std::string_view identifier);

} // namespace appledger
