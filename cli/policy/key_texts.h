#pragma once

#include "core/preference_domain.h"

#include <string>
#include <string_view>
#include <vector>

/// What people want to know of a key beside its type.

namespace cli {

/// What it does, in a sentence without its end; "" for a key that nobody has described.
std::string_view keyText(const appledger::PreferenceKey& key);

/// A state that the phone keeps there for itself: it belongs to no set of policies.
bool isStateOfThePhone(std::string_view key);

/// The processes of a phone that read it, by what the library does at their load and at each use.
std::vector<std::string> readersOf(const appledger::PreferenceKey& key);

} // namespace cli
