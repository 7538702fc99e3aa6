#include "core/late_bound_functions.h"
#include "entry/hook_groups.h"
#include "entry/observers.h"
#include "launch/launch_decision.h"
#include "platform/darwin/images.h"
#include "platform/dispatch/clock.h"
#include "platform/runtime/message.h"
#include "support/phone_fixture.h"

#include <gtest/gtest.h>

namespace appledger {

using namespace platform;
using support::Phone;

namespace {

IMP implementation(std::string_view className, std::string_view selector)
{
    const Class cls = objc_getClass(className);
    const SEL name = sel_registerName(selector);
    return cls ? cls->implementation(name, name->hash) : nullptr;
}

std::vector<IMP> implementationsOfTheRoads()
{
    std::vector<IMP> found;
    for (const LaunchRoadTraits& road : launchRoads())
        found.push_back(implementation(road.className, road.selector));
    return found;
}

/// The roads whose method the load of the library has replaced in that process, by number, "-" for the
/// others, "." for those without a method there.
std::string replacedRoads(std::string_view processName, std::string_view version)
{
    Phone phone(processName, version);
    const auto before = implementationsOfTheRoads();
    phone.inject();
    const auto after = implementationsOfTheRoads();
    std::string text;
    for (std::size_t index = 0; index < before.size(); ++index)
        text += !before[index] ? '.' : before[index] != after[index] ? static_cast<char>('a' + index) : '-';
    return text;
}

TEST(Load, RegistersTheClassesThatOthersKnowByName)
{
    Phone phone("SpringBoard", "16.0");
    EXPECT_FALSE(objc_getClass("CustomToastView"));
    phone.inject();
    EXPECT_TRUE(isKindOfClass(send<"new">(id(objc_getClass("CustomToastView"))), objc_getClass("UIView")));
}

// The open service's methods stand in the table twice, for SpringBoard and for Spotlight.
TEST(Load, ReplacesEveryRoadOfSpringBoard)
{
    EXPECT_EQ(replacedRoads("SpringBoard", "16.0"), "abcdefghij-");
}
TEST(Load, ReplacesTheRoadsThatAnOlderVersionHas)
{
    EXPECT_EQ(replacedRoads("SpringBoard", "12.4"), "a.cdefg.ij-");
}
TEST(Load, ReplacesEveryRoadOfSpotlight)
{
    EXPECT_EQ(replacedRoads("Spotlight", "16.0"), "....ef..ijk");
}
TEST(Load, LeavesTheRoadsOfTheAppStoreAlone)
{
    EXPECT_EQ(replacedRoads("AppStore", "16.0"), "....--..---");
}

TEST(Load, HasItsPropertiesOnThePhonesViews)
{
    Phone phone("SpringBoard", "16.0");
    phone.inject();
    const id view = send<"new">(id(objc_getClass("SBIconView")));
    send<"setAl_runningDot:", void>(view, string("dot"));
    EXPECT_EQ(describe(send<"al_runningDot">(view)), R"("dot")");
    const id imageView = send<"new">(id(objc_getClass("SBIconImageView")));
    send<"setAlSwipeGestureRecognizer:", void>(imageView, string("up"));
    send<"setAlSwipeDownGestureRecognizer:", void>(imageView, string("down"));
    EXPECT_EQ(describe(send<"alSwipeGestureRecognizer">(imageView)), R"("up")");
    EXPECT_EQ(describe(send<"alSwipeDownGestureRecognizer">(imageView)), R"("down")");
    const auto property = class_getProperty(objc_getClass("SBIconImageView"), "alSwipeGestureRecognizer");
    ASSERT_TRUE(property);
    EXPECT_EQ(property->attributes.front().value, "@\"UISwipeGestureRecognizer\"");
}

TEST(Load, CompletesWithoutAnyClass)
{
    const support::TemporaryDevice device;
    device.writeDomain({ { "ALHiddenApps", array({ "a" }) } });
    setProcessFacts({ "com.apple.springboard", "SpringBoard", { 16, 0, 0 } });
    initializeLibrary();
    EXPECT_TRUE(g_hiddenApps.contains("a"));
    EXPECT_EQ(darwinObservers().size(), observers().size());
    for (const DarwinObserver& observer : darwinObservers())
        CFNotificationCenterPostNotification(observer.name);
    runUntilIdle();
}

TEST(Load, CompletesWithoutTheIconManager)
{
    Phone phone("SpringBoard", "16.0", { "SBHIconManager" });
    phone.with({ "com.example.notes" }).wanting({ .blocked = { "com.example.notes" } }).inject().start();
    EXPECT_FALSE(objc_getClass("SBHIconManager"));
    EXPECT_EQ(phone.enter("tap", { "com.example.notes" }), "haptic impact");
}

std::string limits;

int controlMemory(std::uint32_t command, int pid, std::uint32_t flags, void* buffer, std::size_t size)
{
    limits += std::to_string(command) + (pid == processIdentifier() ? " own " : " other ") + std::to_string(flags)
        + (buffer ? " buffer " : " null ") + std::to_string(size);
    return -1;
}

TEST(Load, LiftsTheMemoryLimitOfSpringBoardOffThisThread)
{
    holdClock();
    const std::pair<ProcessFacts, std::string> cases[] = { { { "com.example.notes", "SpringBoard", {} }, "" },
        { { "com.apple.springboard", "SpringBoard", {} }, "6 own 0 null 0" } };
    for (const bool declared : { false, true }) {
        const ImageSymbol symbols[] { { "memorystatus_control", reinterpret_cast<IMP>(&controlMemory) } };
        if (declared)
            declareImage("/usr/lib/libSystem.B.dylib", symbols);
        for (const auto& [facts, expected] : cases) {
            setProcessFacts(facts);
            AL_BypassSpringBoardMemoryLimit();
            EXPECT_EQ(limits, "") << "not at once";
            runUntilIdle();
            EXPECT_EQ(std::exchange(limits, {}), declared ? expected : "");
        }
    }
}

void* createAssertion(const void*, const id&, int, int*)
{
    return &limits;
}
int resetAccess(const id&, const id&)
{
    return 5;
}

TEST(Load, RunsItsFourInitialisersAndThreeOfThemInSpringBoardAlone)
{
    const support::TemporaryDevice device;
    holdClock();
    const ImageSymbol memory[] { { "memorystatus_control", reinterpret_cast<IMP>(&controlMemory) } };
    const ImageSymbol assertions[] { { "SBSApplicationTerminationAssertionCreateWithError",
        reinterpret_cast<IMP>(&createAssertion) } };
    const ImageSymbol access[] { { "TCCAccessResetForBundle", reinterpret_cast<IMP>(&resetAccess) } };
    declareImage("/usr/lib/libSystem.B.dylib", memory);
    declareImage("/System/Library/PrivateFrameworks/SpringBoard.framework/SpringBoard", assertions);
    declareImage("/System/Library/PrivateFrameworks/TCC.framework/TCC", access);
    const auto load = [](const char* bundleIdentifier) {
        setProcessFacts({ bundleIdentifier, "SpringBoard", { 16, 0, 0 } });
        runInitialisers();
        runUntilIdle();
        const bool hasAssertion = SBSApplicationTerminationAssertionCreateWithError(nullptr, string("a"), 1, nullptr);
        return std::to_string(darwinObservers().size()) + (hasAssertion ? " assertion" : "")
            + (limits.empty() ? "" : " limit")
            + (TCCAccessResetForBundle(string("service"), string("a")) == 5 ? " access" : "");
    };
    EXPECT_EQ(load("com.example.notes"), "2");
    EXPECT_EQ(load("com.apple.springboard"), std::to_string(2 + observers().size()) + " assertion limit access");
}

} // namespace

} // namespace appledger
