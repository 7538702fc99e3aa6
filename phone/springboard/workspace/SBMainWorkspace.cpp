#include "phone/springboard/applications/applications.h"
#include "phone/springboard/applications/termination_assertion.h"
#include "phone/springboard/scenes/front_display.h"
#include "phone/system/journal.h"
#include "phone/system/text.h"
#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

std::string bundleIdentifierText(const id& application)
{
    return textOf(askObject<"bundleIdentifier">(application));
}

std::string destinationText(const id& request)
{
    const id entity = askObject<"anyObject">(send<"toApplicationSceneEntities">(request));
    return bundleIdentifierText(askObject<"application">(entity));
}

/// What decides which scenes are in front, and carries requests out that change it.
class SBMainWorkspace : public NSObject {
public:
    bool execute(const id& request)
    {
        if (respondsTo<"_executeTransitionRequest:options:validator:voluntarily:">(this)) {
            journal(JournalEvent::Sent, "SBMainWorkspace _executeTransitionRequest:options:validator:voluntarily:");
            return send<"_executeTransitionRequest:options:validator:voluntarily:", bool>(
                id(this), request, nil, nil, true);
        }
        journal(JournalEvent::Sent, "SBMainWorkspace _executeTransitionRequest:options:validator:");
        return send<"_executeTransitionRequest:options:validator:", bool>(id(this), request, nil, nil);
    }

    bool executeVoluntarily(const id& request, const id& options, const id& validator, bool)
    {
        journal(JournalEvent::Ran, "SBMainWorkspace _executeTransitionRequest:options:validator:voluntarily:");
        journal(JournalEvent::Sent, "SBMainWorkspace _executeTransitionRequest:options:validator:");
        return send<"_executeTransitionRequest:options:validator:", bool>(id(this), request, options, validator);
    }

    bool executeValidated(const id& request, const id&, const id& validator)
    {
        journal(JournalEvent::Ran, "SBMainWorkspace _executeTransitionRequest:options:validator:");
        journal(JournalEvent::Sent, "SBMainWorkspace _canExecuteTransitionRequest:forExecution:");
        const bool valid = send<"_canExecuteTransitionRequest:forExecution:", bool>(id(this), request, true)
            && (!validator || callBlock<bool>(validator, request));
        if (!valid) {
            const auto reason = asString(send<"declineReason">(request));
            journal(JournalEvent::Declined, destinationText(request), reason ? reason->view() : "");
            return false;
        }
        perform(request);
        return true;
    }

    bool canExecute(const id& request, bool)
    {
        journal(JournalEvent::Ran, "SBMainWorkspace _canExecuteTransitionRequest:forExecution:");
        const std::string destination = destinationText(request);
        const id application = destination.empty() ? nil : applicationOrServiceNamed(destination);
        const std::string hindrance = application ? whyNotRunnable(application) : std::string();
        if (!hindrance.empty())
            ask<"declineWithReason:", void>(request, string(hindrance));
        return application && hindrance.empty();
    }

    id frontmostApplication() const { return applicationInFront(); }
    void goHome() { bringToFront(nil); }

private:
    void perform(const id& request)
    {
        const id context = send<"applicationContext">(request);
        const bool background = send<"isBackground", bool>(context);
        const id primary = askObject<"application">(send<"applicationSceneEntityForLayoutRole:">(context, number(1)));
        std::vector<id> applications;
        for (const id& entity : itemsOf(send<"toApplicationSceneEntities">(request))) {
            id application = send<"application">(entity);
            journal(background ? JournalEvent::OpenedInBackground : JournalEvent::Opened,
                bundleIdentifierText(application));
            if (background)
                startInBackground(application, context);
            applications.insert(application == primary ? applications.begin() : applications.end(), application);
        }
        if (!background)
            bringCardToFront(applications);
    }
};

id sharedInstance(const id& self, SEL)
{
    static NSObject* const workspace = send<"new">(self).leak();
    return workspace;
}

constexpr MethodDefinition methods[] {
    method<"_canExecuteTransitionRequest:forExecution:", &SBMainWorkspace::canExecute>(),
    method<"_executeTransitionRequest:options:validator:", &SBMainWorkspace::executeValidated>(),
    method<"_executeTransitionRequest:options:validator:voluntarily:", &SBMainWorkspace::executeVoluntarily>().since(
        15),
    method<"executeTransitionRequest:", &SBMainWorkspace::execute>(),
    method<"frontmostApplication", &SBMainWorkspace::frontmostApplication>(),
    method<"goHome", &SBMainWorkspace::goHome>(),
    classMethod<"sharedInstance", &sharedInstance>(),
};

} // namespace

extern const ClassDefinition SBMainWorkspace_class {
    .name = "SBMainWorkspace", .allocate = allocate<SBMainWorkspace>, .methods = methods
};

} // namespace phone
