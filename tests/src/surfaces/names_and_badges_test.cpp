#include "support/badges.h"
#include "support/phone_fixture.h"

#include "core/badges.h"
#include "phone/springboard/icons/icon_list.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/hook.h"
#include "platform/runtime/message.h"
#include "record/app_ledger.h"

#include <gtest/gtest.h>
#include <thread>

using namespace platform;
using appledger::ALAppLedger;
using support::Phone;

namespace {

const std::string notes = "com.example.notes";
const std::string mail = "com.example.mail";
constexpr const char* badgeChanged = "com.orbelix.appledger.badge_changed";

/// What the system's own setter was given.
std::string given;

int posts = 0;

void countPost()
{
    ++posts;
}

/// Under the library's hook, as it is installed before.
template <Name Setter> struct GivenBadge {
    static inline Original<void(id)> original;

    static void replacement(const id& self, SEL cmd, const id& badge)
    {
        given += "given " + describe(badge) + "; ";
        original(self, cmd, badge);
    }

    static void install()
    {
        if (const Class application = objc_getClass("SBApplication"))
            MSHookMessageEx(application, sel_registerName(Setter.view()), reinterpret_cast<IMP>(&replacement),
                &original.implementation);
    }
};

class Badges : public testing::TestWithParam<const char*> {
protected:
    void start(support::TemporaryDevice::Pairs domain = {})
    {
        phone_.device.writeDomain(domain);
        GivenBadge<"setBadgeValue:">::install();
        GivenBadge<"setBadgeNumberOrString:">::install();
        phone_.with({ notes, mail }).inject().start();
    }

    static id application(const std::string& identifier = notes)
    {
        return ALAppLedger::sbApplicationForBundleIdentifier(string(identifier));
    }

    static id record(const std::string& identifier = notes)
    {
        return ALAppLedger::forBundleIdentifier(string(identifier), nil);
    }

    static std::string panel(NSInteger count)
    {
        send<"setAppBadgeCount:", void>(record(), count);
        return outcome();
    }

    static std::string restore()
    {
        send<"restoreAppBadgeDefault", void>(record());
        return outcome();
    }

    static std::string system(const id& badge)
    {
        support::setBadge(application(), badge);
        return outcome();
    }

    /// What the setter was given, what the domain holds, and what the icon shows.
    static std::string outcome()
    {
        runUntilIdle();
        const auto defaults = appledger::synchronizedPreferences();
        const auto entry = [&](const char* key) { return describe(pairsOf(defaults->objectForKey(key))[notes]); };
        return std::exchange(given, "") + "real " + entry("ALRealBadges") + "; custom " + entry("ALCustomBadges")
            + "; shown " + describe(support::badgeOf(application()))
            + (defaults->boolForKey("ALIsPanelModifying") ? "; flag" : "");
    }

