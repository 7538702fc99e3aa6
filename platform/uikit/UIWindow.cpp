#include "platform/dispatch/queue.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/uikit/application.h"
#include "platform/uikit/layout.h"
#include "platform/uikit/screen_picture.h"
#include "platform/uikit/window.h"

namespace platform {

namespace {

std::vector<WindowObject*>& windowList()
{
    static auto* const windows = new std::vector<WindowObject*>;
    return *windows;
}

bool passScheduled = false;
bool passRunning = false;

} // namespace

WindowObject::WindowObject()
{
    hidden = true;
    windowList().push_back(this);
}

WindowObject::~WindowObject()
{
    std::erase(windowList(), this);
    noteDamage();
}

std::vector<Ref<WindowObject>> allWindows()
{
    std::vector<Ref<WindowObject>> windows(windowList().begin(), windowList().end());
    std::ranges::stable_sort(windows, {}, [](const Ref<WindowObject>& window) { return window->windowLevel; });
    return windows;
}

void layoutAllWindows()
{
    passScheduled = false;
    passRunning = true;
    for (const Ref<WindowObject>& window : allWindows())
        window->layoutTree();
    passRunning = false;
}

void scheduleLayoutPass()
{
    if (std::exchange(passScheduled, true))
        return;
    const auto pass = [] {
        if (passScheduled)
            layoutAllWindows();
    };
    constexpr std::chrono::nanoseconds frame = std::chrono::microseconds { 16'667 };
    if (passRunning)
        dispatch_after(frame, dispatch_get_main_queue(), pass);
    else
        dispatch_async(dispatch_get_main_queue(), pass);
}

} // namespace platform
