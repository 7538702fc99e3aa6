#include "phone/system/journal.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

id sharedInstance(const id& self, SEL)
{
    static NSObject* const controller = send<"new">(self).leak();
    return controller;
}

/// Lights the screen and buzzes for a notification that is about to be shown.
void alertOnPresentation(const id&, SEL, const id& request, const id&)
{
    if (const auto section = asString(askObject<"sectionIdentifier">(request)))
        journal(JournalEvent::Alerted, *section);
}

constexpr MethodDefinition methods[] {
    method<"alertOnPresentationForNotificationRequest:presentingDestination:", &alertOnPresentation>(),
    classMethod<"sharedInstance", &sharedInstance>(),
};

} // namespace

extern const ClassDefinition SBNCAlertingController_class { .name = "SBNCAlertingController", .methods = methods };

} // namespace phone
