#include "phone/control/answers.h"
#include "phone/control/request_rows.h"
#include "phone/springboard/home/home_screen.h"
#include "phone/springboard/icons/icon_list.h"
#include "platform/darwin/bus.h"
#include "platform/foundation/block.h"
#include "platform/foundation/files.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

/// What the library does with icons of the owner's choice.

namespace phone {

using namespace platform;

namespace {

id iconStore()
{
    return id(classNamed<"ALIconStore">());
}

/// Why the request can't be done; empty when it can.
std::string refusal(const std::string& identifier)
{
    if (!iconStore())
        return "SpringBoard runs without the library";
    const id icon = send<"leafIconForIdentifier:">(iconModel(), string(identifier));
    if (!icon || isKindOfClass(icon, classNamed<"SBWidgetIcon">()))
        return "no such application or web clip is on the phone";
    return "";
}

/// What follows reaches every process before the answer does.
void settleIcons()
{
    constexpr std::chrono::seconds patience { 5 };
    flushBus(patience);
    settle();
}

std::string pathOfIconFile(const std::string& identifier)
{
    const auto path = asString(pairsOf(send<"stateForBundleIdentifier:">(iconStore(), string(identifier)))["path"]);
    return path ? path->text() : "";
}

/// "icon-set": makes the picture in the file "path", of the machine that the phone runs on, that of "application".
void setIcon(const Json& request, const Reply& reply)
{
    const std::string identifier = text(request, "application");
    if (const std::string why = refusal(identifier); !why.empty())
        return reply(failure(why));
    const std::string path = text(request, "path");
    const FileReading file = tryToReadHostFile(path);
    if (!file.content)
        return reply(failure("can't read " + path + ", because " + file.problem));
    const id image = send<"imageWithData:">(id(classNamed<"UIImage">()), platform::data(*file.content));
    if (!image)
        return reply(
            failure(path + " is no picture that can be read: it must be a whole PNG or JPEG of at most 33 megapixels"));
    const std::string iconFile = pathOfIconFile(identifier);
    const auto before = fileStamp(iconFile);
    const id done = block([reply, identifier, iconFile, before] {
        settleIcons();
        const auto after = fileStamp(iconFile);
        if (!after || after == before)
            return reply(failure("the icon isn't kept: " + iconFile + " can't be written"));
        reply({ { "ok", true }, { "application", identifier }, { "path", iconFile }, { "bytes", after->size } });
    });
    send<"saveImage:forBundleIdentifier:iconView:completion:", void>(
        iconStore(), image, string(identifier), iconViewOf(identifier), done);
}

/// "icon-reset": gives "application" its own picture back.
Json resetIcon(const Json& request)
{
    const std::string identifier = text(request, "application");
    if (const std::string why = refusal(identifier); !why.empty())
        return failure(why);
    const std::string iconFile = pathOfIconFile(identifier);
    const bool had = fileExists(iconFile);
    send<"resetForBundleIdentifier:iconView:", void>(iconStore(), string(identifier), iconViewOf(identifier));
    settleIcons();
    if (fileExists(iconFile))
        return failure(iconFile + " can't be removed");
    return { { "ok", true }, { "application", identifier }, { "hadIcon", had } };
}

/// "icon-refresh": has every process forget all pictures and lays every icon out anew.
void refreshIcons(const Json&, const Reply& reply)
{
    if (!iconStore())
        return reply(failure("SpringBoard runs without the library"));
    const id done = block([reply] {
        settleIcons();
        reply({ { "ok", true }, { "haptics", subjects(takeJournal(), JournalEvent::Haptic) } });
    });
    send<"refreshAllForBundleIdentifier:completion:", void>(iconStore(), nil, done);
}

constexpr RequestRow rows[] {
    { "icon-set", setIcon },
    { "icon-reset", resetIcon },
    { "icon-refresh", refreshIcons },
};

} // namespace

extern const RequestRows customIconRequests { rows };

} // namespace phone
