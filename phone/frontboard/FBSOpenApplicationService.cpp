#include "phone/frontboard/open_request.h"
#include "phone/system/journal.h"
#include "platform/foundation/block.h"
#include "platform/foundation/error.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

id sharedInstance(const id& self, SEL)
{
    static NSObject* const service = send<"new">(self).leak();
    return service;
}

void open(const id& identifier, const id& completion)
{
    const auto text = asString(identifier);
    const bool opened = text && openApplication({ text->text() });
    callBlock(completion, opened ? nil : error("FBSOpenApplicationErrorDomain", 1));
}

void openWithPort(const id&, SEL, const id& identifier, const id&, unsigned, const id& completion)
{
    journal(JournalEvent::Ran, "FBSOpenApplicationService openApplication:withOptions:clientPort:completion:");
    open(identifier, completion);
}

void openWithoutPort(const id&, SEL, const id& identifier, const id&, const id& completion)
{
    journal(JournalEvent::Ran, "FBSOpenApplicationService openApplication:withOptions:completion:");
    open(identifier, completion);
}

constexpr MethodDefinition methods[] {
    method<"openApplication:withOptions:clientPort:completion:", &openWithPort>(),
    method<"openApplication:withOptions:completion:", &openWithoutPort>(),
    classMethod<"sharedInstance", &sharedInstance>(),
};

} // namespace

extern const ClassDefinition FBSOpenApplicationService_class { .name = "FBSOpenApplicationService",
    .methods = methods };

} // namespace phone
