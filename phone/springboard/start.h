#pragma once

namespace phone {

/// The system's own code at SpringBoard's start.
void startSpringBoard();

} // namespace phone
