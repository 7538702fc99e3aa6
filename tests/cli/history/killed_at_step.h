#pragma once

#include <functional>

namespace cli {

/// Runs the work in a process of its own that ends by SIGKILL at that step, counted from 1; a step is a moment before
/// or behind a call that changes a file. True when it was killed there, false when the work ended before.
bool runKilledAtStep(int step, const std::function<void()>& work);

} // namespace cli
