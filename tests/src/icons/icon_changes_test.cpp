#include "icons/icon_changes.h"

#include "icons/home_screen_refresh.h"
#include "phone/springboard/home/home_screen.h"
#include "platform/darwin/notify.h"
#include "platform/dispatch/clock.h"
#include "platform/foundation/files.h"
#include "platform/runtime/hook.h"
#include "support/phone_fixture.h"
#include "support/pictures.h"

/// Saving an icon, taking it back, and what follows on the Home Screen.

namespace appledger {

using namespace platform;
using namespace support;

namespace {

const std::string notes = "com.example.notes";
const std::string timer = "com.apple.mobiletimer";

std::string events;

void note(const std::string& what)
{
    events += (events.empty() ? "" : " | ") + what;
}

std::string takeEvents()
{
    return std::exchange(events, {});
}

/// Notes that the method was called, and calls it.
template <Name Class, Name Selector, class... A> struct Noted {
    static inline Original<void(A...)> original;

    static void replacement(const id& self, SEL cmd, platform::detail::ArgumentType<A>... arguments)
    {
        note(std::string(Class.view()) + " " + std::string(Selector.view()));
        original(self, cmd, arguments...);
    }

    static void install()
    {
        MSHookMessageEx(
            classNamed<Class>(), selector<Selector>(), reinterpret_cast<IMP>(&replacement), &original.implementation);
    }
};

class IconChanges : public testing::Test {
protected:
    IconChanges()
    {
        holdClock();
        phone_.with({ notes, timer }).inject().start();
        observe("com.appledger.clearcache", [] { note("com.appledger.clearcache"); });
        observe("com.appledger.forcerefresh", [] { note("com.appledger.forcerefresh"); });
        observe("com.orbelix.appledger.icon_changed", [] { note("com.orbelix.appledger.icon_changed"); });
    }

    static void observe(const char* name, CFNotificationCallback callback)
    {
        CFNotificationCenterAddObserver(callback, name, CFNotificationSuspensionBehavior::DeliverImmediately);
    }

    bool hasFile() const { return std::filesystem::exists(phone_.device.at(iconFile(notes))); }

    std::string fileMiddle() const
    {
        const auto bytes = readFile(iconFile(notes));
        return bytes ? middleOf(imageOf(*bytes)) : "none";
    }

    static std::string pending() { return describe(preferences()->objectForKey("ALLastModifiedIconBundleID")); }

    static std::string shown() { return middleOf(send<"image">(send<"iconImageView">(phone::iconViewOf(notes)))); }

