#include "front_fixture.h"

#include "core/hook_group.h"
#include "core/policies.h"
#include "phone/springboard/levels/volume_hud.h"
#include "platform/darwin/images.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/exception.h"
#include "platform/runtime/hook.h"
#include "state/app_idle_timer_manager.h"

using namespace platform;
using namespace std::chrono_literals;
using support::FrontPhone;
using support::Injection;

namespace {

const support::FrontPolicies everything {
    .muted = { "a", "b" }, .brightness = { { "a", 0.3 }, { "b", 0.9 } }, .keptAwake = { "a", "b" }
};

const std::string keptAwake = " AppLedger_KeepAwake";

} // namespace

TEST(FrontApplication, ChangesNothingOnAStockPhone)
{
    FrontPhone phone(everything, "16.0", Injection::None);
    phone::bringToFront(FrontPhone::application("a"));
    EXPECT_EQ(phone.journal(), "");
    EXPECT_EQ(phone.state(), "0.80 0.60");
}

namespace {

Original<double()> original_brightness;

double UIScreen_brightness(const id& self, SEL cmd)
{
    phone::journal(phone::JournalEvent::Note, "brightness asked");
    return original_brightness(self, cmd);
}

} // namespace

TEST(FrontApplication, HasItsVolumeBrightnessAndWakefulnessInOneOrder)
{
    FrontPhone phone(everything);
    MSHookMessageEx(objc_getClass("UIScreen"), sel_registerName("brightness"),
        reinterpret_cast<IMP>(&UIScreen_brightness), &original_brightness.implementation);
    FrontPhone::visibility("a", 2);
    EXPECT_EQ(phone.journal(),
        "volume Audio/Video: 0.00 | note brightness asked | brightness BKSDisplayBrightnessSet: 0.30 1 | "
        "brightness SBDisplayBrightnessController: 0.30 | brightness SBBrightnessController: 0.30 | "
        "brightness UIScreen: 0.31 | brightness UIScreen: 0.30 | idle timer held: AppLedger_KeepAwake");
    EXPECT_EQ(phone.state(), "0.00 0.30" + keptAwake);
    FrontPhone::visibility("a", 1);
    EXPECT_EQ(phone.state(), "0.80 0.60");
}

// Each row of the managers' tables, over all roads by which an event comes.
TEST(FrontApplication, FollowsWhatIsInFront)
{
    FrontPhone phone(everything);
    const auto a = FrontPhone::application("a");
    const auto b = FrontPhone::application("b");
    const auto c = FrontPhone::application("c");
    const struct {
        const char* what;
        id front;
        std::string state;
    } steps[] {
        { "from one without to one without", c, "0.80 0.60" },
        { "to a listed one", a, "0.00 0.30" + keptAwake },
        { "again", a, "0.00 0.30" + keptAwake },
        { "to another listed one", b, "0.00 0.90" + keptAwake },
        { "to the Home Screen", nil, "0.80 0.60" },
        { "to a listed one", b, "0.00 0.90" + keptAwake },
        { "straight to one without", c, "0.80 0.60" },
    };
    for (const auto& step : steps) {
        phone::bringToFront(step.front);
        EXPECT_EQ(phone.state(), step.state) << step.what;
    }
    FrontPhone::display("a");
    FrontPhone::display("b");
    FrontPhone::visibility("a", 1);
    EXPECT_EQ(phone.state(), "0.00 0.90" + keptAwake) << "a late event of the one that was replaced";
    for (const NSUInteger unknown : { 0UL, 3UL }) {
        FrontPhone::visibility("b", unknown);
        EXPECT_EQ(phone.state(), "0.00 0.90" + keptAwake) << unknown;
    }
    FrontPhone::visibility("b", 1);
    EXPECT_EQ(phone.state(), "0.80 0.60");
    FrontPhone::display("");
    EXPECT_EQ(phone.state(), "0.80 0.60") << "nothing was in front";
    phone::bringToFront(a);
    phone.state();
    phone::applicationDidExit(a);
    EXPECT_EQ(phone.state(), "0.80 0.60") << "it exits";
}

namespace {

id answers(const id&, SEL)
{
    return string("a");
}
id nothing(const id&, SEL)
{
    return nil;
}
id self(const id& self, SEL)
{
    return self;
}
id raises(const id&, SEL)
{
    throw NSException("NSGenericException", "no");
}
id applicationA(const id&, SEL)
{
    return FrontPhone::application("a");
}
id five(const id&, SEL)
{
    return number(5);
}

/// A new object of a class with these methods.
id object(const char* name, std::span<const MethodDefinition> methods)
{
    auto* const definition = new ClassDefinition { .name = name, .methods = methods };
    return send<"new">(id(registerClass(*definition)));
}

} // namespace

