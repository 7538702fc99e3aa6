#pragma once

#include <map>
#include <string>
#include <string_view>

/// What the owner has decided about applications, in a file for each kind of decision: bundle identifier → what it is
/// about → the decision's number. Changed in one operation among all processes. Any thread.

namespace phone {

/// Where decisions of one kind lie.
enum class DecisionKind { Access, Location };

using Decisions = std::map<std::string, long, std::less<>>;

/// By what they are about; none where nothing was decided, and where the file can't be read.
Decisions decisionsAbout(DecisionKind kind, std::string_view bundleIdentifier);

/// False when it can't be kept.
[[nodiscard]] bool decide(DecisionKind kind, std::string_view bundleIdentifier, std::string_view about, long decision);

/// Forgets one decision, or with an empty `about` all of the application. False when that can't be kept.
[[nodiscard]] bool forgetDecisions(DecisionKind kind, std::string_view bundleIdentifier, std::string_view about = {});

} // namespace phone
