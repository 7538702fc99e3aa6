#include "phone/bulletinboard/push.h"
#include "phone/springboard/applications/application_process.h"
#include "phone/springboard/applications/applications.h"
#include "phone/springboard/icons/removal.h"
#include "phone/springboard/scenes/front_display.h"
#include "phone/springboard/switcher/switcher.h"
#include "phone/springboard/workspace/app_to_app.h"
#include "phone/springboard/workspace/transitions.h"
#include "platform/foundation/block.h"
#include "platform/runtime/hook.h"
#include "platform/runtime/message.h"
#include "support/phone_fixture.h"

/// What is in front and in the switcher, and how an application leaves the phone.

namespace {

using namespace platform;

constexpr const char* mail = "com.example.mail";
constexpr const char* notes = "com.example.notes";
constexpr const char* safariView = "com.apple.SafariViewService";

std::string* words = nullptr;

struct VisibilityHook {
    static void replacement(const id& self, SEL cmd, NSUInteger visibility, bool existed, const id& scene)
    {
        *words += asString(send<"bundleIdentifier">(send<"clientProcess">(scene)))->text().substr(12)
            + (visibility == 2 ? " in front; " : " behind; ");
        reinterpret_cast<void (*)(const id&, SEL, NSUInteger, bool, const id&)>(original)(
            self, cmd, visibility, existed, scene);
    }
    static inline IMP original = nullptr;
};

struct FrontDisplay : testing::Test {
    FrontDisplay()
    {
        for (const char* const identifier : { mail, notes })
            phone.device.write("/var/containers/Bundle/Application/" + std::string(identifier) + "/A.app/Info.plist",
                dictionary({ { "CFBundleIdentifier", string(identifier) } }));
        phone.start();
        words = &log;
        MSHookMessageEx(objc_getClass("SBMainDisplaySceneManager"),
            sel_registerName("_noteDidChangeToVisibility:previouslyExisted:forScene:"),
            reinterpret_cast<IMP>(&VisibilityHook::replacement), &VisibilityHook::original);
    }

    static std::string cards()
    {
        std::string text;
        for (const phone::SwitcherCard& card : phone::presentSwitcher()) {
            text += card.name + (card.running ? "" : " ended") + (card.foreground ? " front" : "");
            for (const std::string& other : card.sharedWith)
                text += " with " + other;
            text += "; ";
        }
        return text;
    }

