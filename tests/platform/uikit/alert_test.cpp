#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "support/view_test.h"

using namespace platform;
using support::classObject;

namespace {

class Alert : public support::ViewTest {
protected:
    Alert() { setScreen({ 390, 844 }, 2); }

    id addAction(const char* title, NSInteger style)
    {
        id action = send<"actionWithTitle:style:handler:">(classObject<"UIAlertAction">(), string(title), style,
            block([this](const id& chosen) { told += describe(send<"title">(chosen)); }));
        send<"addAction:", void>(alert, action);
        return action;
    }

    void present()
    {
        send<"presentViewController:animated:completion:", void>(
            below, alert, true, block([this] { told += "presented "; }));
    }

    static void tap(CGPoint point)
    {
        touchScreenAt(point, TouchKind::Began);
        touchScreenAt(point, TouchKind::Ended);
    }

    const id below = send<"new">(classObject<"UIViewController">());
    id alert = send<"alertControllerWithTitle:message:preferredStyle:">(
        classObject<"UIAlertController">(), string("Title"), string("What has happened"), NSInteger { 1 });
    std::string told;
};

TEST_F(Alert, StandsBeforeEverythingUntilAFingerAnswers)
{
    const id home = makeWindow();
    addAction("Cancel", 1);
    addAction("Delete", 2);
    present();
    EXPECT_EQ(told, "presented ");
    EXPECT_EQ(send<"presentedViewController">(below), alert);
    const std::string shown = descriptionOfScreen();
    for (const char* const text : { "\"Title\"", "\"What has happened\"", "\"Cancel\"", "\"Delete\"" })
        EXPECT_NE(shown.find(text), std::string::npos) << shown;
    tap({ 195, 100 });
    EXPECT_EQ(told, "presented ") << "beside it";
    const CGRect box = send<"frame", CGRect>(itemsOf(send<"subviews">(send<"view">(alert)))[0]);
    tap({ 195, box.origin.y + box.size.height - 20 });
    EXPECT_EQ(told, "presented \"Delete\"");
    EXPECT_EQ(send<"presentedViewController">(below), nil);
    EXPECT_EQ(descriptionOfScreen().find("\"Title\""), std::string::npos);
}

TEST_F(Alert, IsAnsweredOnceAndByItsOwnActions)
{
    const id off = addAction("Off", 0);
    send<"setEnabled:", void>(off, false);
    const id yes = addAction("Yes", 0);
    present();
    told.clear();
    present();
    EXPECT_EQ(told, "") << "it stands there already";
    send<"_choose:", void>(alert, off);
    send<"_choose:", void>(alert, nil);
    send<"_choose:", void>(alert, string("Yes"));
    EXPECT_EQ(told, "");
    EXPECT_TRUE(send<"presentedViewController">(below));
    send<"_choose:", void>(alert, yes);
    EXPECT_EQ(told, "\"Yes\"");
}

TEST_F(Alert, GoesWithWhatItStandsOn)
{
    present();
    const id above = send<"new">(classObject<"UIViewController">());
    send<"presentViewController:animated:completion:", void>(alert, above, true, nil);
    send<"dismissViewControllerAnimated:completion:", void>(below, true, block([this] { told += "gone"; }));
    EXPECT_EQ(told, "presented gone");
    EXPECT_EQ(send<"presentedViewController">(below), nil);
    EXPECT_EQ(send<"presentedViewController">(alert), nil);
    present();
    send<"dismissViewControllerAnimated:completion:", void>(alert, true, nil);
    EXPECT_EQ(send<"presentedViewController">(below), nil) << "it may ask for its own end";
}

} // namespace
