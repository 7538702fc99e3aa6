#include "phone/springboard/icons/bookmark_icon.h"

namespace phone {

using namespace platform;

extern const ClassDefinition SBLeafIcon_class;
extern const ClassDefinition SBBookmarkIcon_class { .name = "SBBookmarkIcon",
    .superclass = &SBLeafIcon_class,
    .allocate = allocate<BookmarkIcon>,
    .methods = bookmarkIconMethods,
    .versions = { .last = 13 } };

} // namespace phone
