#include "phone/springboard/applications/applications.h"
#include "phone/springboard/workspace/transitions.h"
#include "phone/system/journal.h"
#include "phone/system/text.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

void openCard(const id& container)
{
    const auto identifiers = asArray(askObject<"bundleIdentifiers">(send<"appLayout">(container)));
    if (!identifiers)
        return;
    TransitionDescription transition { .applications = {}, .label = "SwitcherSelection" };
    for (const id& identifier : *identifiers)
        if (id application = applicationOrServiceNamed(textOf(identifier)))
            transition.applications.push_back(std::move(application));
    if (!transition.applications.empty())
        requestTransition(transition);
}

void didSelectContainer(const id&, SEL, const id& container)
{
    journal(JournalEvent::Ran, "SBFluidSwitcherViewController didSelectContainer:");
    openCard(container);
}

void didSelectContainerWithModifiers(const id&, SEL, const id& container, NSInteger)
{
    journal(JournalEvent::Ran, "SBFluidSwitcherViewController didSelectContainer:modifierFlags:");
    openCard(container);
}

constexpr MethodDefinition methods[] {
    method<"didSelectContainer:", &didSelectContainer>(),
    method<"didSelectContainer:modifierFlags:", &didSelectContainerWithModifiers>().since(15),
};

} // namespace

extern const ClassDefinition SBFluidSwitcherViewController_class { .name = "SBFluidSwitcherViewController",
    .methods = methods };

} // namespace phone
