#include "platform/dispatch/run_loop.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"
#include "state/app_brightness_manager.h"
#include "state/app_mute_manager.h"
#include "state/immortalizer.h"
#include "support/temporary_device.h"
#include "surfaces/hidden_apps.h"

#include <gtest/gtest.h>

#include <utility>

namespace appledger {

using namespace platform;

namespace {

std::string journal;
id model;
std::string lastIcon;

id sharedInstance(const id& self, SEL)
{
    return send<"new">(self);
}
id currentModel(const id&, SEL)
{
    return model;
}
void reloadIcons(const id&, SEL)
{
    journal += "reload ";
}
void layout(const id&, SEL)
{
    journal += "layout ";
}
id iconOf(const id& self, SEL, const id& identifier)
{
    lastIcon = asString(identifier)->text();
    return lastIcon == "uninstalled" ? nil : self;
}
void accessoriesDidUpdate(const id&, SEL)
{
    journal += "icon " + lastIcon + " | ";
}
void stateDidChange(const id&, SEL, unsigned state, const id& identifier)
{
    journal += std::to_string(state) + " " + asString(identifier)->text() + " | ";
}

constexpr MethodDefinition controllerMethods[] { classMethod<"sharedInstance", sharedInstance>(),
    method<"model", currentModel>() };
constexpr MethodDefinition newerMethods[] { method<"reloadIcons", reloadIcons>(), method<"layout", layout>(),
    method<"applicationIconForBundleIdentifier:", iconOf>(),
    method<"_notifyAccessoriesDidUpdate", accessoriesDidUpdate>() };
constexpr MethodDefinition olderMethods[] { method<"layout", layout>() };
constexpr MethodDefinition serverMethods[] { classMethod<"sharedInstance", sharedInstance>(),
    method<"_didChangeApplicationState:forBundleIdentifier:", stateDidChange>() };
const ClassDefinition SBIconController_class { .name = "SBIconController", .methods = controllerMethods };
const ClassDefinition NewerModel_class { .name = "NewerModel", .methods = newerMethods };
const ClassDefinition OlderModel_class { .name = "OlderModel", .methods = olderMethods };
const ClassDefinition Server_class { .name = "UNSUserNotificationServer", .methods = serverMethods };

std::string noted(void (*callback)())
{
    callback();
    EXPECT_EQ(journal, "") << "not in the callback";
    runUntilIdle();
    return std::exchange(journal, {});
}

TEST(HiddenAppsChangedCallback, HasTheIconsLaidOutOnTheMainQueue)
{
    const support::TemporaryDevice device;
    EXPECT_EQ(noted(HiddenAppsChangedCallback), "") << "no Home Screen here";
    registerClass(SBIconController_class);
    EXPECT_EQ(noted(HiddenAppsChangedCallback), "") << "no model yet";
    model = send<"new">(id(registerClass(NewerModel_class)));
    EXPECT_EQ(noted(HiddenAppsChangedCallback), "reload ");
    model = send<"new">(id(registerClass(OlderModel_class)));
    EXPECT_EQ(noted(HiddenAppsChangedCallback), "layout ");
}

TEST(ImmortalizerChangedCallback, RefreshesTheApplicationsThatAreKeptAlive)
{
    const support::TemporaryDevice device;
    device.writeDomain({ { "ALImmortalForegroundApps", array({ "a", "uninstalled", "b" }) },
        { "ALImmortalNotifApps", array({ "b", "c" }) }, { "ALImmortalLockedApps", array({ "d" }) } });
    registerClass(SBIconController_class);
    registerClass(Server_class);
    model = send<"new">(id(registerClass(NewerModel_class)));
    EXPECT_EQ(noted(ImmortalizerChangedCallback), "icon a | icon b | 8 a | 8 uninstalled | 4 b | ");
    device.writeDomain({});
    EXPECT_EQ(noted(ImmortalizerChangedCallback), "");
}

TEST(AppMuteManager, ReadsItsListEachTimeAndKeepsTheLastReadableOne)
{
    const support::TemporaryDevice device;
    AppMuteManager& manager = AppMuteManager::sharedManager();
    EXPECT_FALSE(manager.isMuted("a"));
    device.write(GetAppMutePrefPath(), array({ number(1), string("a") }));
    EXPECT_TRUE(manager.isMuted("a"));
    EXPECT_FALSE(manager.isMuted("1"));
    device.put(GetAppMutePrefPath(), "damaged");
    EXPECT_TRUE(manager.isMuted("a"));
    device.write(GetAppMutePrefPath(), dictionary({ { "b", string("b") } }));
    EXPECT_TRUE(manager.isMuted("a") && !manager.isMuted("b"));
    device.write(GetAppMutePrefPath(), emptyArray());
    EXPECT_FALSE(manager.isMuted("a"));
}

TEST(AppBrightnessManager, RereadsItsTableWhenItIsTold)
{
    const support::TemporaryDevice device;
    device.write(appBrightnessPreferencePath(),
        dictionary({ { "a", real(0.25) }, { "b", number(1) }, { "c", string("0.5") }, { "d", boolean(true) } }));
    AppBrightnessManager& manager = AppBrightnessManager::sharedManager();
    EXPECT_EQ(manager.levelFor("a"), 0.25);
    EXPECT_EQ(manager.levelFor("b"), 1.0);
    EXPECT_FALSE(manager.levelFor("c"));
    EXPECT_EQ(manager.levelFor("d"), 1.0);
    device.write(appBrightnessPreferencePath(), dictionary({ { "b", real(0.75) } }));
    EXPECT_EQ(manager.levelFor("a"), 0.25);
    BrightnessChangedCallback();
    EXPECT_FALSE(manager.levelFor("a"));
    EXPECT_EQ(manager.levelFor("b"), 0.75);
    device.put(appBrightnessPreferencePath(), "damaged");
    BrightnessChangedCallback();
    EXPECT_FALSE(manager.levelFor("b"));
}

} // namespace

} // namespace appledger
