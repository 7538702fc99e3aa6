#include "phone/device/decisions.h"
#include "phone/system/journal.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

constexpr std::string_view authorization = "Authorization";
constexpr int undecided = 0;

/// 0 forgets what was decided.
void setAuthorizationStatus(const id&, SEL, int status, const id& identifier)
{
    const auto text = asString(identifier);
    if (!text)
        return;
    journal(JournalEvent::Note, "location of " + text->text() + " set to " + std::to_string(status));
    const bool isKept = status == undecided ? forgetDecisions(DecisionKind::Location, *text)
                                            : decide(DecisionKind::Location, *text, authorization, status);
    if (!isKept)
        journal(JournalEvent::Note, "that can't be kept");
}

int authorizationStatus(const id&, SEL, const id& identifier)
{
    const auto text = asString(identifier);
    const Decisions decisions = text ? decisionsAbout(DecisionKind::Location, *text) : Decisions {};
    const auto found = decisions.find(authorization);
    return found == decisions.end() ? undecided : static_cast<int>(found->second);
}

constexpr MethodDefinition methods[] {
    classMethod<"authorizationStatusForBundleIdentifier:", &authorizationStatus>(),
    classMethod<"setAuthorizationStatusByType:forBundleIdentifier:", &setAuthorizationStatus>(),
};

} // namespace

extern const ClassDefinition CLLocationManager_class { .name = "CLLocationManager", .methods = methods };

} // namespace phone
