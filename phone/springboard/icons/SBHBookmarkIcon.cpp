#include "phone/springboard/icons/bookmark_icon.h"

namespace phone {

using namespace platform;

extern const ClassDefinition SBLeafIcon_class;
extern const ClassDefinition SBHBookmarkIcon_class { .name = "SBHBookmarkIcon",
    .superclass = &SBLeafIcon_class,
    .allocate = allocate<BookmarkIcon>,
    .methods = bookmarkIconMethods,
    .versions = { .first = 14 } };

} // namespace phone
