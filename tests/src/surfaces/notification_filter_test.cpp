#include "support/phone_fixture.h"

#include "phone/bulletinboard/push.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"
#include "surfaces/notification_filter.h"

#include <gtest/gtest.h>

using namespace platform;
using namespace appledger;
using support::Phone;

namespace {

const std::string notes = "com.example.notes";

/// A system's object of any shape: what isn't set is answered with nil.
class Shape : public NSObject {
public:
    id bulletin;
    id bundleIdentifier;
    id notificationRequest;
    id sectionID;
    id sectionIdentifier;
    id sound = string("default");
};

constexpr MethodDefinition shapeMethods[] {
    getter<"bulletin", &Shape::bulletin>(),
    getter<"bundleIdentifier", &Shape::bundleIdentifier>(),
    getter<"notificationRequest", &Shape::notificationRequest>(),
    getter<"sectionID", &Shape::sectionID>(),
    getter<"sectionIdentifier", &Shape::sectionIdentifier>(),
    setter<"setSound:", &Shape::sound>(),
    getter<"sound", &Shape::sound>(),
};

const ClassDefinition Shape_class { .name = "Shape", .allocate = allocate<Shape>, .methods = shapeMethods };

struct Answers {
    id sectionID {};
    id sectionIdentifier {};
    id bundleIdentifier {};
    id notificationRequest {};
    id bulletin {};
};

id shape(const Answers& answers)
{
    id object = send<"new">(id(registerClass(Shape_class)));
    Shape& fields = static_cast<Shape&>(*object);
    fields.sectionID = answers.sectionID;
    fields.sectionIdentifier = answers.sectionIdentifier;
    fields.bundleIdentifier = answers.bundleIdentifier;
    fields.notificationRequest = answers.notificationRequest;
    fields.bulletin = answers.bulletin;
    return object;
}

TEST(NotificationIdentifier, IsTheFirstTextThatTheObjectOrWhatItWrapsGives)
{
    const id a = string("a");
    const id b = string("b");
    const struct {
        const char* what;
        id object;
        std::string identifier;
    } cases[] = {
        { "nil", nil, "nil" },
        { "an object of another kind", string("x"), "nil" },
        { "nothing told", shape({}), "nil" },
        { "section", shape({ .sectionID = a, .sectionIdentifier = b, .bundleIdentifier = b }), "\"a\"" },
        { "empty section", shape({ .sectionID = string(""), .sectionIdentifier = a }), "\"a\"" },
        { "section that is a number", shape({ .sectionID = number(3), .sectionIdentifier = a }), "\"a\"" },
        { "bundle identifier", shape({ .sectionIdentifier = array({ "b" }), .bundleIdentifier = a }), "\"a\"" },
        { "own before wrapped", shape({ .bundleIdentifier = a, .notificationRequest = shape({ .sectionID = b }) }),
            "\"a\"" },
        { "request's section", shape({ .notificationRequest = shape({ .sectionID = a, .bundleIdentifier = b }) }),
            "\"a\"" },
        { "request's identifier", shape({ .notificationRequest = shape({ .sectionIdentifier = a }) }), "\"a\"" },
        { "request's bundle", shape({ .notificationRequest = shape({ .bundleIdentifier = a }) }), "\"a\"" },
        { "request before bulletin",
            shape({ .notificationRequest = shape({ .bundleIdentifier = a }), .bulletin = shape({ .sectionID = b }) }),
            "\"a\"" },
        { "bulletin behind an empty request",
            shape({ .notificationRequest = shape({ .sectionID = string("") }), .bulletin = shape({ .sectionID = a }) }),
            "\"a\"" },
        { "bulletin's bundle", shape({ .bulletin = shape({ .bundleIdentifier = a }) }), "\"a\"" },
        { "wrapped twice", shape({ .bulletin = shape({ .bulletin = shape({ .sectionID = a }) }) }), "nil" },
        { "a bulletin that is a text", shape({ .bulletin = a }), "nil" },
    };
    for (const auto& row : cases)
        EXPECT_EQ(describe(ALExtractNotificationBundleID(row.object)), row.identifier) << row.what;
}

TEST(NotificationSound, IsTakenOffTheObjectAndOffTheBulletinThatItWraps)
{
    const id bulletin = shape({});
    const id request = shape({ .bulletin = bulletin });
    ALStripNotificationSound(request);
    EXPECT_FALSE(send<"sound">(request));
    EXPECT_FALSE(send<"sound">(bulletin));
    ALStripNotificationSound(nil);
    ALStripNotificationSound(string("no sound here"));
}

class NotificationFilter : public testing::Test {
protected:
    struct Lists {
        id blocked {};
        id muted {};
        id hidden {};
    };

    void want(const Lists& lists) const
    {
        phone_.device.writeDomain({ { "ALBlockedNotifications", lists.blocked },
            { "ALMutedNotifications", lists.muted }, { "ALHiddenApps", lists.hidden } });
        for (const char* const name : { "notifications_changed", "hidden_changed" })
            CFNotificationCenterPostNotification(std::string("com.orbelix.appledger.") + name);
        runUntilIdle();
    }

    std::string push(std::string_view road)
    {
        phone::push(road, { .bundleIdentifier = notes, .title = "Note", .hasSound = true });
        return phone_.journal();
    }

    std::string pushOnEveryRoad()
    {
        std::string first = push("bulletin");
        EXPECT_EQ(push("request"), first);
        return first + " / " + push("section");
    }

