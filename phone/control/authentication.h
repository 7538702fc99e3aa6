#pragma once

#include "phone/control/answers.h"

/// The prompt of this process. "authenticate" answers the one that is up ("success", a bool; "cancelled", a bool that
/// may be absent), and reports what that brought: as soon as something opens or is declined or the next prompt comes
/// up, and otherwise after a second.

namespace phone {

/// The prompt that is up, or null.
Json promptStatus();

/// Says for which application the prompt is up that the journal tells of, when it was the only one that was
/// being opened.
void nameApplicationOfPrompt(const std::vector<JournalEntry>& entries, const std::vector<std::string>& beingOpened);

} // namespace phone
