#include "phone/launchservices/installed_applications.h"
#include "phone/system/journal.h"
#include "platform/foundation/error.h"
#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// The deletion is done when it returns, whether that was to be waited for or not; the Home Screen follows on the main
/// queue.
bool demote(const id&, SEL, const id& identifier, NSInteger, bool, id* error)
{
    const auto text = asString(identifier);
    const std::string failure = text ? demoteInstalledApplication(text->text()) : "that is no bundle identifier";
    if (failure.empty()) {
        tellOfInstallation(InstallationChange::Demoted, text->text());
        return true;
    }
    journal(JournalEvent::Note, failure);
    if (error)
        *error = platform::error("IXErrorDomain", 1, dictionary({ { "NSLocalizedDescription", string(failure) } }));
    return false;
}

constexpr MethodDefinition methods[] {
    classMethod<"demoteAppToPlaceholderWithBundleID:forReason:waitForDeletion:error:", &demote>(),
};

} // namespace

extern const ClassDefinition IXAppInstallCoordinator_class {
    .name = "IXAppInstallCoordinator", .methods = methods, .versions = { .first = 13 }
};

} // namespace phone
