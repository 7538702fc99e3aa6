#pragma once

#include "phone/control/request_rows.h"
#include "platform/darwin/bus.h"

#include <cstddef>
#include <span>

namespace phone {

/// As many requests wait in a process at most; more are refused at once.
constexpr std::size_t mostWaitingRequests = 256;

/// Answers the requests of a process by those tables, one at a time and in the order of their arrival, each with a
/// journal of its own. While one is served, the main run loop, which its answer may run, serves everything else. A
/// malformed request and an unknown verb get an error. "ping" is answered at once, by every process. Main thread.
platform::BusHandler requestHandler(std::span<const RequestRows* const> tables);

} // namespace phone
