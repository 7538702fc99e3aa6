#pragma once

#include "platform/runtime/reclamation.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace appledger {

/// When each application was last launched, in seconds of CACurrentMediaTime(). Immutable.
class LaunchStamps {
public:
    LaunchStamps() = default;

    /// These stamps and one more, in place of the application's former one.
    LaunchStamps with(std::string_view identifier, double time) const;

    /// Empty for an application that wasn't launched. Allocates nothing.
    std::optional<double> of(std::string_view identifier) const noexcept;

    std::size_t size() const noexcept { return stamps_.size(); }

private:
    /// Looks a text up without making a string of it.
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const noexcept { return std::hash<std::string_view>()(text); }
    };

    std::unordered_map<std::string, double, Hash, std::equal_to<>> stamps_;
};

/// Of this process; null before the first launch, and nothing is ever removed.
extern platform::Published<LaunchStamps> gLastTransitionStamps;

/// Notes a launch. Any thread: of two launches at one time neither is lost.
void recordLaunch(std::string_view identifier, double time);

} // namespace appledger