    std::string log;
    support::Phone phone { "SpringBoard", "16.0" };
};

unsigned stateAtServer(const char* identifier)
{
    return send<"_applicationStateForBundleIdentifier:", unsigned>(
        send<"sharedInstance">(id(objc_getClass("UNSUserNotificationServer"))), string(identifier));
}

TEST_F(FrontDisplay, TwoApplicationsOnOneCardAreTwoScenesWithTheirOwnEnds)
{
    EXPECT_EQ(phone.enter("switcher", { notes, mail }), "opened com.example.notes | opened com.example.mail");
    EXPECT_EQ(log, "mail in front; notes in front; ") << "the primary one has the last word";
    EXPECT_EQ(
        cards(), "com.example.notes front with com.example.mail; com.example.mail front with com.example.notes; ");
    EXPECT_TRUE(phone::endProcessOf(notes));
    EXPECT_EQ(phone::applicationInFront(), phone::applicationNamed(mail));
    EXPECT_EQ(
        cards(), "com.example.notes ended with com.example.mail; com.example.mail front with com.example.notes; ");
    log.clear();
    phone::bringToFront(nil);
    EXPECT_EQ(log, "mail behind; ") << "the other has ended before";
    EXPECT_EQ(phone.enter("tap", { mail }), "opened com.example.mail");
    EXPECT_EQ(cards(), "com.example.mail front; com.example.notes ended; ") << "each has one card";
}

TEST_F(FrontDisplay, ACardOfTwoIsSwipedAwayWhole)
{
    phone.enter("switcher", { notes, mail });
    EXPECT_EQ(phone::swipeCardAway(mail), phone::SwipeOutcome::Killed);
    EXPECT_EQ(cards(), "");
    EXPECT_FALSE(phone::endProcessOf(notes));
    EXPECT_EQ(phone::applicationInFront(), nil);
}

TEST_F(FrontDisplay, AnApplicationTwiceOnACardIsOne)
{
    EXPECT_EQ(phone.enter("switcher", { notes, notes }), "opened com.example.notes");
    EXPECT_EQ(cards(), "com.example.notes front; ");
}

TEST_F(FrontDisplay, AViewServiceIsOneWithANameACardAndAnEnd)
{
    for (int time = 0; time < 2; ++time)
        EXPECT_TRUE(phone::openFromApplication({ .destination = safariView }).executed);
    EXPECT_EQ(cards(), "Safari View Service front; ");
    EXPECT_EQ(phone.enter("tap", { notes }), "opened com.example.notes");
    EXPECT_EQ(phone.enter("switcher", { safariView }), "opened com.apple.SafariViewService");
    EXPECT_EQ(cards(), "Safari View Service front; com.example.notes; ");
    EXPECT_EQ(phone::enterRoad("tap", { safariView }), phone::RoadOutcome::UnknownApplication) << "it has no icon";
    EXPECT_TRUE(phone::endProcessOf(safariView));
    EXPECT_EQ(phone::applicationInFront(), nil);
    EXPECT_FALSE(phone::endProcessOf(safariView));
    EXPECT_EQ(phone::swipeCardAway(safariView), phone::SwipeOutcome::Killed);
    EXPECT_EQ(cards(), "com.example.notes; ");
}

TEST_F(FrontDisplay, TheServerForNotificationsHearsOfAnEnd)
{
    phone.enter("tap", { notes });
    EXPECT_EQ(stateAtServer(notes), 8U);
    phone::endProcessOf(notes);
    EXPECT_EQ(stateAtServer(notes), 1U);
    phone::push("bulletin", { .bundleIdentifier = notes, .hasSound = true });
    EXPECT_EQ(phone.journal(), "published com.example.notes | sounded com.example.notes | alerted com.example.notes");
}

TEST_F(FrontDisplay, ARemovedApplicationEndsAndLeavesNothing)
{
    const id application = phone::applicationNamed(notes);
    phone.enter("switcher", { notes, mail });
    phone::bringToFront(nil);
    phone::push("bulletin", { .bundleIdentifier = notes, .badge = 3 });
    phone::push("bulletin", { .bundleIdentifier = mail });
    phone::bringToFront(application);
    EXPECT_TRUE(phone::requestRemoval("plain", notes).report.isRemoved);
    EXPECT_EQ(phone::applicationInFront(), nil);
    EXPECT_EQ(cards(), "com.example.mail; ");
    EXPECT_FALSE(phone::endProcessOf(notes));
    ASSERT_EQ(phone::publishedNotifications().size(), 1U);
    EXPECT_EQ(phone::publishedNotifications().front().bundleIdentifier, mail);
    EXPECT_EQ(phone::requestRemoval("plain", notes).error, "no such application is installed");
    // Whoever held on to it, as one who waits for its owner's finger does, opens nothing.
    const id request = phone::makeTransitionRequest({ .applications = { application }, .label = "LaunchFromIcon" });
    EXPECT_FALSE((send<"executeTransitionRequest:", bool>(
        send<"sharedInstance">(id(objc_getClass("SBMainWorkspace"))), request)));
    EXPECT_EQ(phone::applicationInFront(), nil);
}

TEST_F(FrontDisplay, NotificationsAndBadgesOutliveTheServerButNotTheirApplication)
{
    phone::push("section", { .bundleIdentifier = notes, .title = "A", .body = "B", .badge = -7, .hasSound = true });
    phone::push("bulletin", { .bundleIdentifier = mail });
    phone::push("bulletin", { .bundleIdentifier = "com.example.gone", .title = "not installed" });
    send<"setBadgeValue:", void>(phone::applicationNamed(notes), nil);
    // As the next SpringBoard has it.
    const id server = send<"new">(id(objc_getClass("BBServer")));
    send<"_loadBulletins", void>(server);
    std::string text;
    const id bulletins = send<"bulletins">(server);
    for (const id& bulletin : itemsOf(bulletins))
        text += describe(array({ send<"sectionID">(bulletin), send<"title">(bulletin), send<"message">(bulletin) }))
            + (send<"sound">(bulletin) ? " sound; " : "; ");
    EXPECT_EQ(text, "[\"com.example.notes\", \"A\", \"B\"] sound; [\"com.example.mail\", \"\", \"\"]; ");
    EXPECT_EQ(asInteger(send<"badgeValue">(phone::applicationNamed(notes))), -7);
}

TEST_F(FrontDisplay, EachApplicationsLastBadgeIsSetAtTheNextStart)
{
    phone::push("bulletin", { .bundleIdentifier = notes, .badge = 3 });
    phone::push("bulletin", { .bundleIdentifier = mail, .badgeText = "!" });
    phone::push("bulletin", { .bundleIdentifier = notes, .badgeText = "New" });
    phone::push("bulletin", { .bundleIdentifier = mail, .badge = 2 });
    phone::push("bulletin", { .bundleIdentifier = notes });
    for (const auto& identifier : { notes, mail })
        send<"setBadgeValue:", void>(phone::applicationNamed(identifier), nil);
    send<"_loadBulletins", void>(send<"new">(id(objc_getClass("BBServer"))));
    EXPECT_EQ(describe(send<"badgeValue">(phone::applicationNamed(notes))), "\"New\"");
    EXPECT_EQ(describe(send<"badgeValue">(phone::applicationNamed(mail))), "2");
}

TEST_F(FrontDisplay, TheNotificationCentreKeepsTheLatestThousand)
{
    std::vector<id> saved;
    for (int number = 0; number < 1005; ++number)
        saved.push_back(dictionary({ { "sectionID", string(mail) }, { "title", string(std::to_string(number)) } }));
    phone.device.write("/var/mobile/Library/BulletinBoard/bulletins.plist", array(std::move(saved)));
    const id server = send<"sharedServer">(id(objc_getClass("BBServer")));
    send<"_loadBulletins", void>(server);
    phone::push("bulletin", { .bundleIdentifier = mail, .title = "last" });
    const std::vector<phone::Notification> kept = phone::publishedNotifications();
    EXPECT_EQ(kept.size(), 1000U);
    EXPECT_EQ(kept.front().title, "6");
    EXPECT_EQ(kept.back().title, "last");
}

} // namespace
