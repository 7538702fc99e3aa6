#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// What the store's daemon knows of an installed application.
class ASDApp : public NSObject {
public:
    id bundleID;
    bool updateAvailable = false;
};

constexpr MethodDefinition methods[] {
    getter<"bundleID", &ASDApp::bundleID>(),
    getter<"isUpdateAvailable", &ASDApp::updateAvailable>(),
    setter<"setBundleID:", &ASDApp::bundleID>(),
    setter<"setUpdateAvailable:", &ASDApp::updateAvailable>(),
};

} // namespace

extern const ClassDefinition ASDApp_class { .name = "ASDApp", .allocate = allocate<ASDApp>, .methods = methods };

} // namespace phone
