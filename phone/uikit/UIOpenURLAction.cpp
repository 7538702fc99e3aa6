#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// What an application that opens a URL hands to the one that is to take it.
class UIOpenURLAction : public NSObject {
public:
    id url;
};

constexpr MethodDefinition methods[] {
    setter<"setUrl:", &UIOpenURLAction::url>(),
    getter<"url", &UIOpenURLAction::url>(),
};

} // namespace

extern const ClassDefinition UIOpenURLAction_class {
    .name = "UIOpenURLAction", .allocate = allocate<UIOpenURLAction>, .methods = methods
};

} // namespace phone
