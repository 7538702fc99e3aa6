#pragma once

#include "core/hook_group.h"

namespace appledger {

/// The names and badges of the owner's choice on the system's applications. In SpringBoard.
extern const HookRows nameAndBadgeRows;

} // namespace appledger
