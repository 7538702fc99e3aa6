#pragma once

#include "phone/control/answers.h"

namespace phone {

/// Answers the verb "exit": the process of "application" ends. The answer, {"ok", "application", "front", "folders":
/// [{"folder", "before", "after"}], "journal"}, tells how many items its folders for caches held before and a moment
/// later: as soon as both are empty, and otherwise after a second. Refused when the application doesn't run.
void exitApplication(const Json& request, const Reply& reply);

} // namespace phone
