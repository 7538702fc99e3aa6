#include "phone/supervisor/child_process.h"
#include "phone/supervisor/policy_deadline.h"
#include "phone/supervisor/supervisor.h"
#include "platform/dispatch/queue.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <csignal>
#include <unistd.h>

/// The supervisor's part in what ends by itself.

namespace phone {

using namespace platform;

namespace {

/// The owner's clock may be set meanwhile.
constexpr double longestWait = 60;
/// What can't be taken back now is tried again, not at once.
constexpr double pauseAfterFailure = 5;

double secondsNow()
{
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

} // namespace

void Supervisor::armDeadline()
{
    const auto deadline = options_.command.empty() ? std::nullopt : readPolicyDeadline(directory_);
    if (deadline == deadline_ || comingDown_)
        return;
    deadline_ = deadline;
    if (!deadline)
        return;
    const double wait = std::clamp(*deadline - secondsNow(), 0.0, longestWait);
    dispatch_after(
        std::chrono::nanoseconds(std::llround(wait * 1e9)), dispatch_get_main_queue(), [this, awaited = *deadline] {
            // Another has come in its place.
            if (comingDown_ || deadline_ != awaited)
                return;
            deadline_.reset();
            if (awaited > secondsNow())
                return armDeadline();
            settlePolicies();
            dispatch_after(std::chrono::nanoseconds(std::llround(pauseAfterFailure * 1e9)), dispatch_get_main_queue(),
                [this] { armDeadline(); });
        });
}

/// Its end is collected with that of the other children.
void Supervisor::settlePolicies() const
{
    const ChildProcess child = startChild({ options_.command, "--root", options_.root, "policy", "settle" });
    if (child.reportDescriptor >= 0)
        ::close(child.reportDescriptor);
}

} // namespace phone
