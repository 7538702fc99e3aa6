#pragma once

#include "phone/control/answers.h"

/// What the command is told about the prompt of this process, and how it answers it.

namespace phone {

/// The prompt that is up, or null.
Json promptStatus();

/// Says for which application the prompt is up that the journal tells of, when it was the only one that was
/// being opened.
void nameApplicationOfPrompt(const std::vector<JournalEntry>& entries, const std::vector<std::string>& beingOpened);

/// Answers the prompt that is up (request: "success", a bool; "cancelled", a bool that may be absent), and
/// reports what that brought: as soon as something opens or is declined or the next prompt comes up, and
/// otherwise after a second.
void authenticate(const Json& request, const Reply& reply);

} // namespace phone
