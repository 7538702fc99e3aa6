#include "phone/process/process_definition.h"

#include "phone/appstoredaemon/classes.h"
#include "phone/appstoredaemon/delivery.h"
#include "phone/appstoredaemon/orders.h"
#include "phone/backboard/brightness.h"
#include "phone/bulletinboard/classes.h"
#include "phone/celestial/classes.h"
#include "phone/control/launch.h"
#include "phone/corelocation/classes.h"
#include "phone/frontboard/classes.h"
#include "phone/frontboard/open_request.h"
#include "phone/iconservices/classes.h"
#include "phone/installcoordination/classes.h"
#include "phone/launchservices/classes.h"
#include "phone/localauthentication/classes.h"
#include "phone/search/classes.h"
#include "phone/springboard/classes.h"
#include "phone/springboard/start.h"
#include "phone/storekitui/classes.h"
#include "phone/system/journal.h"
#include "phone/uikit/classes.h"
#include "phone/usernotifications/classes.h"
#include "platform/foundation/classes.h"
#include "platform/screen/backlight.h"
#include "platform/screen/feedback.h"

#include <algorithm>
#include <array>

namespace phone {

using namespace platform;

namespace {

using Framework = ClassList (*)() noexcept;

constexpr Framework springBoardFrameworks[] { foundationClasses, uiKitClasses, springBoardClasses, frontBoardClasses,
    launchServicesClasses, localAuthenticationClasses, appStoreDaemonClasses, userNotificationsClasses,
    bulletinBoardClasses, celestialClasses, coreLocationClasses, iconServicesClasses, installCoordinationClasses };
constexpr Framework spotlightFrameworks[] { foundationClasses, uiKitClasses, frontBoardClasses, launchServicesClasses,
    iconServicesClasses, localAuthenticationClasses, searchUIClasses };
constexpr Framework appStoreFrameworks[] { foundationClasses, uiKitClasses, frontBoardClasses, launchServicesClasses,
    appStoreDaemonClasses, iconServicesClasses, storeKitUIClasses };
constexpr Framework appstoredFrameworks[] { foundationClasses, appStoreDaemonClasses };
constexpr Framework itunesstoredFrameworks[] { foundationClasses, appStoreDaemonClasses, storeKitUIClasses };
constexpr Framework applicationFrameworks[] { foundationClasses, uiKitClasses, launchServicesClasses,
    iconServicesClasses };

/// The system's own code in a process that has SpringBoard open applications for it.
void openThroughSpringBoard()
{
    setOpenApplicationHandler(forwardOpenRequest);
}

/// And in one that buys.
void deliverPurchases()
{
    setStoreDelivery(deliverFromStore);
}

void startAppStore()
{
    openThroughSpringBoard();
    deliverPurchases();
}

void startSpringBoardAndStore()
{
    deliverPurchases();
    startSpringBoard();
}

constexpr const RequestRows* springBoardRequestTables[] { &springBoardStatusRequests, &alertRequests,
    &authenticationRequests, &customIconRequests, &deviceRequests, &exitRequests, &fingerRequests, &iconRequests,
    &launchRequests, &iconRenderingRequests, &nameAndBadgeRequests, &notificationRequests, &operationRequests,
    &permissionRequests, &recordRequests, &screenRequests, &screenPictureRequests, &storeRequests, &switcherRequests,
    &transitionRequests };
constexpr const RequestRows* searchRequestTables[] { &searchStatusRequests, &authenticationRequests,
    &iconRenderingRequests, &preferenceRequests, &screenPictureRequests, &searchRequests };
constexpr const RequestRows* storeRequestTables[] { &statusRequests, &iconRenderingRequests, &storeRequests };

} // namespace

std::span<const ProcessDefinition> processDefinitions()
{
    static const auto* const definitions = new std::array {
        ProcessDefinition { "SpringBoard", "com.apple.springboard", springBoardFrameworks, startSpringBoardAndStore,
            springBoardRequestTables },
        ProcessDefinition {
            "Spotlight", "com.apple.Spotlight", spotlightFrameworks, openThroughSpringBoard, searchRequestTables },
        ProcessDefinition { "AppStore", "com.apple.AppStore", appStoreFrameworks, startAppStore, storeRequestTables },
        ProcessDefinition {
            "appstored", "com.apple.appstored", appstoredFrameworks, deliverPurchases, storeRequestTables },
        ProcessDefinition {
            "itunesstored", "com.apple.itunesstored", itunesstoredFrameworks, deliverPurchases, storeRequestTables },
    };
    return *definitions;
}

const ProcessDefinition* processDefinition(std::string_view name)
{
    const auto definitions = processDefinitions();
    const auto found = std::ranges::find(definitions, name, &ProcessDefinition::name);
    return found == definitions.end() ? nullptr : &*found;
}

namespace {

/// Framework by framework, each after those that its classes build on.
std::vector<const ClassDefinition*> classesByFramework(std::string_view name, std::string_view bundleIdentifier)
{
    std::span<const Framework> frameworks = applicationFrameworks;
    for (const ProcessDefinition& definition : processDefinitions())
        if (definition.name == name || definition.bundleIdentifier == bundleIdentifier) {
            frameworks = definition.frameworks;
            break;
        }
    std::vector<const ClassDefinition*> classes;
    for (const Framework framework : frameworks)
        std::ranges::copy(framework(), std::back_inserter(classes));
    return classes;
}

} // namespace

std::vector<const ClassDefinition*> classesOfProcess(std::string_view name, std::string_view bundleIdentifier)
{
    std::vector<const ClassDefinition*> classes = classesByFramework(name, bundleIdentifier);
    std::ranges::sort(classes, {}, [](const ClassDefinition* definition) { return definition->name; });
    return classes;
}

void registerClassesOfProcess(std::string_view name, std::string_view bundleIdentifier, const SystemVersion& version,
    std::span<const std::string> absent)
{
    setFeedbackHandler([](std::string_view kind) { journal(JournalEvent::Haptic, kind); });
    setBacklight({ brightness, [](double level) { setBrightness("UIScreen", level); } });
    for (const ClassDefinition* definition : classesByFramework(name, bundleIdentifier))
        if (std::ranges::find(absent, definition->name) == absent.end())
            registerClass(*definition, version.major);
}

} // namespace phone
