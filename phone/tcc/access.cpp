#include "phone/tcc/access.h"

#include "phone/device/decisions.h"
#include "phone/system/journal.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

id TCCAccessCopyInformationForBundle(const id& bundle)
{
    const auto identifier = asString(askObject<"bundleIdentifier">(bundle));
    if (!identifier)
        return nil;
    std::vector<id> information;
    for (const auto& [service, decision] : decisionsAbout(DecisionKind::Access, *identifier))
        information.push_back(
            dictionary({ { "kTCCInfoService", string(service) }, { "kTCCInfoGranted", boolean(decision != 0) } }));
    return array(std::move(information));
}

int TCCAccessResetForBundle(const id& service, const id& bundle)
{
    const auto identifier = asString(askObject<"bundleIdentifier">(bundle));
    const auto name = asString(service);
    if (!identifier || !name)
        return 0;
    journal(JournalEvent::Note, "access of " + identifier->text() + " forgotten: " + name->text());
    return forgetDecisions(
        DecisionKind::Access, *identifier, *name == everyService ? std::string_view() : name->view());
}

} // namespace phone
