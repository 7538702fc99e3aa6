#include "core/hook_group.h"
#include "core/policies.h"
#include "phone/springboard/applications/application_process.h"
#include "phone/springboard/home/home_screen.h"
#include "platform/dispatch/clock.h"
#include "platform/graphics/geometry.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"
#include "platform/screen/framework.h"
#include "support/golden.h"
#include "support/phone_fixture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

using namespace platform;
using namespace std::chrono_literals;

namespace {

/// A Home Screen whose own layout may do more than the phone's, and the icons that it lays out.
double labelAlpha = 1;
std::string layouts;

struct StockLayout : appledger::Hook<StockLayout, "SBIconView", "layoutSubviews", void()> {
    static void replacement(const id& self, SEL cmd)
    {
        original(self, cmd);
        send<"setAlpha:", void>(send<"labelView">(self), labelAlpha);
        if (const auto identifier = asString(ask<"applicationBundleID">(send<"icon">(self))))
            layouts += identifier->text() + " ";
    }
};
constexpr appledger::HookRow stockRows[] { StockLayout::row() };

id noted(const id& self, SEL)
{
    return fieldsOf<id>(self);
}
constexpr MethodDefinition noteMethods[] { method<"object", &noted>() };
const ClassDefinition noteClass { .name = "Note", .methods = noteMethods };

const std::string notes = "com.example.notes";
const std::string safari = "com.apple.mobilesafari"; // stands in the dock

class RunningIndicator : public testing::Test {
protected:
    RunningIndicator()
    {
        holdClock();
        phone_.with({ notes, safari, "abc", "com.apple.mobiletimer" });
        appledger::installHookGroup({ "StockLayout", stockRows });
    }

    void start(const support::TemporaryDevice::Pairs& pairs = { { "RunningIndicatorEnabled", boolean(true) } })
    {
        phone_.device.writeDomain(pairs);
        phone_.inject().start();
        runUntilIdle();
    }

    static void pass(std::chrono::milliseconds time)
    {
        advanceClock(time);
        runUntilIdle();
    }

    static id viewOf(const std::string& identifier)
    {
        id found;
        phone::forEachKnownIconView([&](const id& view) {
            if (asString(ask<"applicationBundleID">(send<"icon">(view))) == identifier)
                found = view;
        });
        return found;
    }

    static id application(const std::string& identifier)
    {
        return send<"application">(send<"icon">(viewOf(identifier)));
    }

    static void layOut(const id& view)
    {
        send<"setNeedsLayout", void>(view);
        send<"layoutIfNeeded", void>(view);
    }

    /// What the notification of a process's change says.
    static void tellOf(const std::string& identifier)
    {
        const id note = send<"new">(id(registerClass(noteClass)));
        fieldsOf<id>(note) = application(identifier);
        send<"_handleApplicationProcessStateDidChangeNotification:", void>(
            send<"sharedApplication">(id(objc_getClass("SpringBoard"))), note);
    }

    /// The dot as the screen shows it now.
    static std::string seenDot(const id& view)
    {
        std::istringstream lines(descriptionOfScreen());
        std::string found;
        bool isInView = false;
        const std::string name = '"' + asString(send<"displayName">(send<"icon">(view)))->text() + '"';
        for (std::string line; std::getline(lines, line);) {
            if (line.find("SBIconView") != std::string::npos)
                isInView = false;
            isInView = isInView || line.find(name) != std::string::npos;
            if (const auto dot = line.find(" UIView"); isInView && dot != std::string::npos)
                found = line.substr(dot + 1);
        }
        return found + "\n";
    }

    /// "none", "hidden", or where the dot is and how it shows: "(74.5, 72) alpha 1 scale 1".
    static std::string dotOf(const id& view)
    {
        const id dot = send<"al_runningDot">(view);
        if (!dot)
            return "none";
        if (send<"isHidden", bool>(dot))
            return "hidden";
        const CGPoint center = send<"center", CGPoint>(dot);
        std::ostringstream text;
        text << '(' << center.x << ", " << center.y << ") alpha " << send<"alpha", CGFloat>(dot) << " scale "
             << send<"transform", CGAffineTransform>(dot).a;
        return text.str();
    }

