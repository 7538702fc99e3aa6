#include "phone/control/icon_requests.h"

#include "phone/springboard/icons/icon_list.h"
#include "phone/springboard/icons/removal.h"

namespace phone {

Json listIcons(const Json&)
{
    Json icons = Json::array();
    for (const HomeScreenIcon& icon : homeScreenIcons())
        icons.push_back({ { "application", icon.bundleIdentifier }, { "name", icon.displayName },
            { "shown", icon.isShown }, { "removable", icon.canBeRemoved } });
    return { { "ok", true }, { "icons", icons } };
}

Json uninstallApplication(const Json& request)
{
    takeJournal();
    const RemovalOutcome outcome = requestRemoval(text(request, "road"), text(request, "application"));
    if (!outcome.error.empty())
        return failure(outcome.error);
    const RemovalReport& report = outcome.report;
    const std::vector<JournalEntry> entries = takeJournal();
    return { { "ok", true }, { "offered", report.isOffered }, { "removed", report.isRemoved },
        { "completionCalled", report.completion ? Json(*report.completion) : Json(nullptr) },
        { "haptics", subjects(entries, JournalEvent::Haptic) }, { "notes", subjects(entries, JournalEvent::Note) },
        { "journal", toJson(entries) } };
}

} // namespace phone
