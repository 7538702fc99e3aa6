#include "phone/springboard/icons/installations.h"

#include "phone/launchservices/installation.h"
#include "phone/springboard/applications/application_process.h"
#include "phone/springboard/applications/applications.h"
#include "phone/springboard/home/home_screen.h"
#include "phone/springboard/icons/icon_images.h"
#include "phone/springboard/icons/icon_list.h"
#include "phone/springboard/icons/removal.h"
#include "phone/springboard/switcher/switcher.h"
#include "phone/system/text.h"
#include "platform/darwin/notify.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

id iconOf(const std::string& bundleIdentifier)
{
    return send<"applicationIconForBundleIdentifier:">(iconModel(), string(bundleIdentifier));
}

void followInstallation(const id& former, const std::string& bundleIdentifier)
{
    if (former)
        endProcessOf(bundleIdentifier);
    send<"_loadApplicationWithBundleIdentifier:", void>(applicationController(), string(bundleIdentifier));
    if (!former)
        return send<"reloadIcons", void>(iconModel());
    const id icon = iconOf(bundleIdentifier);
    forgetImagesOfIcon(icon);
    refreshIcon(icon, IconPart::Image);
    refreshIcon(icon, IconPart::Accessories);
    ask<"_updateLabel", void>(iconViewOf(bundleIdentifier));
}

void follow(InstallationChange change, const std::string& bundleIdentifier)
{
    const id application = applicationNamed(bundleIdentifier);
    if (change == InstallationChange::Installed)
        return followInstallation(application, bundleIdentifier);
    if (!application)
        return;
    endProcessOf(bundleIdentifier);
    if (change == InstallationChange::Removed)
        return forgetRemovedApplication(application);
    send<"setPlaceholder:", void>(send<"info">(application), true);
    removeFromCards(application);
    refreshIcon(iconOf(bundleIdentifier), IconPart::Image);
}

/// What another process, or this one, has installed since SpringBoard looked last.
void followRegistrations()
{
    for (const InstalledApplication& installed : installedApplications()) {
        const id known = applicationNamed(installed.bundleIdentifier);
        if (!known || textOf(send<"bundlePath">(known)) != installed.bundlePath)
            followInstallation(known, installed.bundleIdentifier);
    }
}

} // namespace

void followInstallations()
{
    setInstallationObserver(follow);
    CFNotificationCenterAddObserver(
        followRegistrations, applicationRegistered, CFNotificationSuspensionBehavior::DeliverImmediately);
}

} // namespace phone