    support::Phone phone_ { "SpringBoard", "16.0" };
};

TEST_F(RunningIndicator, IsNotThereOnAStockPhoneNorUntilItIsSwitchedOn)
{
    start({});
    phone_.enter("tap", { notes });
    runUntilIdle();
    EXPECT_EQ(dotOf(viewOf(notes)), "none");
}

TEST_F(RunningIndicator, ComesWithTheProcessAndShrinksAwayWithIt)
{
    start();
    EXPECT_EQ(dotOf(viewOf(notes)), "none");
    phone_.enter("tap", { notes });
    runUntilIdle();
    const id view = viewOf(notes);
    const std::string standing = dotOf(view);
    EXPECT_TRUE(standing.ends_with("alpha 1 scale 1")) << standing;
    EXPECT_EQ(send<"superview">(send<"al_runningDot">(view)), view);
    EXPECT_FALSE((send<"clipsToBounds", bool>(view)));
    pass(300ms);
    phone::endProcessOf(notes);
    runUntilIdle();
    EXPECT_TRUE(dotOf(view).ends_with("alpha 0 scale 0.1")) << dotOf(view) << ": on its way out";
    pass(299ms);
    EXPECT_NE(dotOf(view), "hidden");
    pass(1ms);
    EXPECT_EQ(dotOf(view), "hidden");
    phone_.enter("tap", { notes });
    runUntilIdle();
    EXPECT_EQ(dotOf(view), standing);
    pass(300ms);
    phone::endProcessOf(notes);
    pass(100ms);
    phone_.enter("tap", { notes });
    pass(1s);
    EXPECT_EQ(dotOf(view), standing) << "back before it had gone";
}

TEST_F(RunningIndicator, FadesInTheTimeOfItsAnimation)
{
    start();
    const id view = viewOf("abc");
    phone_.enter("tap", { "abc" });
    layOut(view);
    std::string seen = "comes " + seenDot(view);
    for (const char* const when : { "halfway ", "stands " }) {
        pass(150ms);
        seen += when + seenDot(view);
    }
    EXPECT_GOLDEN(seen, "running-dot.txt");
    const id layer = send<"layer">(send<"al_runningDot">(view));
    EXPECT_EQ((send<"cornerRadius", CGFloat>(layer)), 3);
    EXPECT_TRUE((send<"masksToBounds", bool>(layer)));
}

TEST_F(RunningIndicator, LaysOutTheIconOfAChangedApplicationAloneAndAfterwards)
{
    start();
    descriptionOfScreen(); // lays out what the start has left
    layouts.clear();
    tellOf(notes);
    EXPECT_EQ(layouts, "") << "not at once";
    runUntilIdle();
    EXPECT_EQ(layouts, notes + " " + notes + " ") << "the phone's own layout, and one more";
    appledger::g_RunningIndicatorEnabled = false;
    layouts.clear();
    tellOf(notes);
    runUntilIdle();
    EXPECT_EQ(layouts, notes + " ") << "switched off";
}

TEST_F(RunningIndicator, StandsSevenPointsBesideTheTextAndNineUnderADockedImage)
{
    start();
    for (const std::string& identifier : { notes, safari, std::string("abc") })
        phone_.enter("tap", { identifier });
    runUntilIdle();
    const id view = viewOf("abc");
    const id label = send<"labelView">(view);
    const CGSize text = send<"sizeThatFits:", CGSize>(label, CGSizeMake(1000, 1000));
    const CGPoint labelCenter = send<"center", CGPoint>(label);
    const CGPoint dot = send<"center", CGPoint>(send<"al_runningDot">(view));
    EXPECT_NEAR(dot.x, labelCenter.x + text.width / 2 + 7, 0.5);
    EXPECT_EQ(dot.y, labelCenter.y);
    const CGRect longLabel = send<"frame", CGRect>(send<"labelView">(viewOf(notes)));
    EXPECT_EQ((send<"center", CGPoint>(send<"al_runningDot">(viewOf(notes))).x), CGRectGetMaxX(longLabel) + 7)
        << "the label cuts its name off";

    const id docked = viewOf(safari);
    const CGRect image = send<"frame", CGRect>(send<"iconImageView">(docked));
    const CGPoint underImage = send<"center", CGPoint>(send<"al_runningDot">(docked));
    EXPECT_EQ(underImage.x, (send<"bounds", CGRect>(docked).size.width) / 2);
    EXPECT_EQ(underImage.y, CGRectGetMaxY(image) + 9);
}

TEST_F(RunningIndicator, FollowsItsLabelsStrength)
{
    start();
    phone_.enter("tap", { notes });
    pass(300ms);
    const id view = viewOf(notes);
    const id label = send<"labelView">(view);
    const struct {
        double alpha;
        std::string shows;
    } cases[] = {
        { 0.5, "alpha 0.5 scale 1" },
        { 0.04, "hidden" },
        { 0.06, "alpha 0.06 scale 1" },
        { 1, "alpha 1 scale 1" },
    };
    for (const auto& row : cases) {
        labelAlpha = row.alpha; // the dot follows what the layout itself has set
        layOut(view);
        EXPECT_TRUE(dotOf(view).ends_with(row.shows)) << row.alpha << ": " << dotOf(view);
    }
    send<"setFrame:", void>(label, CGRectMake(0, 64, 88, 0));
    layOut(view);
    EXPECT_EQ(dotOf(view), "hidden") << "a label without a height is none";
}

TEST_F(RunningIndicator, TakesItsColourAndItsSwitchFromTheCachesAtEachLayout)
{
    start();
    phone_.enter("tap", { notes });
    runUntilIdle();
    const id view = viewOf(notes);
    const auto color = [&] {
        layOut(view);
        double red = 0;
        double green = 0;
        double blue = 0;
        double alpha = 0;
        send<"getRed:green:blue:alpha:", bool>(
            send<"backgroundColor">(send<"al_runningDot">(view)), &red, &green, &blue, &alpha);
        return std::to_string(std::lround(red * 255)) + " " + std::to_string(std::lround(green * 255)) + " "
            + std::to_string(std::lround(blue * 255)) + " " + std::to_string(std::lround(alpha * 255));
    };
    const std::string purple = "175 82 222 255";
    EXPECT_EQ(color(), purple);
    const auto change = [&](const id& text, bool enabled) {
        phone_.device.writeDomain(
            { { "RunningIndicatorEnabled", boolean(enabled) }, { "RunningIndicatorColor", text } });
        EXPECT_EQ(color(), purple) << "nobody has been told";
        CFNotificationCenterPostNotification("com.merrowlane.appledger.runningindicator-changed");
        runUntilIdle();
    };
    change(string("#11223380"), true);
    EXPECT_EQ(color(), "17 34 51 128");
    phone_.device.writeDomain({ { "RunningIndicatorEnabled", boolean(true) } });
    CFNotificationCenterPostNotification("com.merrowlane.appledger.runningindicator-changed");
    runUntilIdle();
    EXPECT_EQ(color(), purple);
    change(string("#F0F"), true);
    EXPECT_EQ(color(), purple) << "three digits are no colour: the system's purple";
    change(nil, false);
    layOut(view);
    EXPECT_EQ(dotOf(view), "hidden");
}

TEST_F(RunningIndicator, LeavesFoldersAloneAndLooksThroughTheIconsThatAreKnown)
{
    start();
    phone_.enter("tap", { "com.apple.mobiletimer" });
    runUntilIdle();
    phone::forEachKnownIconView([](const id& view) {
        const bool isFolder = isKindOfClass(send<"icon">(view), objc_getClass("SBFolderIcon"));
        EXPECT_EQ(dotOf(view) == "none", isFolder || viewOf("com.apple.mobiletimer") != view) << dotOf(view);
    });
}

TEST_F(RunningIndicator, PassesOverANotificationThatRaises)
{
    start();
    const id springBoard = send<"sharedApplication">(id(objc_getClass("SpringBoard")));
    for (const id& object : { id(nil), string("no notification") })
        send<"_handleApplicationProcessStateDidChangeNotification:", void>(springBoard, object);
    runUntilIdle();
}

} // namespace
