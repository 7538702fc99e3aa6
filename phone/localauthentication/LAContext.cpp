#include "phone/localauthentication/prompts.h"
#include "phone/system/text.h"
#include "platform/dispatch/clock.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// One authentication of the owner. Its prompt is up for as long as somebody keeps the context.
class LAContext : public NSObject {
public:
    ~LAContext() override { dropPrompts(this); }

    void evaluatePolicy(NSInteger policy, const id& reason, const id& reply)
    {
        putPromptUp(this,
            { .policy = policy,
                .reason = textOf(reason),
                .fallbackTitle = textOf(localizedFallbackTitle),
                .asked = clockNow() },
            reply);
    }

    id localizedFallbackTitle;
};

constexpr MethodDefinition methods[] {
    method<"evaluatePolicy:localizedReason:reply:", &LAContext::evaluatePolicy>(),
    getter<"localizedFallbackTitle", &LAContext::localizedFallbackTitle>(),
    setter<"setLocalizedFallbackTitle:", &LAContext::localizedFallbackTitle>(),
};

} // namespace

extern const ClassDefinition LAContext_class {
    .name = "LAContext", .allocate = allocate<LAContext>, .methods = methods
};

} // namespace phone
