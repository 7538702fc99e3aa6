#include "support/text_field_fixture.h"

namespace {

using namespace platform;
using namespace support::text_fields;
using namespace std::chrono_literals;

class Keyboard : public TextField { };

TEST_F(Keyboard, FingersTypeOnTheKeys)
{
    field.becomeFirstResponder();
    settle();
    for (const char* const key : { "H", "i", "space", "y", "123", "5", "space", "a", "delete", "b" })
        tapKey(key);
    EXPECT_EQ(text(), "Hi y5 b");
    tapKey("123");
    tapKey("#+=");
    tapKey("€");
    EXPECT_EQ(text(), "Hi y5 b€");
    told();
    tapKey("return");
    EXPECT_EQ(told(), "return?");
}

TEST_F(Keyboard, CapitalsComeWhereTheyAreWanted)
{
    using enum UITextAutocapitalizationType;
    const struct {
        UITextAutocapitalizationType type;
        const char* text;
        bool isCapital;
    } cases[] { { Sentences, "", true }, { Sentences, "One", false }, { Sentences, "One ", false },
        { Sentences, "One. ", true }, { Sentences, "One.", false }, { Words, "One ", true }, { Words, "One", false },
        { AllCharacters, "One", true }, { None, "", false } };
    for (const auto& [type, before, isCapital] : cases) {
        field.setAutocapitalizationType(type);
        field.setText(string(before));
        field.becomeFirstResponder();
        settle();
        EXPECT_EQ(isKeyThere("Q"), isCapital) << before;
        field.resignFirstResponder();
        settle();
    }
}

TEST_F(Keyboard, ShiftHoldsForOneLetterAndTwiceForAll)
{
    field.setAutocapitalizationType(UITextAutocapitalizationType::None);
    field.becomeFirstResponder();
    settle();
    const CGPoint shift = middleOf(elementsOfScreen(), "shift");
    tap(shift);
    tapKey("A");
    tapKey("b");
    advanceClock(1s);
    for (int tapped = 0; tapped < 2; ++tapped) {
        touchScreenAt(shift, TouchKind::Began);
        touchScreenAt(shift, TouchKind::Ended);
        advanceClock(100ms);
    }
    tapKey("C");
    tapKey("D");
    tap(shift);
    tapKey("e");
    EXPECT_EQ(text(), "AbCDe");
}

TEST_F(Keyboard, AHeldDeletionGoesOnUntilTheFingerLifts)
{
    field.setText(string("abcdefgh"));
    field.becomeFirstResponder();
    settle();
    const CGPoint key = middleOf(elementsOfScreen(), "delete");
    touchScreenAt(key, TouchKind::Began);
    EXPECT_EQ(text(), "abcdefg");
    advanceClock(499ms);
    EXPECT_EQ(text(), "abcdefg");
    advanceClock(201ms);
    EXPECT_EQ(text(), "abcd");
    touchScreenAt(key, TouchKind::Ended);
    advanceClock(2s);
    EXPECT_EQ(text(), "abcd");
}

TEST_F(Keyboard, AFingerMaySlideToTheKeyThatItMeans)
{
    field.becomeFirstResponder();
    settle();
    const CGPoint first = middleOf(elementsOfScreen(), "Q");
    touchScreenAt(first, TouchKind::Began);
    touchScreenAt(middleOf(elementsOfScreen(), "W"), TouchKind::Moved);
    touchScreenAt(middleOf(elementsOfScreen(), "W"), TouchKind::Ended);
    EXPECT_EQ(text(), "W");
    touchScreenAt(first, TouchKind::Began);
    touchScreenAt(first, TouchKind::Cancelled);
    EXPECT_EQ(text(), "W");
}

TEST_F(Keyboard, PadsHaveDigitsAlone)
{
    const struct {
        UIKeyboardType type;
        bool hasLetters;
        bool hasPoint;
    } cases[] { { UIKeyboardType::NumberPad, false, false }, { UIKeyboardType::DecimalPad, false, true },
        { UIKeyboardType::EmailAddress, true, true }, { UIKeyboardType::URL, true, true },
        { UIKeyboardType::Default, true, false } };
    field.setAutocapitalizationType(UITextAutocapitalizationType::None);
    field.becomeFirstResponder();
    settle();
    for (const auto& [type, hasLetters, hasPoint] : cases) {
        field.setKeyboardType(type);
        runUntilIdle();
        EXPECT_EQ(isKeyThere("q"), hasLetters) << static_cast<long>(type);
        EXPECT_EQ(isKeyThere("."), hasPoint) << static_cast<long>(type);
    }
    field.setKeyboardType(UIKeyboardType::DecimalPad);
    for (const char* const key : { "0", ".", "7", "5", "delete" })
        tapKey(key);
    EXPECT_EQ(text(), "0.7");
}

TEST_F(Keyboard, TheReturnKeySaysWhatItDoesAndMayWaitForText)
{
    field.setReturnKeyType(UIReturnKeyType::Search);
    field.setEnablesReturnKeyAutomatically(true);
    field.becomeFirstResponder();
    settle();
    told();
    tapKey("search");
    EXPECT_EQ(told(), "");
    field.setText(string("x"));
    tapKey("search");
    EXPECT_EQ(told(), "return?");
}

TEST_F(Keyboard, TheNotificationsSayWhereTheKeyboardIs)
{
    listenToKeyboard();
    field.becomeFirstResponder();
    const auto info = [&](std::string_view key) { return pairsOf(delegate->lastInfo)[key]; };
    const auto rect = [&](std::string_view key) { return send<"CGRectValue", CGRect>(info(key)); };
    EXPECT_EQ(rect("UIKeyboardFrameBeginUserInfoKey"), CGRectMake(0, 844, 390, 250));
    EXPECT_EQ(rect("UIKeyboardFrameEndUserInfoKey"), CGRectMake(0, 594, 390, 250));
    EXPECT_EQ(asDouble(info("UIKeyboardAnimationDurationUserInfoKey")), 0.25);
    EXPECT_EQ(asInteger(info("UIKeyboardAnimationCurveUserInfoKey")), 7);
    EXPECT_TRUE(boolValue(info("UIKeyboardIsLocalUserInfoKey")));
    EXPECT_TRUE(keyboardWindow());
    EXPECT_FALSE(keyboardWindow().isKeyWindow());
    settle();
    told();
    const UITextField other = UITextField::withFrame(CGRectMake(20, 200, 350, 34));
    window.addSubview(other);
    EXPECT_TRUE(other.becomeFirstResponder());
    settle();
    EXPECT_EQ(told(), "end?, ended") << "from one field to the next the keyboard stays";
    setScreen({ 844, 390 }, 2);
    EXPECT_EQ(told(), "WillChangeFrame, DidChangeFrame");
}

TEST_F(Keyboard, TheKeyboardLeavesWithWhomeverItWasFor)
{
    const std::pair<const char*, std::function<void()>> endings[] {
        { "removed", [&] { field.removeFromSuperview(); } },
        { "its window hidden", [&] { window.setHidden(true); } },
        { "disabled", [&] { field.setEnabled(false); } },
        { "freed with its window",
            [&] {
                field = UITextField();
                window = UIWindow();
            } },
    };
    for (const bool refuses : { false, true })
        for (const auto& [name, ending] : endings) {
            if (refuses && std::string_view(name) == "disabled")
                continue; // it asks, as resigning does
            window = UIWindow::create();
            window.setHidden(false);
            field = UITextField::withFrame(CGRectMake(20, 100, 350, 34));
            field.setDelegate(delegate);
            window.addSubview(field);
            EXPECT_TRUE(field.becomeFirstResponder()) << name;
            settle();
            EXPECT_TRUE(keyboardWindow()) << name;
            delegate->refused = refuses ? "end?" : "";
            ending();
            settle();
            EXPECT_FALSE(keyboardWindow()) << name;
            EXPECT_FALSE(typeOnKeyboard("x")) << name;
            delegate->refused = "";
        }
}

std::string taken;

bool canBecome(const id&, SEL)
{
    return true;
}
void takeDeletion(const id&, SEL)
{
    taken += "<";
}
void takeText(const id&, SEL, const id& text)
{
    taken += textOf(text);
}

constexpr MethodDefinition takerMethods[] {
    method<"canBecomeFirstResponder", &canBecome>(),
    method<"deleteBackward", &takeDeletion>(),
    method<"insertText:", &takeText>(),
};
const ClassDefinition TextTaker_class { .name = "TextTaker", .superclassName = "UIView", .methods = takerMethods };

TEST_F(Keyboard, AViewThatTakesTextHasAKeyboardToo)
{
    const UIView view(send<"new">(id(registerClass(TextTaker_class))));
    window.addSubview(view);
    EXPECT_TRUE(view.becomeFirstResponder());
    settle();
    tapKey("a");
    tapKey("delete");
    tapKey("return");
    EXPECT_EQ(taken, "a<\n");
}

} // namespace
