#pragma once

#include "platform/runtime/reclamation.h"

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace appledger {

/// A table by bundle identifier that any thread reads and changes without a lock: each change replaces a part of it,
/// small enough to be copied for that with thousands of applications.
template <class T> class IdentifierTable {
public:
    /// Empty when nothing is known of the identifier.
    std::optional<T> find(std::string_view identifier) const
    {
        const platform::ReadSection section;
        const Part* const part = partOf(identifier).load();
        if (!part)
            return std::nullopt;
        const auto found = part->find(identifier);
        return found == part->end() ? std::nullopt : std::optional<T>(found->second);
    }

    void set(std::string_view identifier, const T& value)
    {
        change(identifier, [&](Part& part) { part.insert_or_assign(std::string(identifier), value); });
    }

    void remove(std::string_view identifier)
    {
        change(identifier, [&](Part& part) {
            if (const auto known = part.find(identifier); known != part.end())
                part.erase(known);
        });
    }

    void removeAll()
    {
        for (auto& part : parts_)
            part.assign(nullptr);
    }

private:
    using Part = std::map<std::string, T, std::less<>>;
    using PublishedPart = platform::Published<Part>;

    static constexpr std::size_t partCount = 256;

    static std::size_t indexOf(std::string_view identifier)
    {
        return std::hash<std::string_view>()(identifier) % partCount;
    }
    const PublishedPart& partOf(std::string_view identifier) const { return parts_[indexOf(identifier)]; }

    template <class Change> void change(std::string_view identifier, const Change& change)
    {
        PublishedPart& part = parts_[indexOf(identifier)];
        const platform::ReadSection section;
        for (;;) {
            const Part* const present = part.load();
            auto next = present ? std::make_unique<Part>(*present) : std::make_unique<Part>();
            change(*next);
            if (part.assignIf(present, next.get())) {
                (void)next.release(); // the table's now
                return;
            }
        }
    }

    std::array<PublishedPart, partCount> parts_ {};
};

} // namespace appledger
