#include "phone/springboard/applications/application_process.h"
#include "phone/springboard/home/home_screen.h"
#include "platform/dispatch/clock.h"
#include "platform/dispatch/main_queue.h"
#include "platform/graphics/geometry.h"
#include "platform/runtime/hook.h"
#include "platform/runtime/message.h"
#include "support/badges.h"
#include "support/phone_fixture.h"

#include <gtest/gtest.h>

/// What stands on the Home Screen's icons while nothing happens, and what makes it change.

using namespace platform;
using namespace std::chrono_literals;

namespace {

const std::string notes = "com.example.notes";
const std::string bank = "com.example.bank";
const std::string safari = "com.apple.mobilesafari"; // stands in the dock
const std::string timer = "com.apple.mobiletimer"; // stands in a folder

int layouts = 0;

template <Name Class> struct CountedLayout {
    static inline Original<void()> original;

    static void replacement(const id& self, SEL cmd)
    {
        ++layouts;
        original(self, cmd);
    }

    static void install()
    {
        MSHookMessageEx(classNamed<Class>(), selector<"layoutSubviews">(), reinterpret_cast<IMP>(&replacement),
            &original.implementation);
    }
};

using Pairs = support::TemporaryDevice::Pairs;

id list(const std::vector<std::string>& identifiers)
{
    std::vector<id> items;
    for (const std::string& identifier : identifiers)
        items.push_back(string(identifier));
    return array(std::move(items));
}

class IconViews : public testing::TestWithParam<const char*> {
protected:
    IconViews()
    {
        holdClock();
        phone_.with({ notes, bank, safari, timer });
    }

    enum class Injected { Nothing, Library };

    void start(Injected injected, const Pairs& pairs = {})
    {
        phone_.device.writeDomain(pairs);
        if (injected == Injected::Library)
            phone_.inject();
        phone_.start();
        settle();
    }

    void tellOf(const Pairs& pairs, const char* notification)
    {
        phone_.device.writeDomain(pairs);
        CFNotificationCenterPostNotification(notification);
        settle();
    }

    static void settle() { advanceClock(1s); }

    void openAndLeave(const std::string& identifier)
    {
        phone_.enter("tap", { identifier });
        settle();
        phone::pressHome();
        settle();
    }

    static id viewThat(const std::function<bool(const id&)>& fits)
    {
        id found;
        phone::forEachKnownIconView([&](const id& view) {
            if (fits(send<"icon">(view)))
                found = view;
        });
        return found;
    }

    static id viewOf(const std::string& identifier)
    {
        return viewThat([&](const id& icon) { return asString(ask<"applicationBundleID">(icon)) == identifier; });
    }

    static id folderView()
    {
        return viewThat([](const id& icon) { return isKindOfClass(icon, objc_getClass("SBFolderIcon")); });
    }

    /// "none", "runs" or "ended", by what is drawn in the view.
    static std::string accessoryOf(const id& view)
    {
        for (const id& part : itemsOf(send<"subviews">(view))) {
            const bool isAccessory = object_getClass(part) == objc_getClass("UIView")
                && send<"bounds", CGRect>(part).size == CGSizeMake(7, 7) && !send<"isHidden", bool>(part);
            if (!isAccessory)
                continue;
            double red = 0;
            double green = 0;
            double blue = 0;
            double alpha = 0;
            send<"getRed:green:blue:alpha:", bool>(send<"backgroundColor">(part), &red, &green, &blue, &alpha);
            return green > blue ? "runs" : "ended";
        }
        return "none";
    }

    static std::string dotOf(const id& view)
    {
        const id dot = send<"al_runningDot">(view);
        return !dot ? "none" : send<"isHidden", bool>(dot) ? "hidden" : "shown";
    }

