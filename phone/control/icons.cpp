#include "phone/control/answers.h"
#include "phone/control/request_rows.h"
#include "phone/launchservices/installed_applications.h"
#include "phone/springboard/applications/applications.h"
#include "phone/springboard/icons/icon_list.h"
#include "phone/springboard/icons/removal.h"
#include "phone/system/text.h"
#include "platform/foundation/url.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

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

/// "install": has the system install the application that is staged at "path", and says which it is.
Json installApplication(const Json& request)
{
    const id workspace = send<"defaultWorkspace">(id(classNamed<"LSApplicationWorkspace">()));
    const std::string path = text(request, "path");
    const std::string identifier = applicationInBundle(path).bundleIdentifier;
    const bool wasThere = static_cast<bool>(applicationNamed(identifier));
    id error;
    if (!send<"installApplication:withOptions:error:", bool>(workspace, fileURL(path), nil, &error)) {
        const auto reason = asString(askObject<"localizedDescription">(error));
        return failure(reason ? reason->view() : "the application can't be installed");
    }
    settle(); // the Home Screen follows
    return { { "ok", true }, { "application", identifier },
        { "name", textOf(send<"displayName">(applicationNamed(identifier))) }, { "isUpdate", wasThere } };
}

constexpr RequestRow rows[] {
    { "icons", listIcons },
    { "install", installApplication },
    { "uninstall", uninstallApplication },
};

} // namespace

extern const RequestRows iconRequests { rows };

} // namespace phone