    Phone phone_ { "SpringBoard", "16.0" };
};

TEST_F(IconChanges, AreInTheFileThenInTheDomainThenToldAndThenSeen)
{
    const std::string before = shown();
    saveCustomIcon(notes, imageOf(png(90, 60, [](int x, int) { return x < 15 || x >= 75 ? red : green; })), [this] {
        note("then, file " + fileMiddle() + ", pending " + pending());
        refreshIcon(notes, phone::iconViewOf(notes));
    });
    EXPECT_FALSE(hasFile()) << "off the main queue";
    runUntilIdle();
    EXPECT_EQ(takeEvents(),
        "then, file green, pending \"com.example.notes\" | com.appledger.clearcache | "
        "com.appledger.forcerefresh | com.orbelix.appledger.icon_changed");
    EXPECT_EQ(pending(), "nil") << "the notification has used it up";
    EXPECT_EQ(ALGetCacheToken(notes), "1");
    EXPECT_NE(before, "green");
    EXPECT_EQ(shown(), "green");
    EXPECT_EQ(colorAt(imageOf(*readFile(iconFile(notes))), 0, 0), "clear");

    resetCustomIcon(notes, [this] {
        note(std::string("then, ") + (hasFile() ? "file" : "no file") + ", pending " + pending());
        refreshIcon(notes, phone::iconViewOf(notes));
    });
    EXPECT_EQ(takeEvents(), "then, no file, pending \"com.example.notes\"");
    runUntilIdle();
    EXPECT_EQ(shown(), before);
    EXPECT_EQ(ALGetCacheToken(notes), "2");
}

TEST_F(IconChanges, NeedAPictureAndAnApplication)
{
    const auto then = [] { note("then"); };
    saveCustomIcon(notes, nil, then);
    saveCustomIcon("", imageOf(plainPng(green)), then);
    resetCustomIcon("", then);
    runUntilIdle();
    EXPECT_EQ(takeEvents(), "");
    EXPECT_FALSE(std::filesystem::exists(phone_.device.at(customIconDirectory)));
    resetCustomIcon(notes, then); // nothing to take back: told all the same
    runUntilIdle();
    EXPECT_EQ(takeEvents(), "then | com.appledger.clearcache");
}

TEST_F(IconChanges, ThatCantBeWrittenLeaveTheFormerFileAndAreTold)
{
    giveIcon(phone_.device, notes, plainPng(green));
    // A folder in the file's place can't be replaced by a file.
    std::filesystem::remove(phone_.device.at(iconFile(notes)));
    std::filesystem::create_directories(phone_.device.at(iconFile(notes)) / "full");
    saveCustomIcon(notes, imageOf(plainPng(blue)), [] { note("then"); });
    runUntilIdle();
    EXPECT_EQ(takeEvents(), "then | com.appledger.clearcache");
    EXPECT_TRUE(std::filesystem::is_directory(phone_.device.at(iconFile(notes)) / "full"));
    EXPECT_EQ(ALGetCacheToken(notes), "2");
}

TEST_F(IconChanges, OfAnotherIdentifierStayInsideTheFolder)
{
    saveCustomIcon("../../../../../../outside", imageOf(plainPng(green)), [] { note("then"); });
    runUntilIdle();
    EXPECT_FALSE(std::filesystem::exists(phone_.device.outside() / "outside.png"));
}

TEST_F(IconChanges, LeaveALiveIconsViewAlone)
{
    Noted<"SBIconImageView", "iconImageDidUpdate:", id>::install();
    phone::openFolderNamed("Utilities");
    runUntilIdle();
    const auto updated = [](const std::string& identifier) {
        takeEvents();
        send<"appLedgerPreferencesChanged", void>(send<"iconImageView">(phone::iconViewOf(identifier)));
        return takeEvents();
    };
    EXPECT_EQ(updated(notes), "SBIconImageView iconImageDidUpdate:");
    EXPECT_EQ(updated(timer), "");
}

TEST_F(IconChanges, OfAllIconsForgetEverythingAndLayTheHomeScreenOutAnew)
{
    giveIcon(phone_.device, notes, plainPng(green));
    ALForceRefreshIconsCallback();
    runUntilIdle();
    ASSERT_EQ(shown(), "green");
    std::filesystem::remove(phone_.device.at(iconFile(notes)));
    preferences()->setObject(string(timer), "ALLastModifiedIconBundleID");
    takeEvents();

    Noted<"SBHIconImageCache", "purgeAllCachedImages">::install();
    Noted<"SBHIconLabelImageCache", "removeAllImages">::install();
    Noted<"SBHIconModel", "reloadIcons">::install();
    Noted<"SBHIconManager", "layoutIconListsWithAnimationType:forceRelayout:", NSInteger, bool>::install();
    phone::takeJournal();
    refreshAllIcons(notes, [] { note("then"); });
    runUntilIdle();
    EXPECT_EQ(takeEvents(),
        "com.appledger.clearcache | SBHIconImageCache purgeAllCachedImages | SBHIconLabelImageCache removeAllImages | "
        "SBHIconModel reloadIcons | SBHIconManager layoutIconListsWithAnimationType:forceRelayout: | then | "
        "com.appledger.forcerefresh | com.orbelix.appledger.icon_changed | SBHIconImageCache purgeAllCachedImages");
    EXPECT_NE(shown(), "green");
    EXPECT_EQ(ALGetCacheToken(timer), "0") << "no application is named: all are meant";
    EXPECT_NE(phone_.journal().find("haptic success"), std::string::npos);
}

TEST_F(IconChanges, OfAllIconsNeedNothingOfTheSystem)
{
    // A process without a Home Screen: what is missing is passed over, and the others are told.
    layOutEveryIcon();
    refreshIcon("com.example.gone", nil);
    runUntilIdle();
    EXPECT_NE(takeEvents().find("com.orbelix.appledger.icon_changed"), std::string::npos);
}

} // namespace

} // namespace appledger
