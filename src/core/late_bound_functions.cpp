#include "core/late_bound_functions.h"

#include "platform/darwin/images.h"
#include "platform/darwin/system.h"
#include "platform/runtime/message.h"

namespace appledger {

using namespace platform;

namespace {

using CreateAssertion = void* (*)(const void* allocator, const id& bundleIdentifier, int reason, int* error);
using InvalidateAssertion = void (*)(void* assertion);
using ResetAccess = int (*)(const id& service, const id& bundle);
using CopyInformation = id (*)(const id& bundle);

CreateAssertion SBSApplicationTerminationAssertionCreateWithError_Ptr = nullptr;
InvalidateAssertion SBSApplicationTerminationAssertionInvalidate_Ptr = nullptr;
ResetAccess TCCAccessResetForBundle_Ptr = nullptr;
CopyInformation TCCAccessCopyInformationForBundle_Ptr = nullptr;

template <class Function> void bind(Function& function, ImageHandle image, std::string_view name)
{
    function = reinterpret_cast<Function>(dlsym(image, name));
}

} // namespace

void bindTerminationAssertionFunctions()
{
    const ImageHandle image = dlopen(isOperatingSystemAtLeastVersion(13, 0, 0)
            ? "/System/Library/PrivateFrameworks/SpringBoard.framework/SpringBoard"
            : "/System/Library/PrivateFrameworks/SpringBoardServices.framework/SpringBoardServices",
        RTLD_LAZY_MODE);
    if (!image)
        return;
    bind(SBSApplicationTerminationAssertionCreateWithError_Ptr, image,
        "SBSApplicationTerminationAssertionCreateWithError");
    bind(SBSApplicationTerminationAssertionInvalidate_Ptr, image, "SBSApplicationTerminationAssertionInvalidate");
}

void bindTCCFunctions()
{
    const ImageHandle image = dlopen("/System/Library/PrivateFrameworks/TCC.framework/TCC", RTLD_LAZY_MODE);
    if (!image)
        return;
    bind(TCCAccessResetForBundle_Ptr, image, "TCCAccessResetForBundle");
    bind(TCCAccessCopyInformationForBundle_Ptr, image, "TCCAccessCopyInformationForBundle");
}

SBSApplicationTerminationAssertionRef SBSApplicationTerminationAssertionCreateWithError(
    const void* allocator, const id& bundleIdentifier, int reason, int* error)
{
    return SBSApplicationTerminationAssertionCreateWithError_Ptr
        ? SBSApplicationTerminationAssertionCreateWithError_Ptr(allocator, bundleIdentifier, reason, error)
        : nullptr;
}

void SBSApplicationTerminationAssertionInvalidate(SBSApplicationTerminationAssertionRef assertion)
{
    if (SBSApplicationTerminationAssertionInvalidate_Ptr)
        SBSApplicationTerminationAssertionInvalidate_Ptr(assertion);
}

int TCCAccessResetForBundle(const id& service, const id& bundle)
{
    return TCCAccessResetForBundle_Ptr ? TCCAccessResetForBundle_Ptr(service, bundle) : 0;
}

id TCCAccessCopyInformationForBundle(const id& bundle)
{
    if (!TCCAccessCopyInformationForBundle_Ptr)
        return nil;
    const id information = TCCAccessCopyInformationForBundle_Ptr(bundle);
    return ask<"copy">(information).value_or(information);
}

} // namespace appledger
