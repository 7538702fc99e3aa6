#include "phone/frontboard/open_request.h"

#include "platform/dispatch/queue.h"

#include <future>
#include <memory>
#include <unistd.h>
#include <utility>

namespace phone {

using namespace platform;

namespace {

std::function<bool(const OpenRequest&)>& handler()
{
    static auto* const present = new std::function<bool(const OpenRequest&)>;
    return *present;
}

bool openOnMainThread(const OpenRequest& request)
{
    return handler() && handler()(request);
}

} // namespace

bool openApplication(const OpenRequest& request)
{
    if (::gettid() == ::getpid())
        return openOnMainThread(request);
    const auto opened = std::make_shared<std::promise<bool>>();
    dispatch_async(dispatch_get_main_queue(), [request, opened] { opened->set_value(openOnMainThread(request)); });
    return opened->get_future().get();
}

void setOpenApplicationHandler(std::function<bool(const OpenRequest&)> newHandler)
{
    handler() = std::move(newHandler);
}

} // namespace phone
