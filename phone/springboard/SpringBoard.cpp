#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

namespace phone {

using namespace platform;

namespace {

id sharedApplication(const id& self, SEL)
{
    static NSObject* const application = send<"new">(self).leak();
    return application;
}

/// The application in front, nil on the Home Screen.
id frontMostApplication(const id&, SEL)
{
    return send<"frontmostApplication">(send<"sharedInstance">(id(classNamed<"SBMainWorkspace">())));
}

void didFinishLaunching(const id&, SEL, const id&) { }

void frontDisplayDidChange(const id&, SEL, const id&) { }

void processStateDidChange(const id&, SEL, const id&) { }

constexpr MethodDefinition methods[] {
    method<"_accessibilityFrontMostApplication", &frontMostApplication>(),
    method<"_handleApplicationProcessStateDidChangeNotification:", &processStateDidChange>(),
    method<"applicationDidFinishLaunching:", &didFinishLaunching>(),
    method<"frontDisplayDidChange:", &frontDisplayDidChange>(),
    classMethod<"sharedApplication", &sharedApplication>(),
};

} // namespace

extern const ClassDefinition SpringBoard_class { .name = "SpringBoard", .methods = methods };

} // namespace phone
