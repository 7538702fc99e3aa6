#include "phone/springboard/workspace/transitions.h"
#include "phone/system/journal.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// The Home Screen's controller: owns the model, and launches what is tapped.
class SBIconController : public NSObject {
public:
    id model;
    id iconManager;

    SBIconController()
    {
        const Class newer = NSClassFromString("SBHIconModel");
        model = send<"new">(id(newer ? newer : NSClassFromString("SBIconModel")));
        iconManager = askObject<"new">(id(NSClassFromString("SBHIconManager")));
        ask<"setIconModel:", void>(iconManager, model);
    }

    void launchFromIconView(const id& iconView)
    {
        const id application = askObject<"application">(send<"icon">(iconView));
        if (application)
            requestTransition({ .applications = { application }, .label = "LaunchFromIcon" });
    }

    void didSelectShortcutItem(const id& iconView, const id&)
    {
        journal(JournalEvent::Ran, "SBIconController iconView:didSelectApplicationShortcutItem:");
        const id application = askObject<"application">(send<"icon">(iconView));
        if (application)
            requestTransition({ .applications = { application }, .label = "ActivateShortcutItem" });
    }
};

id sharedInstance(const id& self, SEL)
{
    static NSObject* const controller = send<"new">(self).leak();
    return controller;
}

constexpr MethodDefinition methods[] {
    method<"_launchFromIconView:", &SBIconController::launchFromIconView>(),
    getter<"iconManager", &SBIconController::iconManager>().since(13),
    method<"iconView:didSelectApplicationShortcutItem:", &SBIconController::didSelectShortcutItem>(),
    getter<"model", &SBIconController::model>(),
    classMethod<"sharedInstance", &sharedInstance>(),
};

} // namespace

extern const ClassDefinition SBIconController_class {
    .name = "SBIconController", .allocate = allocate<SBIconController>, .methods = methods
};

} // namespace phone
