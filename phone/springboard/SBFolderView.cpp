#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// An open folder.
class SBFolderView : public NSObject {
public:
    id folder;
};

void willTransition(const id&, SEL, bool, const id&) { }

void didTransition(const id&, SEL, bool) { }

constexpr MethodDefinition methods[] {
    method<"didTransitionAnimated:", &didTransition>(),
    getter<"folder", &SBFolderView::folder>(),
    setter<"setFolder:", &SBFolderView::folder>(),
    method<"willTransitionAnimated:withSettings:", &willTransition>(),
};

} // namespace

extern const ClassDefinition SBFolderView_class {
    .name = "SBFolderView", .allocate = allocate<SBFolderView>, .methods = methods
};

} // namespace phone
