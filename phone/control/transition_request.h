#pragma once

#include "phone/control/answers.h"

namespace phone {

/// Answers the verb "transition": one application opens another. The request names the transition under
/// "transition" as {"eventLabel", "sourceEntity": {"bundleIdentifier", "action"}, "requester": {"name",
/// "bundleIdentifier"}, "previousScene", "destination"}; what is null or absent the transition doesn't have,
/// but for the scene, which is then that of what is in front.
///
/// The answer is a launch report with "outcome" ("pass", "decline", "background"; null when the transition
/// was stopped before its validation), "reason" and "inBackground".
Json openFromAnotherApplication(const Json& request);

} // namespace phone
