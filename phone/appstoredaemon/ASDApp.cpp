#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// What the store's daemon knows of an installed application.
class ASDApp : public NSObject {
public:
    id bundleID;
    id newestVersion; ///< nil when the installed one is the newest

    bool hasUpdate() const { return static_cast<bool>(newestVersion); }
    id updateMetadata() const
    {
        return newestVersion ? dictionary({ { "bundleId", bundleID }, { "bundleShortVersionString", newestVersion } })
                             : nil;
    }
};

constexpr MethodDefinition methods[] {
    getter<"bundleID", &ASDApp::bundleID>(),
    method<"isUpdateAvailable", &ASDApp::hasUpdate>(),
    setter<"setBundleID:", &ASDApp::bundleID>(),
    setter<"setNewestVersion:", &ASDApp::newestVersion>(),
    method<"updateAvailable", &ASDApp::hasUpdate>(),
    method<"updateMetadata", &ASDApp::updateMetadata>(),
};

} // namespace

extern const ClassDefinition ASDApp_class { .name = "ASDApp", .allocate = allocate<ASDApp>, .methods = methods };

} // namespace phone
