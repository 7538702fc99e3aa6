#include "phone/springboard/home/arrangement.h"
#include "phone/springboard/home/home_screen.h"
#include "platform/dispatch/clock.h"
#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/runtime/hook.h"
#include "platform/runtime/message.h"
#include "platform/screen/framework.h"
#include "support/golden.h"
#include "support/phone_fixture.h"

namespace {

using namespace platform;
using namespace std::chrono_literals;

const std::vector<std::string> applications { "com.apple.MobileSMS", "com.apple.mobilesafari", "com.apple.mobiletimer",
    "com.example.bank", "com.example.notes" };

struct HomeScreen : testing::Test {
    HomeScreen()
    {
        holdClock();
        phone.with(applications).start();
    }

    support::Phone phone { "SpringBoard", "16.0" };
};

std::string linesWith(const std::string& text, std::string_view part)
{
    std::string found;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = text.find('\n', start);
        const std::string line = text.substr(start, end - start);
        if (line.find(part) != std::string::npos)
            found += line.substr(line.find_first_not_of(' ')) + "\n";
        start = end + 1;
    }
    return found;
}

TEST_F(HomeScreen, ShowsWhatIsInstalled)
{
    EXPECT_GOLDEN(descriptionOfScreen(), "home-screen.txt");
}

TEST_F(HomeScreen, AFolderGrowsOutOfItsIconAndTellsWhenItHasOpenedAndClosed)
{
    std::string log;
    static std::string* words = nullptr;
    words = &log;
    struct Hooks {
        static void did(const id&, SEL, bool) { *words += "did "; }
        static void will(const id&, SEL, bool, const id&) { *words += "will "; }
    };
    const Class folderView = objc_getClass("SBFolderView");
    IMP original = nullptr;
    MSHookMessageEx(
        folderView, sel_registerName("didTransitionAnimated:"), reinterpret_cast<IMP>(&Hooks::did), &original);
    MSHookMessageEx(folderView, sel_registerName("willTransitionAnimated:withSettings:"),
        reinterpret_cast<IMP>(&Hooks::will), &original);

    const std::string closed = descriptionOfScreen();
    EXPECT_FALSE(phone::openFolderNamed("Nonsense"));
    EXPECT_TRUE(phone::openFolderNamed("Utilities"));
    EXPECT_FALSE(phone::openFolderNamed("Utilities")) << "it is open";
    EXPECT_EQ(log, "will ");
    EXPECT_NE(linesWith(descriptionOfScreen(), "SBFolderView").find("alpha 0"), std::string::npos);
    advanceClock(250ms);
    runUntilIdle();
    EXPECT_EQ(log, "will did ");
    EXPECT_EQ(linesWith(descriptionOfScreen(), "SBFolderView"), "SBFolderView (0, 0, 390 x 844)\n");
    EXPECT_TRUE(phone::closeFolder());
    advanceClock(250ms);
    runUntilIdle();
    EXPECT_EQ(log, "will did will did ");
    EXPECT_EQ(descriptionOfScreen(), closed);
}

TEST_F(HomeScreen, AFingerOnAnIconOpensIt)
{
    const CGRect frame = phone::frameOnPage(0);
    const CGPoint middle { CGRectGetMidX(frame), frame.origin.y + 30 };
    touchScreenAt(middle, TouchKind::Began);
    touchScreenAt(middle, TouchKind::Ended);
    EXPECT_EQ(phone.journal(), "opened com.example.bank");
    EXPECT_NE(descriptionOfScreen().find("UIWindow (117, 253.2, 156 x 337.6) alpha 0"), std::string::npos)
        << "its scene begins small";
    advanceClock(300ms);
    touchScreenAt(middle, TouchKind::Began);
    touchScreenAt(middle, TouchKind::Ended);
    EXPECT_EQ(phone.journal(), "") << "its scene covers the icons";

    phone::pressHome();
    touchScreenAt(middle, TouchKind::Began);
    touchScreenAt({ middle.x + 40, middle.y }, TouchKind::Moved);
    touchScreenAt({ middle.x + 40, middle.y }, TouchKind::Ended);
    EXPECT_EQ(phone.journal(), "") << "a finger that moves on doesn't tap";
}

TEST_F(HomeScreen, WhatTheModelHidesGoesAndWhatStaysKeepsItsView)
{
    static bool hides = true;
    struct Model {
        static bool visible(const id&, SEL, const id& icon)
        {
            return !hides || !(*asString(send<"applicationBundleID">(icon)) == "com.example.bank");
        }
    };
    const auto views = [] {
        std::vector<id> found;
        const id manager = send<"iconManager">(send<"sharedInstance">(id(objc_getClass("SBIconController"))));
        send<"enumerateDisplayedIconViewsUsingBlock:", void>(
            manager, platform::block([&found](const id& view) { found.push_back(view); }));
        return found;
    };
    const std::vector<id> before = views();
    const id model = send<"model">(send<"sharedInstance">(id(objc_getClass("SBIconController"))));
    const SEL selector = sel_registerName("isIconVisible:");
    IMP original = nullptr;
    if (!class_addMethod(object_getClass(model), selector, reinterpret_cast<IMP>(&Model::visible), "B@:@"))
        MSHookMessageEx(object_getClass(model), selector, reinterpret_cast<IMP>(&Model::visible), &original);
    send<"reloadIcons", void>(model);
    EXPECT_EQ(linesWith(descriptionOfScreen(), "com.example.bank"), "");
    EXPECT_EQ(views().size(), before.size() - 1);
    for (const id& view : views())
        EXPECT_NE(std::ranges::find(before, view), before.end());
    hides = false;
    send<"layout", void>(model);
    EXPECT_EQ(views().size(), before.size());
}

