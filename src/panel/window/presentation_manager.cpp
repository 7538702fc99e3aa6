#include "panel/window/presentation_manager.h"

#include "platform/handles/Handle.h"

namespace appledger {

using namespace platform;

namespace {

using Manager = ALDataPresentationManager;

id configuration(const id& self, SEL)
{
    return static_cast<Manager&>(*self).configuration;
}

void setConfiguration(const id& self, SEL, const id& configuration)
{
    static_cast<Manager&>(*self).configuration = configurationOrDefault(configuration);
}

id initWithConfiguration(const id& self, SEL, const id& configuration)
{
    setConfiguration(self, nullptr, configuration);
    return self;
}

id presentationController(const id& self, SEL, const id& presented, const id& presenting, const id&)
{
    return askObject<"initWithPresentedViewController:presentingViewController:configuration:">(
        askObject<"alloc">(id(classNamed<"ALDataPresentationController">())), presented, presenting,
        configuration(self, nullptr));
}

id animator(const id& self, bool isPresentation)
{
    return askObject<"initWithConfiguration:isPresentation:">(
        askObject<"alloc">(id(classNamed<"ALDataPresentationAnimator">())), configuration(self, nullptr),
        isPresentation);
}

id animatorOfPresentation(const id& self, SEL, const id&, const id&, const id&)
{
    return animator(self, true);
}

id animatorOfDismissal(const id& self, SEL, const id&)
{
    return animator(self, false);
}

constexpr MethodDefinition methods[] {
    method<"animationControllerForDismissedController:", &animatorOfDismissal>(),
    method<"animationControllerForPresentedController:presentingController:sourceController:",
        &animatorOfPresentation>(),
    method<"configuration", &configuration>(),
    method<"initWithConfiguration:", &initWithConfiguration>(),
    method<"presentationControllerForPresentedViewController:presentingViewController:source:",
        &presentationController>(),
    // By this name the system asks for it.
    method<"presentationControllerForPresentedViewController:presentingViewController:sourceViewController:",
        &presentationController>(),
    method<"setConfiguration:", &setConfiguration>(),
};

} // namespace

const ClassDefinition ALDataPresentationManager::definition {
    .name = "ALDataPresentationManager", .allocate = allocate<ALDataPresentationManager>, .methods = methods
};

} // namespace appledger
