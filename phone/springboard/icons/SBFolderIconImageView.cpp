#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// A folder's grid, put together anew each time: what is in it may have changed.
id contentsImage(const id& self, SEL)
{
    return askObject<"_gridImage">(send<"icon">(self));
}

constexpr MethodDefinition methods[] { method<"contentsImage", &contentsImage>() };

} // namespace

extern const ClassDefinition SBIconImageView_class;
extern const ClassDefinition SBFolderIconImageView_class {
    .name = "SBFolderIconImageView", .superclass = &SBIconImageView_class, .methods = methods
};

} // namespace phone