    Phone phone_ { "SpringBoard", GetParam() };
};

INSTANTIATE_TEST_SUITE_P(Versions, Badges, testing::Values("12.4", "13.0", "16.0"),
    [](const auto& version) { return "iOS" + std::string(version.param, 2); });

TEST_P(Badges, AreTheSystemsOnAStockPhone)
{
    GivenBadge<"setBadgeValue:">::install();
    GivenBadge<"setBadgeNumberOrString:">::install();
    phone_.with({ notes }).start();
    EXPECT_EQ(system(number(9)), "given 9; real nil; custom nil; shown 9");
    EXPECT_EQ(system(string("!")), "given \"!\"; real nil; custom nil; shown \"!\"");
    EXPECT_FALSE(fileExists(support::TemporaryDevice::domainFile));
}

TEST_P(Badges, OfTheOwnerStayAndTheSystemsAreRecorded)
{
    start();
    EXPECT_EQ(system(number(9)), "given 9; real 9; custom nil; shown 9");
    EXPECT_EQ(system(nil), "given nil; real 0; custom nil; shown nil");
    EXPECT_EQ(system(number(9)), "given 9; real 9; custom nil; shown 9");
    EXPECT_EQ(panel(2), "given 2; real 9; custom 2; shown 2");
    EXPECT_EQ(system(number(7)), "given 2; real 7; custom 2; shown 2");
    EXPECT_EQ(system(nil), "given 2; real 0; custom 2; shown 2");
    EXPECT_EQ(system(string("New")), "given 2; real \"New\"; custom 2; shown 2");
    EXPECT_EQ(panel(4), "given 2; real \"New\"; custom 4; shown 4") << "the setter still finds the old one";
    EXPECT_EQ(panel(0), "given 4; real \"New\"; custom 0; shown 0") << "nothing is a badge too";
    EXPECT_EQ(system(number(8)), "given 0; real 8; custom 0; shown 0");
    EXPECT_EQ(restore(), "given 8; real 8; custom nil; shown 8");
    EXPECT_EQ(restore(), "real 8; custom nil; shown 8") << "there is none to take back";
}

TEST_P(Badges, AreSeededByTheFirstOfTheOwnerAndByNoLaterOne)
{
    start();
    EXPECT_EQ(panel(2), "given 2; real 0; custom 2; shown 2");
    EXPECT_EQ(panel(3), "given 2; real 0; custom 3; shown 3");
    EXPECT_EQ(restore(), "given 0; real 0; custom nil; shown 0");
    EXPECT_EQ(panel(5), "given 5; real 0; custom 5; shown 5");
}

TEST_P(Badges, ThatWereThereBeforeTheLibraryAreSeeded)
{
    phone_.device.writeDomain({});
    GivenBadge<"setBadgeValue:">::install();
    GivenBadge<"setBadgeNumberOrString:">::install();
    phone_.with({ notes }).start();
    support::setBadge(application(), number(6));
    given.clear();
    phone_.inject();
    EXPECT_EQ(panel(2), "given 2; real 6; custom 2; shown 2");
    EXPECT_EQ(restore(), "given 6; real 6; custom nil; shown 6");
}

TEST_P(Badges, AreRestoredToNothingWhereNoneIsRecorded)
{
    start({ { "ALCustomBadges", dictionary({ { notes, number(2) } }) } });
    EXPECT_EQ(outcome(), "real nil; custom 2; shown 2");
    EXPECT_EQ(restore(), "given 0; real nil; custom nil; shown 0");
}

TEST_P(Badges, ArentRecordedWhileTheFlagStandsUntilThePanelsNextWrite)
{
    start({ { "ALIsPanelModifying", boolean(true) }, { "ALRealBadges", dictionary({ { notes, number(9) } }) } });
    EXPECT_EQ(system(number(5)), "given 5; real 9; custom nil; shown 5; flag");
    EXPECT_EQ(restore(), "real 9; custom nil; shown 5; flag") << "nothing to take back, so nothing is written";
    EXPECT_EQ(panel(2), "given 2; real 9; custom 2; shown 2");
    EXPECT_EQ(system(number(6)), "given 2; real 6; custom 2; shown 2");
    phone_.device.writeDomain({ { "ALIsPanelModifying", boolean(true) } }); // another process's panel
    EXPECT_EQ(system(number(7)), "given 7; real nil; custom nil; shown 2; flag");
    phone_.device.writeDomain(
        { { "ALIsPanelModifying", boolean(true) }, { "ALCustomBadges", dictionary({ { notes, number(2) } }) } });
    EXPECT_EQ(restore(), "given 0; real nil; custom nil; shown 0");
}

TEST_P(Badges, AreReadByTheGettersOfTheCacheAndByTheSettersOfTheDomain)
{
    start({ { "ALCustomBadges", dictionary({ { notes, number(2) } }) } });
    phone_.device.writeDomain({ { "ALCustomBadges", dictionary({ { notes, string("!") } }) } });
    EXPECT_EQ(describe(support::badgeOf(application())), "2") << "nobody has told";
    support::setBadge(application(), number(9));
    EXPECT_EQ(std::exchange(given, ""), "given \"!\"; ");
    EXPECT_EQ(describe(support::badgeOf(application())), "2");
    CFNotificationCenterPostNotification(badgeChanged);
    runUntilIdle();
    EXPECT_EQ(describe(support::badgeOf(application())), "\"!\"");
}

TEST_P(Badges, OfWrongTypesCountAsNone)
{
    const struct {
        const char* key;
        id value;
        const char* afterSystem;
        const char* afterPanel;
    } cases[] {
        { "ALRealBadges", array({ notes }), "given 5; real 5; custom nil; shown 5",
            "given 2; real 5; custom 2; shown 2" },
        { "ALRealBadges", dictionary({ { notes, array({ "9" }) } }), "given 5; real 5; custom nil; shown 5",
            "given 2; real 5; custom 2; shown 2" },
        { "ALCustomBadges", string(notes), "given 5; real 5; custom nil; shown 5",
            "given 2; real 5; custom 2; shown 2" },
        { "ALCustomBadges", dictionary({ { notes, dictionary({}) } }), "given 5; real 5; custom {}; shown 5",
            "given 2; real 5; custom 2; shown 2" },
        { "ALIsPanelModifying", string("no flag"), "given 5; real 5; custom nil; shown 5",
            "given 2; real 5; custom 2; shown 2" },
        { "ALIsPanelModifying", array({ "1" }), "given 5; real 5; custom nil; shown 5",
            "given 2; real 5; custom 2; shown 2" },
    };
    start();
    for (const auto& [key, value, afterSystem, afterPanel] : cases) {
        SCOPED_TRACE(key + (" " + describe(value)));
        phone_.device.writeDomain({ { key, value } });
        CFNotificationCenterPostNotification(badgeChanged);
        runUntilIdle();
        EXPECT_EQ(system(number(5)), afterSystem);
        EXPECT_EQ(panel(2), afterPanel);
        EXPECT_EQ(restore(), "given 5; real 5; custom nil; shown 5");
    }
    phone_.device.writeDomain({ { "ALCustomBadges", dictionary({ { notes, number(1) } }) },
        { "ALRealBadges", dictionary({ { notes, array({ "9" }) } }) } });
    EXPECT_EQ(restore(), "given 0; real [\"9\"]; custom nil; shown 0");
}

TEST_P(Badges, OfOthersStayWhateverIsWritten)
{
    const id others = dictionary({ { "com.example.gone", string("!") }, { mail, number(3) } });
    start({ { "ALRealBadges", others }, { "ALCustomBadges", others } });
    EXPECT_EQ(panel(2), "given 2; real 0; custom 2; shown 2");
    system(number(9));
    restore();
    const auto defaults = appledger::synchronizedPreferences();
    EXPECT_EQ(describe(defaults->objectForKey("ALCustomBadges")), describe(others));
    EXPECT_EQ(
        describe(defaults->objectForKey("ALRealBadges")), describe(dictionaryBySetting(others, notes, number(9))));
    // What another process writes next isn't written over by what this one wrote before.
    support::setBadge(application(), number(8));
    phone_.device.writeDomain({ { "ALRealBadges", others } });
    appledger::preferences()->setInteger(1, "other");
    EXPECT_EQ(describe(appledger::synchronizedPreferences()->objectForKey("ALRealBadges")), describe(others));
}

TEST_P(Badges, ThatCantBeWrittenHoldInThisProcessAndAreWrittenLater)
{
    start();
    const auto folder = phone_.device.at("/var/mobile/Library/Preferences");
    std::filesystem::remove_all(folder);
    std::ofstream(folder) << "in the way";
    EXPECT_EQ(system(number(9)), "given 9; real 9; custom nil; shown 9");
    EXPECT_EQ(panel(2), "given 2; real 9; custom 2; shown 2");
    EXPECT_EQ(system(number(7)), "given 2; real 7; custom 2; shown 2");
    std::filesystem::remove(folder);
    std::filesystem::create_directory(folder);
    EXPECT_EQ(system(number(8)), "given 2; real 8; custom 2; shown 2");
    const auto file = dictionaryWithContentsOfFile(support::TemporaryDevice::domainFile);
    EXPECT_EQ(describe(pairsOf(pairsOf(file)["ALRealBadges"])[notes]), "8");
    EXPECT_EQ(describe(pairsOf(pairsOf(file)["ALCustomBadges"])[notes]), "2");
}

TEST_P(Badges, OfAnOddApplicationAreHandedOn)
{
    start();
    const id lone = send<"new">(id(objc_getClass("SBApplication")));
    support::setBadge(lone, number(3));
    EXPECT_EQ(describe(support::badgeOf(lone)), "3");
    support::setBadge(application(), lone); // what no file can hold
    EXPECT_EQ(support::badgeOf(application()), lone);
    EXPECT_FALSE(appledger::synchronizedPreferences()->objectForKey("ALRealBadges"));

    CFNotificationCenterAddObserver(countPost, badgeChanged, CFNotificationSuspensionBehavior::Coalesce);
    given.clear();
    const id nameless = record();
    send<"setBundleIdentifier:", void>(nameless, nil);
    send<"setAppBadgeCount:", void>(nameless, NSInteger { 4 });
    EXPECT_EQ(std::exchange(given, ""), "given 4; ");
    send<"restoreAppBadgeDefault", void>(nameless);
    EXPECT_EQ(given, "");
    EXPECT_FALSE(appledger::synchronizedPreferences()->objectForKey("ALCustomBadges"));
    send<"restoreAppBadgeDefault", void>(record());
    runUntilIdle();
    EXPECT_EQ(posts, 0) << "of nothing that was stored";

    const id clip = record("com.example.clip");
    EXPECT_EQ((send<"appBadgeCount", NSInteger>(clip)), 0);
    send<"setAppBadgeCount:", void>(clip, NSInteger { 4 });
    EXPECT_EQ(given, "") << "no application";
    EXPECT_EQ(
        describe(appledger::synchronizedPreferences()->objectForKey("ALCustomBadges")), "{\"com.example.clip\": 4}");
}

TEST_P(Badges, AreCountedAsTheIconShowsThem)
{
    start();
    const struct {
        id badge;
        NSInteger count;
    } cases[] { { nil, 0 }, { number(-7), -7 }, { string("12 or so"), 12 }, { string("New"), 0 },
        { array({ "3" }), 0 } };
    for (const auto& [badge, count] : cases) {
        support::setBadge(application(), badge);
        EXPECT_EQ((send<"appBadgeCount", NSInteger>(record())), count) << describe(badge);
    }
    panel(5);
    EXPECT_EQ((send<"appBadgeCount", NSInteger>(record())), 5);
}

TEST(BadgeTables, LoseNothingToTwoWriters)
{
    const support::TemporaryDevice device;
    device.writeDomain({});
    constexpr int count = 40;
    const auto write = [](const std::string& prefix) {
        for (int index = 0; index < count; ++index) {
            const auto defaults = appledger::synchronizedPreferences();
            appledger::storeBadge(*defaults, "ALRealBadges", string(prefix + std::to_string(index)), number(index));
        }
    };
    std::thread first(write, "a");
    std::thread second(write, "b");
    first.join();
    second.join();
    EXPECT_EQ(pairsOf(appledger::synchronizedPreferences()->objectForKey("ALRealBadges")).size(), 2U * count);
}

class Names : public Badges {
protected:
    void startWithLockedMail() { start({ { "ALImmortalLockedApps", array({ mail }) } }); }

