#include "phone/search/spotlight.h"

#include "phone/system/journal.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <algorithm>

namespace phone {

using namespace platform;

namespace {

id openService()
{
    return send<"sharedInstance">(id(classNamed<"FBSOpenApplicationService">()));
}

void throughService(const std::string& identifier)
{
    send<"openApplication:withOptions:completion:", void>(openService(), string(identifier), nil, nil);
}

void throughServiceWithPort(const std::string& identifier)
{
    send<"openApplication:withOptions:clientPort:completion:", void>(openService(), string(identifier), nil, 0U, nil);
}

void throughWorkspace(const std::string& identifier)
{
    const id workspace = send<"defaultWorkspace">(id(classNamed<"LSApplicationWorkspace">()));
    send<"openApplicationWithBundleID:", bool>(workspace, string(identifier));
}

constexpr SearchRoad roads[] {
    { "spotlight", "FBSOpenApplicationService openApplication:withOptions:completion:", "a search result",
        throughService },
    { "spotlight-port", "FBSOpenApplicationService openApplication:withOptions:clientPort:completion:",
        "a search result, with Spotlight's port", throughServiceWithPort },
    { "spotlight-workspace", "LSApplicationWorkspace openApplicationWithBundleID:",
        "a search result, through the application workspace", throughWorkspace },
};

} // namespace

std::span<const SearchRoad> searchRoads() noexcept
{
    return roads;
}

bool openSearchResult(std::string_view name, const std::string& identifier)
{
    const auto road = std::ranges::find(roads, name, &SearchRoad::name);
    if (road == std::end(roads))
        return false;
    journal(JournalEvent::Sent, road->method);
    road->enter(identifier);
    return true;
}

} // namespace phone
