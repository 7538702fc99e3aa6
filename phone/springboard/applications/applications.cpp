#include "phone/springboard/applications/applications.h"

#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <array>
#include <iterator>

namespace phone {

using namespace platform;

namespace {

struct ViewService {
    std::string_view bundleIdentifier;
    std::string_view name;
};

constexpr ViewService viewServices[] {
    { "com.apple.SafariViewService", "Safari View Service" },
    { "com.apple.ios.StoreKitUIService", "Store View Service" },
};

id makeService(const ViewService& service)
{
    id application = send<"new">(id(classNamed<"SBApplication">()));
    send<"setBundleIdentifier:", void>(application, string(service.bundleIdentifier));
    send<"setDisplayName:", void>(application, string(service.name));
    const id info = send<"new">(id(classNamed<"SBApplicationInfo">()));
    send<"setBundleIdentifier:", void>(info, string(service.bundleIdentifier));
    send<"setSystemApplication:", void>(info, true);
    send<"setTags:", void>(info, array({ "hidden" }));
    send<"setInfo:", void>(application, info);
    return application;
}

} // namespace

id applicationController()
{
    return send<"sharedInstance">(id(classNamed<"SBApplicationController">()));
}

id applicationNamed(std::string_view bundleIdentifier)
{
    return send<"applicationWithBundleIdentifier:">(applicationController(), string(bundleIdentifier));
}

id applicationOrServiceNamed(std::string_view bundleIdentifier)
{
    if (id installed = applicationNamed(bundleIdentifier))
        return installed;
    static auto* const services = new std::array<id, std::size(viewServices)>;
    for (std::size_t index = 0; index < services->size(); ++index) {
        if (viewServices[index].bundleIdentifier != bundleIdentifier)
            continue;
        id& service = (*services)[index];
        if (!service)
            service = makeService(viewServices[index]);
        return service;
    }
    return nil;
}

} // namespace phone