TEST(FrontApplication, IsFoundInWhateverTheSystemHandsOver)
{
    static constexpr MethodDefinition applicationBundleID[] { method<"applicationBundleID", answers>(),
        method<"bundleIdentifier", raises>() };
    static constexpr MethodDefinition nilFirst[] { method<"applicationBundleID", nothing>(),
        method<"bundleIdentifier", answers>() };
    static constexpr MethodDefinition bundleIdentifier[] { method<"bundleIdentifier", answers>(),
        method<"application", raises>() };
    static constexpr MethodDefinition application[] { method<"application", applicationA>() };
    static constexpr MethodDefinition itself[] { method<"application", self>() };
    static constexpr MethodDefinition notText[] { method<"bundleIdentifier", five>() };
    static constexpr MethodDefinition raising[] { method<"bundleIdentifier", raises>() };
    const struct {
        const char* what;
        id display;
        bool isA;
        bool leaves = false; ///< nobody is in front
    } cases[] {
        { "the first answer counts", object("First", applicationBundleID), true },
        { "a nil answer isn't passed over to the next selector", object("NilFirst", nilFirst), false, true },
        { "the second", object("Second", bundleIdentifier), true },
        { "its application", object("Application", application), true },
        { "an application without an identifier", object("Itself", itself), false, true },
        { "an identifier that is no text", object("NotText", notText), false, true },
        { "an exception is dropped with its event", object("Raising", raising), false },
        { "an object without an application raises", string("text"), false },
    };
    FrontPhone phone({ .brightness = { { "a", 0.3 } }, .keptAwake = { "b" } });
    for (const auto& each : cases) {
        FrontPhone::display("b");
        phone.state();
        send<"frontDisplayDidChange:", void>(FrontPhone::springBoard(), each.display);
        EXPECT_EQ(phone.state(),
            each.isA          ? "0.80 0.30"
                : each.leaves ? "0.80 0.60"
                              : "0.80 0.60" + keptAwake)
            << each.what;
    }
    phone::bringToFront(FrontPhone::application("b"));
    FrontPhone::display("a");
    EXPECT_EQ(phone.state(), "0.80 0.30");
    FrontPhone::display("");
    EXPECT_EQ(phone.state(), "0.80 0.60" + keptAwake) << "no display: the one that is front-most";
    FrontPhone::display("a");
    phone.state();
    send<"_handleApplicationProcessStateDidChangeNotification:", void>(FrontPhone::springBoard(), nil);
    EXPECT_EQ(phone.state(), "0.80 0.60" + keptAwake) << "a process's state";

    const id manager = send<"sharedInstance">(id(objc_getClass("SBMainDisplaySceneManager")));
    static constexpr MethodDefinition raisingScene[] { method<"clientProcess", raises>() };
    static constexpr MethodDefinition unnamedScene[] { method<"clientProcess", nothing>() };
    for (const id& scene : { object("RaisingScene", raisingScene), object("UnnamedScene", unnamedScene), string("") })
        send<"_noteDidChangeToVisibility:previouslyExisted:forScene:", void>(manager, 2UL, true, scene);
    EXPECT_EQ(phone.state(), "0.80 0.60" + keptAwake);
}

TEST(MutedApplication, RestoresWhatIsWorthRestoring)
{
    const struct {
        double before;
        std::string after;
    } cases[] { { 0.7, "0.70" }, { 0.011, "0.01" }, { 0.01, "0.50" }, { 0.005, "0.50" }, { 0.0, "0.50" },
        { 1.0, "1.00" } };
    FrontPhone phone({ .muted = { "a" } });
    for (const auto& each : cases) {
        phone::turnVolumeTo(each.before);
        FrontPhone::display("a");
        EXPECT_EQ(phone.state(), "0.00 0.60");
        phone::turnVolumeTo(0.9);
        FrontPhone::display("b");
        EXPECT_EQ(phone.state(), each.after + " 0.60") << each.before;
    }
}

