#pragma once

#include "core/preference_domain.h"
#include "platform/runtime/object.h"

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

/// What may stand under a key, and as what it is written.

namespace cli {

/// The value that a text means for a key of that type; empty when it means none.
///
/// Boolean: true, false, yes, no, on, off, 1, 0. Integer: decimal digits, with a sign or without. String: the text
/// itself. Lists: a JSON array of texts, or texts with commas between them. Tables: a JSON object.
std::optional<platform::id> parsePolicyValue(appledger::PreferenceType type, const std::string& text);

/// What to write for such a value, for people: "true or false".
std::string_view expectedValue(appledger::PreferenceType type);

/// The same for what that key may take of it: "filza or fila".
std::string_view allowedValues(const appledger::PreferenceKey& key);

/// What the key takes, for a value (as jsonFromValue gives it) that it doesn't take; empty for one that it does.
std::optional<std::string> valueProblem(const appledger::PreferenceKey& key, const nlohmann::json& value);

/// A time in seconds: "90s", "5m", "2h", "1d", or a number of seconds alone. Empty for anything else, for nothing and
/// for more than a year.
std::optional<double> parseDuration(std::string_view text);

} // namespace cli
