#pragma once

namespace phone {

/// The system's own code at SpringBoard's start.
void startSpringBoard();

/// The same for a process that has SpringBoard open applications for it, over the bus.
void openThroughSpringBoard();

} // namespace phone