TEST(MutedApplication, IsLookedUpAnewEachTimeAndStaysListedWithoutAFile)
{
    FrontPhone phone({});
    FrontPhone::display("a");
    EXPECT_EQ(phone.state(), "0.80 0.60");
    EXPECT_EQ(appledger::writeMuted("a", true).problem, "");
    FrontPhone::display("a");
    EXPECT_EQ(phone.state(), "0.00 0.60");
    std::filesystem::remove(phone.device().at(appledger::GetAppMutePrefPath()));
    FrontPhone::display("a");
    EXPECT_EQ(phone.state(), "0.00 0.60");
    EXPECT_EQ(appledger::writeMuted("b", true).problem, "");
    FrontPhone::display("a");
    EXPECT_EQ(phone.state(), "0.80 0.60");
}

class VolumeDisplay : public testing::TestWithParam<const char*> { };

INSTANTIATE_TEST_SUITE_P(Versions, VolumeDisplay, testing::Values("12.4", "16.0"),
    [](const auto& version) { return "iOS" + std::string(version.param, 2); });

TEST_P(VolumeDisplay, StaysAwayForHalfASecond)
{
    FrontPhone phone({ .muted = { "a" } }, GetParam());
    const auto change = [](double level) {
        phone::turnVolumeTo(level);
        phone::takeJournal();
        return phone::lastVolumeHUDShowing()->volume;
    };
    EXPECT_EQ(change(0.25), 0.25) << "the owner sees what he does";
    FrontPhone::display("a");
    EXPECT_EQ(phone.journal(500ms - 1ns), "volume Audio/Video: 0.00");
    EXPECT_EQ(change(0.125), 0.25);
    const id media = send<"sharedInstance">(id(objc_getClass("SBMediaController")));
    EXPECT_TRUE((send<"suppressHUD", bool>(media)));
    phone.journal(1ns);
    EXPECT_EQ(change(0.5), 0.5);
    FrontPhone::display("b");
    EXPECT_EQ(phone.journal(400ms), "volume Audio/Video: 0.25");
    FrontPhone::display("a");
    phone.journal(200ms);
    EXPECT_EQ(change(0.75), 0.75) << "the first of two timers lets it through";
}

// The display has two keepers: the system's own flag and the hooks. Each does it alone.
TEST(MutedApplication, HasItsHooksKeepTheDisplayAway)
{
    FrontPhone phone({ .muted = { "a" } });
    FrontPhone::display("a");
    phone.journal();
    const id media = send<"sharedInstance">(id(objc_getClass("SBMediaController")));
    EXPECT_TRUE((send<"suppressHUD", bool>(media)));
    send<"setSuppressHUD:", void>(media, false);
    const id control = send<"sharedInstance">(id(objc_getClass("SBVolumeControl")));
    const auto present = [&] {
        send<"_presentVolumeHUDWithVolume:", void>(control, 0.5F);
        send<"_presentVolumeHUDIfDisplayable:orRefreshIfPresentedWithReason:", void>(control, true, nil);
        return phone.journal();
    };
    EXPECT_EQ(present(), "");
    phone.journal(500ms);
    EXPECT_EQ(present(), "volume HUD 0.50 | volume HUD 0.00");
}

TEST(MutedApplication, LeavesTheVolumeAloneWhereThereIsNoMediaServer)
{
    FrontPhone phone({ .muted = { "a" } }, "16.0", Injection::Library, { "AVSystemController" });
    FrontPhone::display("a");
    phone.journal();
    EXPECT_TRUE(appledger::g_isMutingHUD);
    phone.journal(500ms);
    EXPECT_FALSE(appledger::g_isMutingHUD);
}

TEST(BrightApplication, WritesEveryWayWithTheNudgeBeforeTheLast)
{
    FrontPhone phone({});
    const auto written = [&](double level) {
        appledger::setSystemBrightness(level);
        EXPECT_EQ(phone::takeJournal().size(), 0U) << "not at once";
        phone.journal();
        return phone::levelText(phone::deviceState()["brightness"]);
    };
    const struct {
        double level;
        std::string ways;
        std::string nudge;
    } cases[] { { 0.5, "0.50", "0.51" }, { 1.0, "1.00", "0.99" }, { 0.0, "0.00", "0.01" }, { 1.7, "1.00", "0.99" },
        { -0.2, "0.00", "0.01" } };
    for (const auto& each : cases) {
        appledger::setSystemBrightness(each.level);
        EXPECT_EQ(phone.journal(),
            "brightness BKSDisplayBrightnessSet: " + each.ways + " 1 | brightness SBDisplayBrightnessController: "
                + each.ways + " | brightness SBBrightnessController: " + each.ways
                + " | brightness UIScreen: " + each.nudge + " | brightness UIScreen: " + each.ways);
        EXPECT_EQ(written(each.level), each.ways);
    }
}

