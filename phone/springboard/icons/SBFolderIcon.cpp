#include "phone/iconservices/icon_pictures.h"
#include "phone/springboard/icons/icon_images.h"
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

    id gridImage() const
    {
        std::vector<id> images;
        const id icons = send<"icons">(folder);
        for (const id& icon : itemsOf(icons))
            images.push_back(generatedImageOfIcon(icon, iconSideInFolder));
        return pictureOfFolder(images);
    }

    Class imageViewClass(const id&) const { return classNamed<"SBFolderIconImageView">(); }
};

constexpr MethodDefinition methods[] {
    method<"_gridImage", &SBFolderIcon::gridImage>(),
    method<"displayName", &SBFolderIcon::displayName>(),
    getter<"folder", &SBFolderIcon::folder>(),
    method<"iconImageViewClassForLocation:", &SBFolderIcon::imageViewClass>(),
    method<"initWithFolder:", &SBFolderIcon::initWithFolder>(),
};

} // namespace

extern const ClassDefinition SBIcon_class;
extern const ClassDefinition SBFolderIcon_class {
    .name = "SBFolderIcon", .superclass = &SBIcon_class, .allocate = allocate<SBFolderIcon>, .methods = methods
};

} // namespace phone
