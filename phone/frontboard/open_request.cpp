#include "phone/frontboard/open_request.h"

#include <utility>

namespace phone {

namespace {

std::function<bool(const OpenRequest&)>& handler()
{
    static auto* const present = new std::function<bool(const OpenRequest&)>;
    return *present;
}

} // namespace

bool openApplication(const OpenRequest& request)
{
    return handler() && handler()(request);
}

void setOpenApplicationHandler(std::function<bool(const OpenRequest&)> newHandler)
{
    handler() = std::move(newHandler);
}

} // namespace phone