namespace {

void olderBrightnessSet(float level, int)
{
    phone::journal(phone::JournalEvent::Note, "older " + phone::levelText(level));
}

} // namespace

TEST(BrightApplication, TakesTheWaysThatThereAre)
{
    support::Phone phone("SpringBoard", "16.0", { "SBDisplayBrightnessController", "SBBrightnessController" });
    holdClock();
    const ImageSymbol symbols[] { { "PSBKSDisplayBrightnessSet", reinterpret_cast<IMP>(&olderBrightnessSet) } };
    const auto written = [&phone] {
        appledger::setSystemBrightness(0.5);
        advanceClock(0s);
        return phone.journal();
    };
    EXPECT_EQ(written(), "brightness UIScreen: 0.51 | brightness UIScreen: 0.50");
    declareImage("/System/Library/PrivateFrameworks/BackBoardServices.framework/BackBoardServices", symbols);
    EXPECT_EQ(written(), "note older 0.50 | brightness UIScreen: 0.51 | brightness UIScreen: 0.50");
    phone::declareSystemImages(processFacts().version);
    EXPECT_EQ(written(),
        "brightness BKSDisplayBrightnessSet: 0.50 1 | brightness UIScreen: 0.51 | brightness UIScreen: 0.50");
}

TEST(BrightApplication, HearsOfItsLevelAtTheNextEvent)
{
    FrontPhone phone({});
    FrontPhone::display("a");
    EXPECT_EQ(phone.state(), "0.80 0.60");
    EXPECT_EQ(appledger::writeBrightness("a", 2.0).problem, "");
    EXPECT_EQ(phone.state(), "0.80 0.60");
    FrontPhone::display("a");
    EXPECT_EQ(phone.state(), "0.80 1.00");
    EXPECT_EQ(appledger::writeBrightness("a", -0.5).problem, "");
    EXPECT_EQ(phone.state(), "0.80 1.00");
    FrontPhone::display("a");
    EXPECT_EQ(phone.state(), "0.80 0.60");
    const auto mode
        = std::filesystem::status(phone.device().at(appledger::appBrightnessPreferencePath())).permissions();
    EXPECT_EQ(mode, std::filesystem::perms::all);
}

namespace {

id kept;

/// The system goes on to know the assertion: it ends by being invalidated, not by being forgotten.
struct KeepsTheAssertion : appledger::Hook<KeepsTheAssertion, "SBIdleTimerGlobalCoordinator",
                               "acquireIdleTimerDisableAssertionForReason:", id(id)> {
    static id replacement(const id& self, SEL cmd, const id& reason) { return kept = original(self, cmd, reason); }
};
constexpr appledger::HookRow keepingRows[] { KeepsTheAssertion::row() };

} // namespace

TEST(WakefulApplication, HoldsOneAssertionUntilItLeaves)
{
    FrontPhone phone({ .keptAwake = { "a", "b" } });
    appledger::installHookGroup({ "KeepsTheAssertion", keepingRows });
    FrontPhone::display("a");
    FrontPhone::display("a");
    FrontPhone::display("b");
    EXPECT_EQ(phone.journal(), "idle timer held: AppLedger_KeepAwake");
    FrontPhone::visibility("a", 1);
    EXPECT_EQ(phone.journal(), "");
    FrontPhone::display("");
    EXPECT_EQ(phone.journal(), "idle timer released: AppLedger_KeepAwake");
    // Acquiring is queued behind the event that asks for it, and the next event finds nothing held yet.
    FrontPhone::display("a");
    FrontPhone::visibility("a", 1);
    EXPECT_EQ(phone.journal(), "idle timer held: AppLedger_KeepAwake");
}

namespace {

id acquiresNothing(const id&, SEL, const id&)
{
    return nil;
}

} // namespace

TEST(WakefulApplication, CountsAnAssertionThatItNeverGot)
{
    FrontPhone phone({ .keptAwake = { "a" } });
    Original<id(id)> original;
    MSHookMessageEx(objc_getClass("SBIdleTimerGlobalCoordinator"),
        sel_registerName("acquireIdleTimerDisableAssertionForReason:"), reinterpret_cast<IMP>(&acquiresNothing),
        &original.implementation);
    FrontPhone::display("a");
    phone.journal();
    EXPECT_TRUE(appledger::AppIdleTimerManager::sharedManager().isAssertionActive());
    FrontPhone::display("b");
    EXPECT_EQ(phone.journal(), "");
    EXPECT_TRUE(appledger::AppIdleTimerManager::sharedManager().isAssertionActive());
}
