#pragma once

#include "core/preference_domain.h"
#include "platform/runtime/object.h"

#include <optional>
#include <string>
#include <string_view>

namespace cli {

/// The value that a text means for a key of that type; empty when it means none.
///
/// Boolean: true, false, yes, no, on, off, 1, 0. Integer: decimal digits, with a sign or without. String: the text
/// itself. Lists: a JSON array of texts, or texts with commas between them. Tables: a JSON object.
std::optional<platform::id> parsePolicyValue(appledger::PreferenceType type, const std::string& text);

/// What to write for such a value, for people: "true or false".
std::string_view expectedValue(appledger::PreferenceType type);

} // namespace cli
