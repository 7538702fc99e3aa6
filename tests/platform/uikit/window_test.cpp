#include "platform/dispatch/run_loop.h"
#include "platform/foundation/notification_center.h"
#include "platform/foundation/values.h"
#include "platform/handles/UIDevice.h"
#include "platform/handles/UIPasteboard.h"
#include "platform/handles/UIWindow.h"
#include "support/view_test.h"

#include <map>

/// Windows, their scene, and who gets the keys.

namespace {

using namespace platform;
using support::classObject;

class Windows : public support::ViewTest {
protected:
    Windows()
    {
        for (const char* const name : { "UIWindowDidBecomeVisibleNotification", "UIWindowDidBecomeHiddenNotification",
                 "UIWindowDidBecomeKeyNotification", "UIWindowDidResignKeyNotification" })
            observers.push_back(addLocalObserver(name, [this](std::string_view posted, const id& window) {
                posted.remove_prefix(std::string_view("UIWindowDid").size());
                posted.remove_suffix(std::string_view("Notification").size());
                said += std::string(said.empty() ? "" : ", ") + names[window.get()] + " " + std::string(posted)
                    + (send<"isHidden", bool>(window) ? " hidden" : "");
            }));
    }
    ~Windows() override
    {
        for (const std::uint64_t observer : observers)
            removeLocalObserver(observer);
    }

    UIWindow named(const char* name)
    {
        const UIWindow window = UIWindow::create();
        names[window.object().get()] = name;
        return window;
    }

    std::string taken() { return std::exchange(said, {}); }

    std::map<const NSObject*, std::string> names;
    std::vector<std::uint64_t> observers;
    std::string said;
};

TEST_F(Windows, TellWhenTheyAreSeenAndWhoHasTheKeys)
{
    const UIWindow first = named("A");
    const UIWindow second = named("B");
    first.makeKeyAndVisible();
    EXPECT_EQ(taken(), "A BecomeVisible, A BecomeKey");
    first.makeKeyAndVisible();
    EXPECT_EQ(taken(), "");
    second.setHidden(false);
    EXPECT_EQ(taken(), "B BecomeVisible");
    EXPECT_FALSE(second.isKeyWindow());
    second.makeKeyWindow();
    EXPECT_EQ(taken(), "A ResignKey, B BecomeKey");
    EXPECT_EQ(send<"keyWindow">(send<"sharedApplication">(classObject<"UIApplication">())), second);
    second.setHidden(true);
    EXPECT_EQ(taken(), "B BecomeHidden hidden, B ResignKey hidden, A BecomeKey") << "they go back";
    first.setHidden(true);
    EXPECT_EQ(taken(), "A BecomeHidden hidden, A ResignKey hidden");
    EXPECT_EQ(send<"keyWindow">(send<"sharedApplication">(classObject<"UIApplication">())), nil);
}

TEST_F(Windows, OneThatGoesTakesTheKeysAlong)
{
    {
        const UIWindow brief = named("A");
        brief.makeKeyAndVisible();
    }
    EXPECT_EQ(send<"keyWindow">(send<"sharedApplication">(classObject<"UIApplication">())), nil);
    taken();
    const UIWindow next = named("B");
    next.makeKeyAndVisible();
    EXPECT_EQ(taken(), "B BecomeVisible, B BecomeKey");
}

bool never(const id&, SEL)
{
    return false;
}
constexpr MethodDefinition keylessMethods[] { method<"canBecomeKeyWindow", &never>() };
const ClassDefinition Keyless_class { .name = "Keyless", .superclassName = "UIWindow", .methods = keylessMethods };

TEST_F(Windows, OneMayRefuseTheKeys)
{
    const UIWindow first = named("A");
    first.makeKeyAndVisible();
    const UIWindow keyless(send<"new">(id(registerClass(Keyless_class))));
    keyless.makeKeyAndVisible();
    EXPECT_FALSE(keyless.isHidden());
    EXPECT_TRUE(first.isKeyWindow());
}

TEST_F(Windows, StandInTheScenesOfTheScreen)
{
    const UIWindow window = named("A");
    const id scene = send<"windowScene">(window);
    ASSERT_TRUE(scene);
    EXPECT_EQ(itemsOf(send<"connectedScenes">(send<"sharedApplication">(classObject<"UIApplication">())))[0], scene);
    EXPECT_EQ(send<"screen">(scene), send<"mainScreen">(classObject<"UIScreen">()));
    EXPECT_EQ((send<"activationState", NSInteger>(scene)), 0);
    EXPECT_EQ((send<"interfaceOrientation", NSInteger>(scene)), 3) << "300 x 200";
    EXPECT_EQ(itemsOf(send<"windows">(scene)).size(), 1U);
    const UIWindow other(send<"initWithWindowScene:">(send<"alloc">(classObject<"UIWindow">()), scene));
    EXPECT_EQ(send<"windowScene">(other), scene);
    send<"setWindowScene:", void>(other, nil);
    EXPECT_EQ(send<"windowScene">(other), nil);
}

TEST_F(Windows, ARootGoesWithAllThatItHasShown)
{
    const UIWindow window = named("A");
    const UIViewController root = UIViewController::create();
    window.setRootViewController(root);
    window.makeKeyAndVisible();
    const UIViewController shown = UIViewController::create();
    shown.setModalPresentationStyle(UIModalPresentationStyle::OverFullScreen);
    root.present(shown, false);
    EXPECT_EQ(window.subviews().size(), 2U);
    window.setRootViewController(UIViewController());
    EXPECT_EQ(window.subviews().size(), 0U);
    EXPECT_FALSE(window.rootViewController());
}

TEST_F(Windows, TheDeviceIsWhatItsScreenIs)
{
    setScreen({ 390, 844 }, 3);
    EXPECT_EQ(UIDevice::current().userInterfaceIdiom(), UIUserInterfaceIdiom::Phone);
    setScreen({ 1180, 820 }, 2);
    EXPECT_EQ(UIDevice::current().userInterfaceIdiom(), UIUserInterfaceIdiom::Pad);
    EXPECT_EQ(describe(UIDevice::current().model()), "\"iPad\"");
    EXPECT_TRUE(UIDevice::current().systemVersion());
}

TEST_F(Windows, ThePasteboardHoldsWhatWasCopiedLast)
{
    const UIPasteboard board = UIPasteboard::general();
    const NSInteger before = board.changeCount();
    board.setString(string("text"));
    EXPECT_EQ(describe(board.string()), "\"text\"");
    board.setImage(send<"new">(classObject<"UIImage">()));
    EXPECT_EQ(board.string(), nil) << "a picture is no text";
    EXPECT_TRUE(board.image());
    board.setString(number(3));
    EXPECT_EQ(board.string(), nil);
    EXPECT_EQ(board.changeCount(), before + 3);
}

} // namespace
