#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// The picture inside an icon view.
class SBIconImageView : public NSObject {
public:
    id icon;
};

constexpr MethodDefinition methods[] {
    getter<"icon", &SBIconImageView::icon>(),
    setter<"setIcon:", &SBIconImageView::icon>(),
};

} // namespace

extern const ClassDefinition SBIconImageView_class {
    .name = "SBIconImageView", .allocate = allocate<SBIconImageView>, .methods = methods
};

} // namespace phone
