#include "front_fixture.h"

#include "phone/bulletinboard/push.h"
#include "phone/frontboard/scene_settings.h"
#include "phone/springboard/workspace/transitions.h"
#include "platform/darwin/notify.h"

/// What the Immortalizer changes where others see it: the notifications of an application in front, and the reasons for
/// which a scene is inactive.

using namespace platform;
using support::FrontPhone;
using support::Injection;

namespace {

void write(const FrontPhone& phone, support::TemporaryDevice::Pairs pairs)
{
    phone.device().writeDomain(pairs);
    CFNotificationCenterPostNotification("com.orbelix.appledger.immortalizer_changed");
    runUntilIdle();
}

/// What comes of a notification for the application that is in front.
std::string pushedInFront(FrontPhone& phone, const char* identifier)
{
    phone::bringToFront(FrontPhone::application(identifier));
    phone.journal();
    phone::push("bulletin", { .bundleIdentifier = identifier, .hasSound = true });
    return phone.journal();
}

/// The reasons that the system reads in an entity and in a handle of the application's scene.
std::string reasonsRead(const char* identifier)
{
    const id application = FrontPhone::application(identifier);
    const id entity = phone::makeSceneEntity(application);
    const id handle = send<"new">(id(objc_getClass("SBDeviceApplicationSceneHandle")));
    send<"setApplication:", void>(handle, application);
    send<"_setupSceneSettings:transitionContext:", void>(entity, phone::makeSceneSettings(false), nil);
    send<"_modifyApplicationSceneSettings:fromRequestContext:entity:", void>(
        handle, phone::makeSceneSettings(false), nil, entity);
    return std::to_string(send<"deactivationReasons", NSUInteger>(entity)) + " "
        + std::to_string(send<"deactivationReasons", NSUInteger>(handle));
}

} // namespace

TEST(ImmortalSurfaces, AStockPhoneLeavesANotificationToTheApplicationInFront)
{
    FrontPhone phone({}, "16.0", Injection::None);
    EXPECT_EQ(pushedInFront(phone, "a"), "note a: notification left to it");
    EXPECT_TRUE(phone::publishedNotifications().empty());
    phone::bringToFront(nil);
    phone.journal();
    phone::push("section", { .bundleIdentifier = "a" });
    EXPECT_EQ(phone.journal(), "published a | alerted a");
}

TEST(ImmortalSurfaces, AllowPushShowsTheNotificationsOfTheApplicationInFront)
{
    FrontPhone phone({});
    write(phone, { { "ALImmortalNotifApps", array({ "a" }) } });
    EXPECT_EQ(pushedInFront(phone, "a"), "note a: notification shown | published a | sounded a | alerted a");
    EXPECT_EQ(pushedInFront(phone, "b"), "note b: notification left to it");
    write(phone, { { "ALImmortalNotifApps", array({ "a" }) }, { "ALImmortalEnabled", boolean(false) } });
    EXPECT_EQ(pushedInFront(phone, "a"), "note a: notification left to it");
}

TEST(ImmortalSurfaces, AStockPhoneReadsTheDeactivationReasons)
{
    FrontPhone stock({}, "16.0", Injection::None);
    EXPECT_EQ(reasonsRead("a"), "1 1");
}

TEST(ImmortalSurfaces, DeactivationReasonsOfTheListedAreClearedBeforeTheSystemReadsThem)
{
    FrontPhone phone({});
    write(phone, { { "ALImmortalForegroundApps", array({ "a" }) } });
    EXPECT_EQ(reasonsRead("a"), "0 0");
    EXPECT_EQ(reasonsRead("b"), "1 1");
    write(phone, { { "ALImmortalForegroundApps", array({ "a" }) }, { "ALImmortalEnabled", boolean(false) } });
    EXPECT_EQ(reasonsRead("a"), "1 1");
}
