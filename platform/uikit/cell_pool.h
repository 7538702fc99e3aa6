#pragma once

#include "platform/runtime/message.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Cells that have gone out of sight, by their reuse identifiers, until they are needed for other rows.
class CellPool {
public:
    void put(std::string_view identifier, id cell) { cells_[std::string(identifier)].push_back(std::move(cell)); }

    /// The one that went last, and prepared for another row; nil when there is none.
    id take(std::string_view identifier)
    {
        const auto found = cells_.find(identifier);
        if (found == cells_.end() || found->second.empty())
            return nil;
        id cell = std::move(found->second.back());
        found->second.pop_back();
        ask<"prepareForReuse", void>(cell);
        return cell;
    }

    void clear() { cells_.clear(); }

private:
    std::map<std::string, std::vector<id>, std::less<>> cells_;
};

} // namespace platform
