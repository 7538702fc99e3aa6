#include "phone/process/journal.h"
#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

class SBFolderIcon : public NSObject {
public:
    id folder;

    void notifyAccessoriesDidUpdate() const { journal(JournalEvent::IconAccessory, "folder"); }
};

constexpr MethodDefinition methods[] {
    method<"_notifyAccessoriesDidUpdate", &SBFolderIcon::notifyAccessoriesDidUpdate>(),
    getter<"folder", &SBFolderIcon::folder>(),
    setter<"setFolder:", &SBFolderIcon::folder>(),
};

} // namespace

extern const ClassDefinition SBIcon_class;
extern const ClassDefinition SBFolderIcon_class {
    .name = "SBFolderIcon", .superclass = &SBIcon_class, .allocate = allocate<SBFolderIcon>, .methods = methods
};

} // namespace phone
