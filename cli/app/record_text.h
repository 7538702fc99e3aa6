#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace cli {

/// A record's fields for people, one on a line, in the order in which a reader looks for them.
std::string describeRecord(const nlohmann::json& record);

} // namespace cli
