#include "phone/springboard/icons/removal.h"

#include "phone/launchservices/installed_applications.h"
#include "phone/springboard/applications/application_process.h"
#include "phone/springboard/applications/applications.h"
#include "phone/springboard/icons/icon_list.h"
#include "phone/springboard/switcher/switcher.h"
#include "phone/system/journal.h"
#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <algorithm>

namespace phone {

using namespace platform;

namespace {

constexpr RemovalRoad roads[] {
    { "completion", "SBHIconManager uninstallIcon:animate:completion:" },
    { "animate", "SBHIconManager uninstallIcon:animate:" },
    { "plain", "SBHIconManager uninstallIcon:" },
};

} // namespace

std::span<const RemovalRoad> removalRoads() noexcept
{
    return roads;
}

RemovalOutcome requestRemoval(std::string_view name, const std::string& identifier)
{
    const auto road = std::ranges::find(roads, name, &RemovalRoad::name);
    if (road == std::end(roads))
        return { .error = "there is no road called " + std::string(name) };
    const id manager = iconManager();
    if (!manager)
        return { .error = "the icon manager doesn't exist on this version" };
    const id icon = send<"applicationIconForBundleIdentifier:">(iconModel(), string(identifier));
    if (!icon)
        return { .error = "no such application is installed" };

    RemovalOutcome outcome;
    outcome.report.isOffered = send<"isUninstallSupported", bool>(icon);
    journal(JournalEvent::Sent, road->method);
    if (name == "completion") {
        const auto called = std::make_shared<bool>(false);
        send<"uninstallIcon:animate:completion:", void>(manager, icon, true, block([called](bool) { *called = true; }));
        outcome.report.completion = *called;
    } else if (name == "animate") {
        send<"uninstallIcon:animate:", void>(manager, icon, true);
    } else {
        send<"uninstallIcon:", void>(manager, icon);
    }
    outcome.report.isRemoved = !applicationNamed(identifier);
    return outcome;
}

void forgetRemovedApplication(const id& application)
{
    const id identifier = send<"bundleIdentifier">(application);
    removeFromCards(application);
    ask<"_clearSection:", void>(askObject<"sharedServer">(id(classNamed<"BBServer">())), identifier);
    send<"removeApplicationWithBundleIdentifier:", void>(applicationController(), identifier);
    send<"reloadIcons", void>(iconModel());
}

bool removeApplicationOfIcon(const id& icon)
{
    const id application = askObject<"application">(icon);
    const auto identifier = asString(askObject<"bundleIdentifier">(application));
    if (!identifier || send<"isSystemApplication", bool>(send<"info">(application)))
        return false;
    endProcessOf(identifier->text());
    if (const std::string failure = removeInstalledApplication(identifier->text()); !failure.empty()) {
        journal(JournalEvent::Note, failure);
        return false;
    }
    forgetRemovedApplication(application);
    return true;
}

} // namespace phone
