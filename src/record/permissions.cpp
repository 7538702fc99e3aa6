#include "core/late_bound_functions.h"
#include "platform/foundation/bundle.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "record/app_ledger.h"

namespace appledger {

using namespace platform;

namespace {

constexpr std::string_view everyService = "kTCCServiceAll";
constexpr int terminationReason = 1;
constexpr int undecided = 0;

id bundleOf(const id& proxy)
{
    return CFBundleCreate(nullptr, askObject<"bundleURL">(proxy));
}

} // namespace

id ALAppLedger::getPermissions() const
{
    const id bundle = bundleOf(appProxy);
    return bundle ? TCCAccessCopyInformationForBundle(bundle) : nil;
}

void ALAppLedger::resetAllAppPermissionsWithoutAssertion()
{
    if (const id bundle = bundleOf(appProxy))
        TCCAccessResetForBundle(string(everyService), bundle);
    ask<"setAuthorizationStatusByType:forBundleIdentifier:", void>(
        id(classNamed<"CLLocationManager">()), undecided, bundleIdentifier);
}

void ALAppLedger::resetAllAppPermissions()
{
    const auto assertion
        = SBSApplicationTerminationAssertionCreateWithError(nullptr, bundleIdentifier, terminationReason, nullptr);
    resetAllAppPermissionsWithoutAssertion();
    if (assertion)
        SBSApplicationTerminationAssertionInvalidate(assertion);
}

} // namespace appledger