    static void rename(const std::string& identifier, const id& name)
    {
        send<"setCustomIconName:", void>(record(identifier), name);
    }

    static std::string nameOf(const std::string& identifier)
    {
        return describe(send<"displayName">(application(identifier)));
    }
};

INSTANTIATE_TEST_SUITE_P(Versions, Names, testing::Values("12.4", "16.0"),
    [](const auto& version) { return "iOS" + std::string(version.param, 2); });

TEST_P(Names, OfTheOwnerStandInThePlaceOfTheSystems)
{
    startWithLockedMail();
    const std::string former = nameOf(notes);
    rename(notes, string("Ünïcödé"));
    EXPECT_EQ(nameOf(notes), "\"Ünïcödé\"");
    EXPECT_EQ(describe(send<"name">(record())), "\"Ünïcödé\"");
    EXPECT_NE(nameOf(mail), "\"Ünïcödé\"");
    rename(notes, string(""));
    EXPECT_EQ(nameOf(notes), "\"\"");
    for (const id& none : { id(), number(3), array({ notes }) }) {
        rename(notes, none);
        EXPECT_EQ(nameOf(notes), former) << describe(none);
    }
}

TEST_P(Names, OfTheOwnerCarryTheLockSign)
{
    startWithLockedMail();
    rename(mail, string("Post"));
    EXPECT_EQ(nameOf(mail), "\"Post🔒\"");
    rename(mail, nil);
    EXPECT_EQ(nameOf(mail), "\"com.example.mail🔒\"");
}

} // namespace
