#include "phone/process/process_definition.h"

#include "phone/appstoredaemon/classes.h"
#include "phone/celestial/classes.h"
#include "phone/control/requests.h"
#include "phone/frontboard/classes.h"
#include "phone/launchservices/classes.h"
#include "phone/localauthentication/classes.h"
#include "phone/search/classes.h"
#include "phone/springboard/classes.h"
#include "phone/springboard/start.h"
#include "phone/uikit/classes.h"
#include "phone/usernotifications/classes.h"
#include "platform/foundation/classes.h"

#include <algorithm>
#include <array>

namespace phone {

using namespace platform;

namespace {

using Framework = ClassList (*)() noexcept;

constexpr Framework springBoardFrameworks[] { foundationClasses, uiKitClasses, springBoardClasses, frontBoardClasses,
    launchServicesClasses, localAuthenticationClasses, appStoreDaemonClasses, userNotificationsClasses,
    celestialClasses };
constexpr Framework spotlightFrameworks[] { foundationClasses, uiKitClasses, frontBoardClasses, launchServicesClasses,
    localAuthenticationClasses, searchUIClasses };
constexpr Framework appStoreFrameworks[] { foundationClasses, uiKitClasses, frontBoardClasses, launchServicesClasses,
    appStoreDaemonClasses };
constexpr Framework storeDaemonFrameworks[] { foundationClasses, appStoreDaemonClasses };
constexpr Framework applicationFrameworks[] { foundationClasses, uiKitClasses, launchServicesClasses };

} // namespace

std::span<const ProcessDefinition> processDefinitions()
{
    static const auto* const definitions = new std::array {
        ProcessDefinition {
            "SpringBoard", "com.apple.springboard", springBoardFrameworks, startSpringBoard, handleSpringBoardRequest },
        ProcessDefinition {
            "Spotlight", "com.apple.Spotlight", spotlightFrameworks, openThroughSpringBoard, handleSpotlightRequest },
        ProcessDefinition {
            "AppStore", "com.apple.AppStore", appStoreFrameworks, openThroughSpringBoard, handleCommonRequest },
        ProcessDefinition { "appstored", "com.apple.appstored", storeDaemonFrameworks, [] {}, handleCommonRequest },
        ProcessDefinition {
            "itunesstored", "com.apple.itunesstored", storeDaemonFrameworks, [] {}, handleCommonRequest },
    };
    return *definitions;
}

const ProcessDefinition* processDefinition(std::string_view name)
{
    const auto definitions = processDefinitions();
    const auto found = std::ranges::find(definitions, name, &ProcessDefinition::name);
    return found == definitions.end() ? nullptr : &*found;
}

std::vector<const ClassDefinition*> classesOfProcess(std::string_view name, std::string_view bundleIdentifier)
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
    std::ranges::sort(classes, {}, [](const ClassDefinition* definition) { return definition->name; });
    return classes;
}

void registerClassesOfProcess(std::string_view name, std::string_view bundleIdentifier, const SystemVersion& version,
    std::span<const std::string> absent)
{
    for (const ClassDefinition* definition : classesOfProcess(name, bundleIdentifier))
        if (std::ranges::find(absent, definition->name) == absent.end())
            registerClass(*definition, version.major);
}

} // namespace phone
