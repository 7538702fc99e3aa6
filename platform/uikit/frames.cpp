#include "platform/uikit/frames.h"

#include "platform/dispatch/queue.h"

namespace platform {

void eachFrame(std::function<bool()> step)
{
    dispatch_after(frameDuration, dispatch_get_main_queue(), [step = std::move(step)]() mutable {
        if (step())
            eachFrame(std::move(step));
    });
}

} // namespace platform