    support::Phone phone_ { "SpringBoard", GetParam() };
};

INSTANTIATE_TEST_SUITE_P(Versions, IconViews, testing::Values("12.4", "14.8", "16.0"),
    [](const auto& version) { return "iOS" + std::string(version.param, 2); });

constexpr const char* immortalChanged = "com.orbelix.appledger.immortalizer_changed";
constexpr const char* indicatorChanged = "com.merrowlane.appledger.runningindicator-changed";

TEST_P(IconViews, AnIdleScreenIsNeitherLaidOutNorWoken)
{
    const bool withLibrary = GetParam() != std::string_view("14.8");
    start(withLibrary ? Injected::Library : Injected::Nothing,
        { { "RunningIndicatorEnabled", boolean(true) }, { "ALImmortalForegroundApps", list({ notes, timer }) } });
    openAndLeave(notes);
    openAndLeave(safari);
    support::setBadge(send<"application">(send<"icon">(viewOf(bank))), number(3));
    EXPECT_TRUE(phone::openFolderNamed("Utilities"));
    settle();
    EXPECT_TRUE(phone::closeFolder());
    settle();
    EXPECT_EQ(accessoryOf(viewOf(notes)), withLibrary ? "runs" : "none");
    CountedLayout<"UIView">::install();
    CountedLayout<"SBIconView">::install();

    EXPECT_FALSE(runUntilIdle());
    const auto next = detail::MainQueue::shared().nextTime();
    constexpr auto idle = 10s; // of the minute, whose end the clock waits for
    EXPECT_TRUE(!next || *next > clockNow() + idle) << "something ticks";
    advanceClock(idle);
    EXPECT_EQ(layouts, 0);
    send<"setNeedsLayout", void>(viewOf(notes));
    settle();
    EXPECT_EQ(layouts, 1) << "what is counted is counted, and one layout brings no other";
}

TEST_P(IconViews, AnAccessoryStaysUntilTheNextEventOfItsIcon)
{
    start(Injected::Library, { { "ALImmortalForegroundApps", list({ notes }) } });
    EXPECT_EQ(accessoryOf(viewOf(notes)), "ended");
    openAndLeave(notes);
    EXPECT_EQ(accessoryOf(viewOf(notes)), "runs");
    tellOf({ { "ALImmortalForegroundApps", list({ bank }) } }, immortalChanged);
    EXPECT_EQ(accessoryOf(viewOf(bank)), "ended") << "who has come onto the list is told at once";
    openAndLeave(bank);
    send<"setNeedsLayout", void>(viewOf(notes));
    settle();
    EXPECT_EQ(accessoryOf(viewOf(notes)), "runs") << "who has left it isn't, whatever happens to others";
    phone::endProcessOf(notes);
    settle();
    EXPECT_EQ(accessoryOf(viewOf(notes)), "none");
    EXPECT_EQ(accessoryOf(viewOf(bank)), "runs");
}

TEST_P(IconViews, AnAccessoryIsDrawnInTheDockToo)
{
    start(Injected::Library);
    EXPECT_EQ(accessoryOf(viewOf(safari)), "none") << "none of the system's own";
    tellOf({ { "ALImmortalForegroundApps", list({ safari }) } }, immortalChanged);
    EXPECT_EQ(accessoryOf(viewOf(safari)), "ended");
    openAndLeave(safari);
    EXPECT_EQ(accessoryOf(viewOf(safari)), "runs");
}

TEST_P(IconViews, AFolderFollowsWhatStandsInIt)
{
    start(Injected::Library, { { "ALImmortalForegroundApps", list({ timer }) } });
    EXPECT_EQ(accessoryOf(folderView()), "ended");
    openAndLeave(timer);
    EXPECT_EQ(accessoryOf(folderView()), "runs");
    EXPECT_TRUE(phone::openFolderNamed("Utilities"));
    settle();
    EXPECT_EQ(accessoryOf(viewOf(timer)), "runs");
    EXPECT_TRUE(phone::closeFolder());
    settle();
    EXPECT_EQ(accessoryOf(folderView()), "runs");
    phone::endProcessOf(timer);
    settle();
    EXPECT_EQ(accessoryOf(folderView()), "ended");
}

TEST_P(IconViews, DotsComeAndGoWithTheirProcesses)
{
    start(Injected::Library, { { "RunningIndicatorEnabled", boolean(true) } });
    for (const std::string& identifier : { notes, safari }) {
        EXPECT_EQ(dotOf(viewOf(identifier)), "none");
        openAndLeave(identifier);
        EXPECT_EQ(dotOf(viewOf(identifier)), "shown");
        phone::endProcessOf(identifier);
        settle();
        EXPECT_EQ(dotOf(viewOf(identifier)), "hidden");
    }
}

TEST_P(IconViews, DotsFollowTheSwitchWhereTheSystemHasAnIconManager)
{
    start(Injected::Library);
    openAndLeave(notes);
    const bool atOnce = GetParam() != std::string_view("12.4");
    tellOf({ { "RunningIndicatorEnabled", boolean(true) } }, indicatorChanged);
    EXPECT_EQ(dotOf(viewOf(notes)), atOnce ? "shown" : "none");
    openAndLeave(notes);
    EXPECT_EQ(dotOf(viewOf(notes)), "shown");
    tellOf({ { "RunningIndicatorEnabled", boolean(false) } }, indicatorChanged);
    EXPECT_EQ(dotOf(viewOf(notes)), atOnce ? "hidden" : "shown");
}

} // namespace
