#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// What an installed application says of itself.
class SBApplicationInfo : public NSObject {
public:
    id bundleIdentifier;
    id tags; ///< array of strings
    bool systemApplication = false;
    bool placeholder = false; ///< nothing but its data is left

    bool isHidden()
    {
        const auto present = asArray(send<"tags">(id(this)));
        return present && present->contains("hidden");
    }
};

constexpr MethodDefinition methods[] {
    getter<"bundleIdentifier", &SBApplicationInfo::bundleIdentifier>(),
    method<"isHidden", &SBApplicationInfo::isHidden>(),
    getter<"isPlaceholder", &SBApplicationInfo::placeholder>(),
    getter<"isSystemApplication", &SBApplicationInfo::systemApplication>(),
    setter<"setBundleIdentifier:", &SBApplicationInfo::bundleIdentifier>(),
    setter<"setPlaceholder:", &SBApplicationInfo::placeholder>(),
    setter<"setSystemApplication:", &SBApplicationInfo::systemApplication>(),
    setter<"setTags:", &SBApplicationInfo::tags>(),
    getter<"tags", &SBApplicationInfo::tags>(),
};

} // namespace

extern const ClassDefinition SBApplicationInfo_class {
    .name = "SBApplicationInfo", .allocate = allocate<SBApplicationInfo>, .methods = methods
};

} // namespace phone
