#include "phone/launchservices/installed_applications.h"
#include "platform/foundation/url.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

#include <algorithm>

namespace phone {

using namespace platform;

namespace {

/// What the system knows of an installed application.
class LSApplicationProxy : public NSObject {
public:
    id bundleIdentifier;

    id dataContainerUrl() const
    {
        const auto identifier = asString(bundleIdentifier);
        const auto container = identifier ? dataContainerOf(*identifier) : std::nullopt;
        return container ? fileURL(*container) : nil;
    }
};

id proxyForIdentifier(const id& self, SEL, const id& identifier)
{
    const auto text = asString(identifier);
    const auto installed = installedApplications();
    if (!text || std::ranges::find(installed, text->view(), &InstalledApplication::bundleIdentifier) == installed.end())
        return nil;
    id proxy = send<"new">(self);
    send<"setBundleIdentifier:", void>(proxy, identifier);
    return proxy;
}

constexpr MethodDefinition methods[] {
    classMethod<"applicationProxyForIdentifier:", &proxyForIdentifier>(),
    getter<"bundleIdentifier", &LSApplicationProxy::bundleIdentifier>(),
    method<"dataContainerURL", &LSApplicationProxy::dataContainerUrl>(),
    setter<"setBundleIdentifier:", &LSApplicationProxy::bundleIdentifier>(),
};

} // namespace

extern const ClassDefinition LSApplicationProxy_class {
    .name = "LSApplicationProxy", .allocate = allocate<LSApplicationProxy>, .methods = methods
};

} // namespace phone
