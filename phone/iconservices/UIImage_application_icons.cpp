#include "phone/iconservices/application_icons.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

id iconForIdentifier(const id&, SEL, const id& bundleIdentifier, int format, double scale)
{
    return applicationIcon(bundleIdentifier, sideOfFormat(format), scale);
}

/// A variant is a size by the numbers of formats; the options say nothing here.
id iconForProxy(const id&, SEL, const id& proxy, int variant, int, double scale)
{
    return applicationIcon(askObject<"bundleIdentifier">(proxy), sideOfFormat(variant), scale);
}

constexpr MethodDefinition methods[] {
    classMethod<"_applicationIconImageForBundleIdentifier:format:scale:", &iconForIdentifier>(),
    classMethod<"_iconForResourceProxy:variant:options:variantsScale:", &iconForProxy>(),
};

} // namespace

/// Where a process asks for an application's icon.
extern const ClassDefinition UIImage_application_icons_class {
    .name = "UIImage", .methods = methods, .isCategory = true
};

} // namespace phone
