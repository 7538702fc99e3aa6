#include "phone/control/answers.h"
#include "phone/control/application_record.h"
#include "phone/control/request_rows.h"
#include "phone/control/value_json.h"
#include "platform/dispatch/run_loop.h"
#include "platform/foundation/values.h"
#include "platform/graphics/geometry.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"
#include "platform/screen/framework.h"

/// Alerts on the screen, and folders that are opened, which may bring one up.

namespace phone {

using namespace platform;

namespace {

/// Nothing is hit in the window but what its controller shows.
bool AlertWindow_pointInside(const id& self, SEL, CGPoint, const id&)
{
    return static_cast<bool>(send<"presentedViewController">(send<"rootViewController">(self)));
}

constexpr MethodDefinition windowMethods[] { method<"pointInside:withEvent:", &AlertWindow_pointInside>() };
const ClassDefinition SBAlertWindow_class {
    .name = "SBAlertWindow", .superclassName = "UIWindow", .methods = windowMethods
};

constexpr double levelOfAlerts = 2000;

/// The controller over the Home Screen, in a window of its own, which others present from.
const id& homeController()
{
    static const auto* const kept = [] {
        const id window = send<"new">(id(registerClass(SBAlertWindow_class)));
        const id controller = send<"new">(id(classNamed<"UIViewController">()));
        send<"setWindowLevel:", void>(window, levelOfAlerts);
        send<"setRootViewController:", void>(window, controller);
        send<"setHidden:", void>(window, false);
        static const auto* const windowKept = new id(window);
        static_cast<void>(windowKept);
        return new id(controller);
    }();
    return *kept;
}

/// The alert before all others; nil for none.
id shownAlert()
{
    id shown = homeController();
    while (const id next = send<"presentedViewController">(shown))
        shown = next;
    return isKindOfClass(shown, classNamed<"UIAlertController">()) ? shown : nil;
}

Json alertJson(const id& alert)
{
    if (!alert)
        return nullptr;
    Json actions = Json::array();
    for (const id& action : itemsOf(send<"actions">(alert)))
        actions.push_back(
            { { "title", toJson(send<"title">(action)) }, { "enabled", send<"isEnabled", bool>(action) } });
    return { { "title", toJson(send<"title">(alert)) }, { "message", toJson(send<"message">(alert)) },
        { "actions", actions } };
}

/// By its number, from 1 on, or by its title.
id actionNamed(const id& alert, const std::string& choice)
{
    const ArrayValue actions = itemsOf(send<"actions">(alert));
    for (std::size_t index = 0; index < actions.size(); ++index) {
        const auto title = asString(send<"title">(actions[index]));
        if (choice == std::to_string(index + 1) || (title && *title == choice))
            return actions[index];
    }
    return nil;
}

/// "alert": the one that is up, {"alert": {"title", "message", "actions"}}, null for none; with a "choice" it is
/// answered first, and "chosen" is its title.
Json answerAlert(const Json& request)
{
    const std::string choice = text(request, "choice");
    const id alert = shownAlert();
    if (choice.empty())
        return { { "ok", true }, { "alert", alertJson(alert) } };
    if (!alert)
        return failure("no alert is up");
    const id action = actionNamed(alert, choice);
    if (!action)
        return failure("the alert has no such button");
    if (!send<"isEnabled", bool>(action))
        return failure("that button is off");
    send<"_choose:", void>(alert, action);
    constexpr std::chrono::seconds patience { 5 };
    runUntil([&] { return !send<"presentingViewController">(alert); }, patience);
    settle();
    return { { "ok", true }, { "chosen", toJson(send<"title">(action)) }, { "alert", alertJson(shownAlert()) } };
}

/// "open-folder": the "bundle" or the "data" of "application", in a file manager: {"opened", "notes", "alert"}.
Json openFolderOf(const Json& request)
{
    const FoundRecord found = applicationRecord(text(request, "application"));
    if (!found.record)
        return failure(found.error);
    const id url
        = text(request, "folder") == "data" ? send<"dataContainerURL">(found.record) : send<"bundleURL">(found.record);
    if (!url)
        return failure("it has no such folder");
    send<"openDirectoryAtURL:fromController:", void>(id(classNamed<"ALHelper">()), url, homeController());
    settle();
    const std::vector<JournalEntry> entries = takeJournal();
    return { { "ok", true }, { "opened", subjects(entries, JournalEvent::Opened) },
        { "notes", subjects(entries, JournalEvent::Note) }, { "alert", alertJson(shownAlert()) },
        { "journal", toJson(entries) } };
}

constexpr RequestRow rows[] {
    { "alert", answerAlert },
    { "open-folder", openFolderOf },
};

} // namespace

extern const RequestRows alertRequests { rows };

} // namespace phone
