#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// One notification as the server keeps it: what a banner shows, and the section that it belongs to.
class BBBulletin : public NSObject {
public:
    id badge; ///< number, string or nil
    id message;
    id sectionID; ///< the application's bundle identifier
    id sound; ///< nil: silent
    id title;
};

constexpr MethodDefinition methods[] {
    getter<"badge", &BBBulletin::badge>(),
    getter<"message", &BBBulletin::message>(),
    getter<"sectionID", &BBBulletin::sectionID>(),
    setter<"setBadge:", &BBBulletin::badge>(),
    setter<"setMessage:", &BBBulletin::message>(),
    setter<"setSectionID:", &BBBulletin::sectionID>(),
    setter<"setSound:", &BBBulletin::sound>(),
    setter<"setTitle:", &BBBulletin::title>(),
    getter<"sound", &BBBulletin::sound>(),
    getter<"title", &BBBulletin::title>(),
};

} // namespace

extern const ClassDefinition BBBulletin_class {
    .name = "BBBulletin", .allocate = allocate<BBBulletin>, .methods = methods
};

} // namespace phone
