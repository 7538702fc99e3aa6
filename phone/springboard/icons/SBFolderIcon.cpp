#include "phone/springboard/home/icon_pictures.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// The icon of a folder.
class SBFolderIcon : public NSObject {
public:
    id folder;

    id initWithFolder(const id& newFolder)
    {
        folder = newFolder;
        send<"setIcon:", void>(folder, id(this));
        return this;
    }

    id displayName() const { return send<"displayName">(folder); }

    id homeScreenImage() const
    {
        std::vector<id> images;
        for (const id& icon : itemsOf(send<"icons">(folder)))
            images.push_back(askObject<"homeScreenImage">(icon));
        return pictureOfFolder(images);
    }
};

constexpr MethodDefinition methods[] {
    method<"displayName", &SBFolderIcon::displayName>(),
    getter<"folder", &SBFolderIcon::folder>(),
    method<"homeScreenImage", &SBFolderIcon::homeScreenImage>(),
    method<"initWithFolder:", &SBFolderIcon::initWithFolder>(),
};

} // namespace

extern const ClassDefinition SBIcon_class;
extern const ClassDefinition SBFolderIcon_class {
    .name = "SBFolderIcon", .superclass = &SBIcon_class, .allocate = allocate<SBFolderIcon>, .methods = methods
};

} // namespace phone
