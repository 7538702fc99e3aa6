#include "phone/control/answers.h"
#include "phone/control/request_rows.h"
#include "phone/springboard/icons/icon_list.h"
#include "phone/springboard/icons/removal.h"

namespace phone {

namespace {

/// "icons": those of all installed applications, web clips and widgets, and which of them stand on the Home Screen.
Json listIcons(const Json&)
{
    Json icons = Json::array();
    for (const HomeScreenIcon& icon : homeScreenIcons())
        icons.push_back({ { "application", icon.identifier }, { "name", icon.displayName }, { "shown", icon.isShown },
            { "removable", icon.canBeRemoved } });
    return { { "ok", true }, { "icons", icons } };
}

/// "uninstall": asks the system by "road" to remove "application", and says what came of it.
Json uninstallApplication(const Json& request)
{
    const RemovalOutcome outcome = requestRemoval(text(request, "road"), text(request, "application"));
    if (!outcome.error.empty())
        return failure(outcome.error);
    const RemovalReport& report = outcome.report;
    settle(); // what follows from the application's end is a part of its removal
    const std::vector<JournalEntry> entries = takeJournal();
    return { { "ok", true }, { "offered", report.isOffered }, { "removed", report.isRemoved },
        { "completionCalled", report.completion ? Json(*report.completion) : Json(nullptr) },
        { "haptics", subjects(entries, JournalEvent::Haptic) }, { "notes", subjects(entries, JournalEvent::Note) },
        { "journal", toJson(entries) } };
}

constexpr RequestRow rows[] {
    { "icons", listIcons },
    { "uninstall", uninstallApplication },
};

} // namespace

extern const RequestRows iconRequests { rows };

} // namespace phone