struct Folders : testing::Test {
    Folders()
    {
        holdClock();
        phone.with({ "com.apple.mobilecal", "com.apple.mobilenotes", "com.apple.mobiletimer", "com.example.bank" })
            .start();
    }

    static std::string openFolder()
    {
        advanceClock(250ms);
        runUntilIdle();
        std::string text;
        phone::forEachKnownIconView([&text](const id& view) {
            if (*asString(send<"location">(view)) == "SBIconLocationFolder")
                text += asString(send<"applicationBundleID">(send<"icon">(view)))->text().substr(10) + " at "
                    + std::to_string(static_cast<int>(send<"frame", CGRect>(view).origin.x)) + "; ";
        });
        return text;
    }

    support::Phone phone { "SpringBoard", "16.0" };
};

TEST_F(Folders, AnOpenOneShowsAtOnceWhatIsHiddenInIt)
{
    const auto hide = [](const std::vector<std::string>& identifiers) {
        for (const char* const name : { "mobilecal", "mobilenotes", "mobiletimer" }) {
            const std::string identifier = "com.apple." + std::string(name);
            const bool isOff = std::ranges::find(identifiers, identifier) != identifiers.end();
            const id controller = send<"sharedInstance">(id(objc_getClass("SBApplicationController")));
            const id application = send<"applicationWithBundleIdentifier:">(controller, string(identifier));
            send<"setTags:", void>(send<"info">(application), isOff ? array({ "hidden" }) : nil);
        }
        send<"reloadIcons", void>(send<"model">(send<"sharedInstance">(id(objc_getClass("SBIconController")))));
    };
    ASSERT_TRUE(phone::openFolderNamed("Utilities"));
    const std::string all = openFolder();
    EXPECT_EQ(all, "mobilecal at 20; mobiletimer at 116; mobilenotes at 212; ");
    hide({ "com.apple.mobilecal" });
    EXPECT_EQ(openFolder(), "mobiletimer at 20; mobilenotes at 116; ");
    hide({});
    EXPECT_EQ(openFolder(), all);
    hide({ "com.apple.mobilecal", "com.apple.mobiletimer", "com.apple.mobilenotes" });
    EXPECT_EQ(openFolder(), "");
    EXPECT_EQ(linesWith(descriptionOfScreen(), "SBFolderView"), "") << "with nothing in it, it closes";
    EXPECT_FALSE(phone::openFolderNamed("Utilities")) << "nothing is in it";
    hide({});
    EXPECT_TRUE(phone::openFolderNamed("Utilities"));
    EXPECT_EQ(openFolder(), all);
}

TEST_F(Folders, NoneOpensBehindAnApplication)
{
    EXPECT_EQ(phone.enter("tap", { "com.example.bank" }), "opened com.example.bank");
    EXPECT_FALSE(phone::openFolderNamed("Utilities"));
    phone::pressHome();
    EXPECT_TRUE(phone::openFolderNamed("Utilities"));
}

TEST(HomeArrangement, FillsTheDockTheFolderAndPages)
{
    std::vector<std::string> many;
    for (int index = 0; index < 30; ++index)
        many.push_back("com.example.app" + std::to_string(index));
    EXPECT_EQ(phone::arrangeHome({}).pages, std::vector<std::vector<phone::HomeItem>>(1));
    const auto pages = phone::arrangeHome(many).pages;
    ASSERT_EQ(pages.size(), 2U);
    EXPECT_EQ(pages[0].size(), 24U);
    EXPECT_EQ(pages[1].back().identifier, "com.example.app29");
    const auto arranged = phone::arrangeHome(
        { "com.apple.mobilenotes", "com.example.music", "com.example.shop", "com.apple.mobilesafari" });
    EXPECT_EQ(arranged.dock, (std::vector<std::string> { "com.apple.mobilesafari", "com.example.music" }));
    EXPECT_EQ(arranged.pages[0],
        (std::vector<phone::HomeItem> { { "com.example.shop" },
            { .identifier = "",
                .folderName = "Utilities",
                .folderContent = { "com.apple.mobilenotes" },
                .place = 1 } }));
}

TEST(HomeArrangement, PutsWidgetsWhereTwoByTwoPlacesAreFree)
{
    struct Case {
        int icons;
        std::size_t widgets;
        const char* places; ///< page and first place of each
    };
    const Case cases[] {
        { 0, 1, "0:0 " },
        { 4, 2, "0:4 0:6 " },
        { 5, 1, "0:8 " },
        { 6, 1, "0:6 " }, // the right half is free
        { 16, 3, "0:16 0:18 1:0 " },
        { 17, 1, "1:0 " },
        { 8, 4, "0:8 0:10 0:16 0:18 " },
        { 24, 1, "1:0 " },
    };
    for (const auto& [icons, widgets, expected] : cases) {
        std::vector<std::string> many;
        for (int index = 0; index < icons; ++index)
            many.push_back("com.example.app" + std::to_string(index));
        const auto pages = phone::arrangeHome(many, std::vector<std::string>(widgets, "widget")).pages;
        std::string places;
        for (std::size_t page = 0; page < pages.size(); ++page)
            for (const phone::HomeItem& item : pages[page])
                if (item.isWidget)
                    places += std::to_string(page) + ":" + std::to_string(item.place) + " ";
        EXPECT_EQ(places, expected) << icons << " icons, " << widgets << " widgets";
    }
}

} // namespace
