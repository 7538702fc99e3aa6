#include "phone/springboard/applications/applications.h"

#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

id applicationController()
{
    return send<"sharedInstance">(id(classNamed<"SBApplicationController">()));
}

id applicationNamed(std::string_view bundleIdentifier)
{
    return send<"applicationWithBundleIdentifier:">(applicationController(), string(bundleIdentifier));
}

} // namespace phone
