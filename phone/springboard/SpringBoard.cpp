#include "phone/springboard/home/home_screen.h"
#include "phone/springboard/icons/icon_list.h"
#include "phone/springboard/url_opening.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

/// The application in front, nil on the Home Screen.
id frontMostApplication(const id&, SEL)
{
    return send<"frontmostApplication">(send<"sharedInstance">(id(classNamed<"SBMainWorkspace">())));
}

void didFinishLaunching(const id&, SEL, const id&)
{
    showHomeScreen();
}

void frontDisplayDidChange(const id&, SEL, const id& application)
{
    closeFolder();
    showApplication(isKindOfClass(application, classNamed<"SBApplication">()) ? application : nil);
}

void processStateDidChange(const id&, SEL, const id& notification)
{
    const id identifier = askObject<"bundleIdentifier">(askObject<"object">(notification));
    if (const id icon = send<"applicationIconForBundleIdentifier:">(iconModel(), identifier))
        refreshIcon(icon, IconPart::Accessories);
}

bool canOpen(const id&, SEL, const id& url)
{
    return canOpenUrl(url);
}

void open(const id&, SEL, const id& url, const id&, const id& completion)
{
    openUrl(url, completion);
}

constexpr MethodDefinition methods[] {
    method<"_accessibilityFrontMostApplication", &frontMostApplication>(),
    method<"_handleApplicationProcessStateDidChangeNotification:", &processStateDidChange>(),
    method<"applicationDidFinishLaunching:", &didFinishLaunching>(),
    method<"canOpenURL:", &canOpen>(),
    method<"frontDisplayDidChange:", &frontDisplayDidChange>(),
    method<"openURL:options:completionHandler:", &open>(),
};

} // namespace

extern const ClassDefinition SpringBoard_class {
    .name = "SpringBoard", .superclassName = "UIApplication", .methods = methods
};

} // namespace phone
