#include "platform/dispatch/run_loop.h"
#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/graphics/bitmap.h"
#include "platform/handles/UIVisualEffectView.h"
#include "platform/handles/UIWindow.h"
#include "support/journalled_controller.h"
#include "support/view_test.h"

/// What follows the appearance and the size of the screen.

namespace {

using namespace platform;
using namespace support;

class Traits : public ViewTest {
protected:
    Traits()
    {
        window.setRootViewController(UIViewController(root));
        window.setHidden(false);
        runUntilIdle();
        takeJournal();
    }

    static id controller(const char* name)
    {
        const id made = send<"new">(id(registerClass(JournalledController_class)));
        send<"setTitle:", void>(made, string(name));
        return made;
    }

    static std::string at(CGPoint point)
    {
        const Bitmap screen = decodePicture(pictureOfScreen(2)).value();
        const Color seen = screen.colorAt(static_cast<int>(point.x * 2), static_cast<int>(point.y * 2));
        char text[16];
        std::snprintf(text, sizeof text, "%02lX%02lX%02lX", std::lround(seen.red * 255), std::lround(seen.green * 255),
            std::lround(seen.blue * 255));
        return text;
    }

    const id root = controller("R");
    const UIWindow window = UIWindow::create();
};

TEST_F(Traits, ColoursFollowTheAppearanceWhenTheyAreDrawn)
{
    const UIView view(send<"view">(root));
    struct Row {
        const char* name;
        UIColor color;
        const char* light;
        const char* dark;
    };
    const id chosen = block([](const id& traits) {
        return id(send<"userInterfaceStyle", NSInteger>(traits) == 2 ? UIColor::white() : UIColor::black());
    });
    for (const Row& row : { Row { "background", UIColor::systemBackground(), "FFFFFF", "000000" },
             { "blue", UIColor::systemBlue(), "007AFF", "0A84FF" }, { "red", UIColor::systemRed(), "FF3B30", "FF453A" },
             { "label", UIColor::label(), "000000", "FFFFFF" },
             { "provider", UIColor::withProvider(chosen), "000000", "FFFFFF" },
             { "fixed", UIColor::withRed(0, 1, 0, 1), "00FF00", "00FF00" } }) {
        view.setBackgroundColor(row.color);
        setScreenStyle(InterfaceStyle::Light);
        EXPECT_EQ(at({ 150, 100 }), row.light) << row.name;
        const id fixed = row.color.cgColor();
        setScreenStyle(InterfaceStyle::Dark);
        EXPECT_EQ(at({ 150, 100 }), row.dark) << row.name;
        view.setBackgroundColor(UIColor(fixed));
        EXPECT_EQ(at({ 150, 100 }), row.light) << row.name << ": a layer's colour stays as it was taken";
    }
}

TEST_F(Traits, AProviderThatAsksItselfIsBlack)
{
    id self;
    const UIColor endless = UIColor::withProvider(block([&self](const id&) { return self; }));
    self = endless;
    UIView(send<"view">(root)).setBackgroundColor(endless);
    EXPECT_EQ(at({ 150, 100 }), "000000");
    self = nil;
    EXPECT_EQ(at({ 151, 100 }), "000000");
}

TEST_F(Traits, APartOfTheTreeMayHaveItsOwn)
{
    const UIView half = UIView::withFrame(CGRectMake(0, 0, 150, 200));
    half.setBackgroundColor(UIColor::systemBackground());
    UIView(send<"view">(root)).setBackgroundColor(UIColor::systemBackground());
    UIView(send<"view">(root)).addSubview(half);
    send<"setOverrideUserInterfaceStyle:", void>(half, NSInteger { 2 });
    EXPECT_EQ(at({ 20, 100 }), "000000");
    EXPECT_EQ(at({ 280, 100 }), "FFFFFF");
    EXPECT_EQ((send<"userInterfaceStyle", NSInteger>(send<"traitCollection">(half))), 2);
    EXPECT_EQ((send<"userInterfaceStyle", NSInteger>(send<"traitCollection">(root))), 1);
    takeJournal();
    send<"setOverrideUserInterfaceStyle:", void>(half, NSInteger { 0 });
    EXPECT_EQ(at({ 20, 100 }), "FFFFFF");
}

TEST_F(Traits, ControllersHearOfAnotherAppearanceOnce)
{
    const id child = controller("C");
    send<"addChildViewController:", void>(root, child);
    send<"addSubview:", void>(send<"view">(root), send<"view">(child));
    runUntilIdle();
    takeJournal();
    setScreenStyle(InterfaceStyle::Dark);
    setScreenStyle(InterfaceStyle::Dark);
    EXPECT_EQ(takeJournal(), "R traits from 1, C traits from 1");
    setScreenStyle(InterfaceStyle::Light);
    EXPECT_EQ(takeJournal(), "R traits from 2, C traits from 2");
}

TEST_F(Traits, ATurnedScreenIsToldBeforeItsWindowsTurn)
{
    const id child = controller("C");
    send<"addChildViewController:", void>(root, child);
    const UIWindow small = UIWindow::withFrame(CGRectMake(0, 0, 50, 50));
    small.setRootViewController(UIViewController(controller("S")));
    runUntilIdle();
    takeJournal();
    setScreen({ 200, 300 }, 2);
    EXPECT_TRUE(takeJournal().starts_with("R size 200x300, C size 200x300"));
    EXPECT_EQ((send<"frame", CGRect>(send<"view">(root))), CGRectMake(0, 0, 200, 300));
    EXPECT_EQ(small.frame(), CGRectMake(0, 0, 50, 50));
    EXPECT_EQ((send<"verticalSizeClass", NSInteger>(send<"traitCollection">(root))), 2);
}

TEST_F(Traits, FrostedGlassShowsWhatLiesBehindItBlurred)
{
    const UIView behind(send<"view">(root));
    behind.setBackgroundColor(UIColor::white());
    const UIView stripe = UIView::withFrame(CGRectMake(0, 0, 150, 200));
    stripe.setBackgroundColor(UIColor::black());
    behind.addSubview(stripe);
    const UIVisualEffectView glass = UIVisualEffectView::withEffect(UIBlurEffect::withStyle(UIBlurEffectStyle::Dark));
    glass.setFrame(CGRectMake(0, 50, 300, 100));
    glass.layer().setCornerRadius(20);
    behind.addSubview(glass);
    const UIView mark = UIView::withFrame(CGRectMake(10, 40, 10, 10));
    mark.setBackgroundColor(UIColor::withRed(1, 0, 0, 1));
    glass.contentView().addSubview(mark);
    // A tint of 0.73 over black and over white.
    EXPECT_EQ(at({ 30, 100 }), "141414");
    EXPECT_EQ(at({ 270, 100 }), "595959");
    const std::string between = at({ 150, 100 });
    EXPECT_GT(between, at({ 100, 100 })) << "the edge is soft";
    EXPECT_LT(between, at({ 200, 100 }));
    EXPECT_EQ(at({ 150.25, 40 }), "FFFFFF") << "and beside the glass it is hard";
    EXPECT_EQ(at({ 1, 51 }), "000000") << "its corners are round";
    EXPECT_EQ(at({ 15, 95 }), "FF0000");
    glass.setEffect(UIBlurEffect());
    EXPECT_EQ(at({ 30, 100 }), "000000");
    EXPECT_EQ(glass.contentView().frame(), CGRectMake(0, 0, 300, 100));
}

TEST_F(Traits, AViewRunsAsItsLanguageOrAsItIsTold)
{
    const id view = makeView({});
    for (const auto& [attribute, direction] :
        std::initializer_list<std::pair<NSInteger, NSInteger>> { { 0, 0 }, { 1, 0 }, { 3, 0 }, { 4, 1 } }) {
        send<"setSemanticContentAttribute:", void>(view, attribute);
        EXPECT_EQ((send<"effectiveUserInterfaceLayoutDirection", NSInteger>(view)), direction) << attribute;
    }
}

} // namespace
