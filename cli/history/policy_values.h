#pragma once

#include "cli/history/value_change.h"
#include "platform/foundation/property_list_file.h"

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

/// The policies as the files of the open device hold them: the domain, and the two files beside it.

namespace cli {

class PolicyValues {
public:
    PolicyValues() = default;

    /// As they stand now. What can't be read counts as absent, and problem() says so.
    static PolicyValues ofDevice();

    /// Null for an absent one.
    nlohmann::json value(const ValueName& name) const;
    /// Null takes it away.
    void set(const ValueName& name, nlohmann::json value);

    /// Why something can't be read, for people; "" when all can.
    const std::string& problem() const noexcept { return problem_; }

    const nlohmann::json& domain() const noexcept { return domain_; } ///< an object
    const nlohmann::json& mute() const noexcept { return mute_; } ///< an array, or null
    const nlohmann::json& brightness() const noexcept { return brightness_; } ///< an object, or null

private:
    nlohmann::json domain_ = nlohmann::json::object();
    nlohmann::json mute_;
    nlohmann::json brightness_;
    std::string problem_;
};

/// What came of one change.
struct WrittenChange {
    platform::WriteOutcome outcome;
    nlohmann::json before; ///< as the value was, and as it is now
    nlohmann::json after;
};

/// Carries a change out in one operation among all processes, from what the value is at that moment. Posts nothing.
WrittenChange writeChange(const ValueChange& change, ValueChange::Direction direction, ValueChange::Clash clash);

/// The Darwin name that tells of a change of that value; "" when none does.
std::string_view notificationOf(const ValueName& name);

} // namespace cli
