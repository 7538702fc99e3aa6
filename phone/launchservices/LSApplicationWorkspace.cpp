#include "phone/frontboard/open_request.h"
#include "phone/process/journal.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

id defaultWorkspace(const id& self, SEL)
{
    static NSObject* const workspace = send<"new">(self).leak();
    return workspace;
}

bool openApplicationWithBundleID(const id&, SEL, const id& identifier)
{
    journal(JournalEvent::Ran, "LSApplicationWorkspace openApplicationWithBundleID:");
    const auto text = asString(identifier);
    return text && openApplication({ text->text() });
}

constexpr MethodDefinition methods[] {
    classMethod<"defaultWorkspace", &defaultWorkspace>(),
    method<"openApplicationWithBundleID:", &openApplicationWithBundleID>(),
};

} // namespace

extern const ClassDefinition LSApplicationWorkspace_class { .name = "LSApplicationWorkspace", .methods = methods };

} // namespace phone