    static id server() { return send<"sharedServer">(id(objc_getClass("BBServer"))); }

    Phone phone_ { "SpringBoard", "16.0" };
};

const id listed = array({ "com.example.mail", "com.example.notes" });
const std::string loud = "published com.example.notes | sounded com.example.notes | alerted com.example.notes";
const std::string silent = "published com.example.notes";

TEST_F(NotificationFilter, IsNotThereOnAStockPhone)
{
    phone_.with({ notes }).start();
    want({ .blocked = listed, .muted = listed, .hidden = listed });
    EXPECT_EQ(pushOnEveryRoad(), loud + " / " + loud);
}

TEST_F(NotificationFilter, DropsTheBlockedAndSilencesTheMutedOnEveryRoad)
{
    phone_.with({ notes }).inject().start();
    const id wrongType = string(notes);
    const struct {
        const char* what;
        Lists lists;
        std::string outcome;
    } cases[] = {
        { "no policy", {}, loud + " / " + loud },
        { "blocked", { .blocked = listed }, " / " },
        { "muted", { .muted = listed }, silent + " / " + silent },
        { "blocked and muted", { .blocked = listed, .muted = listed }, " / " },
        { "hidden", { .hidden = listed }, " / published com.example.notes | sounded com.example.notes" },
        { "hidden and muted", { .muted = listed, .hidden = listed }, " / " + silent },
        { "others", { .blocked = array({ "a" }), .muted = array({ "b" }), .hidden = array({ "c" }) },
            loud + " / " + loud },
        { "lists that are none", { wrongType, wrongType, wrongType }, loud + " / " + loud },
    };
    for (const auto& row : cases) {
        want(row.lists);
        EXPECT_EQ(pushOnEveryRoad(), row.outcome) << row.what;
    }
}

TEST_F(NotificationFilter, LeavesAllOfAMutedBulletinButItsSound)
{
    phone_.with({ notes }).inject().start();
    want({ .muted = listed });
    phone::push("request", { .bundleIdentifier = notes, .title = "Note", .badge = 3, .hasSound = true });
    const std::vector<phone::Notification> held = phone::publishedNotifications();
    ASSERT_EQ(held.size(), 1U);
    EXPECT_EQ(held[0].title, "Note");
    EXPECT_EQ(held[0].badge, 3);
    EXPECT_FALSE(held[0].hasSound);
    const id applications = send<"sharedInstance">(id(objc_getClass("SBApplicationController")));
    EXPECT_EQ(asInteger(send<"badgeValue">(send<"applicationWithBundleIdentifier:">(applications, string(notes)))), 3);
}

TEST_F(NotificationFilter, FollowsTheSectionOnlyWhereTheObjectTellsNone)
{
    phone_.with({ notes }).inject().start();
    want({ .blocked = array({ "com.example.notes", "" }) });
    const auto published = [&](const id& request, const id& section) {
        send<"_publishBulletinRequest:forSectionID:forDestinations:", void>(
            server(), request, section, NSUInteger { 1 });
        return phone_.journal().starts_with("published");
    };
    const auto request = [](const id& section) {
        id object = send<"new">(id(objc_getClass("BBBulletinRequest")));
        id bulletin = send<"new">(id(objc_getClass("BBBulletin")));
        send<"setSectionID:", void>(bulletin, section);
        send<"setBulletin:", void>(object, bulletin);
        return object;
    };
    const id other = string("com.example.other");
    EXPECT_FALSE(published(request(nil), string(notes)));
    EXPECT_FALSE(published(request(string(notes)), other));
    EXPECT_TRUE(published(request(other), string(notes)));
    EXPECT_TRUE(published(request(nil), other));
    EXPECT_FALSE(published(request(nil), string(""))) << "the list holds the empty identifier";
    EXPECT_FALSE(published(nil, string(notes)));
    EXPECT_FALSE(published(request(nil), nil)) << "the system itself publishes nothing without a section";
}

TEST_F(NotificationFilter, MutesNoSectionThatIsEmpty)
{
    phone_.with({ notes }).inject().start();
    want({ .muted = array({ "" }) });
    const id request = shape({});
    send<"_publishBulletinRequest:forSectionID:forDestinations:", void>(
        server(), request, string(""), NSUInteger { 1 });
    EXPECT_TRUE(send<"sound">(request));
}

TEST_F(NotificationFilter, KeepsTheAlertOfAMutedRequestFromSoundingWithoutTouchingIt)
{
    phone_.with({ notes }).inject().start();
    want({ .muted = listed });
    const id request = shape({ .sectionIdentifier = string(notes), .bulletin = shape({}) });
    const id controller = send<"sharedInstance">(id(objc_getClass("SBNCAlertingController")));
    send<"alertOnPresentationForNotificationRequest:presentingDestination:", void>(controller, request, nil);
    EXPECT_EQ(phone_.journal(), "");
    EXPECT_TRUE(send<"sound">(request));
}

TEST_F(NotificationFilter, ReloadsTheMutedListAloneOnItsOwnChange)
{
    phone_.with({ notes }).inject().start();
    phone_.device.writeDomain({ { "ALBlockedNotifications", listed }, { "ALMutedNotifications", listed } });
    CFNotificationCenterPostNotification("com.orbelix.appledger.notifications_muted_changed");
    runUntilIdle();
    EXPECT_EQ(push("bulletin"), silent);
}

} // namespace
