#include "support/text_field_fixture.h"

namespace {

using namespace platform;
using namespace support::text_fields;
using namespace std::chrono_literals;

TEST_F(TextField, IsAskedAndToldInTheDocumentedOrder)
{
    listenToEvents();
    listenToKeyboard();
    tap({ 100, 117 });
    EXPECT_EQ(told(), "begin?, WillChangeFrame, WillShow, begun, begin event");
    settle();
    EXPECT_EQ(told(), "DidChangeFrame, DidShow");
    EXPECT_TRUE(typeOnKeyboard("a"));
    EXPECT_TRUE(pressKey("delete"));
    EXPECT_EQ(told(), "change? 0+0 'a', changed 'a', change? 0+1 '', changed ''");
    EXPECT_TRUE(field.resignFirstResponder());
    EXPECT_EQ(told(), "end?, WillChangeFrame, WillHide, ended, end event");
    settle();
    EXPECT_EQ(told(), "DidChangeFrame, DidHide");
    EXPECT_FALSE(keyboardWindow());
}

TEST_F(TextField, WhatADelegateRefusesDoesntHappen)
{
    const struct {
        const char* refused;
        const char* text; ///< at the end
        bool isEditing;
    } cases[] { { "begin?", "one", false }, { "change?", "one", false }, { "end?", "onex", true },
        { "clear?", "onex", false }, { "", "onex", false } };
    field.setClearButtonMode(UITextFieldViewMode::Always);
    for (const auto& [refused, wanted, isEditing] : cases) {
        field.setText(string("one"));
        delegate->refused = refused;
        field.becomeFirstResponder();
        typeOnKeyboard("x");
        if (std::string_view(refused) == "clear?") {
            runUntilIdle();
            tapKey("Clear text");
        }
        field.resignFirstResponder();
        EXPECT_EQ(text(), wanted) << refused;
        EXPECT_EQ(field.isEditing(), isEditing) << refused;
        delegate->refused = "";
        field.resignFirstResponder();
    }
}

TEST_F(TextField, AProgramsChangesAreNotAskedAbout)
{
    listenToEvents();
    field.setText(string("set"));
    field.insertText(string(" in"));
    field.deleteBackward();
    EXPECT_EQ(text(), "set i");
    EXPECT_EQ(told(), "changed 'set in', changed 'set i'") << "setting the text tells nobody at all";
    field.setText(nil);
    field.deleteBackward();
    EXPECT_EQ(text() + told(), "") << "there was nothing to delete";
    field.insertText(string("two\nlines"));
    EXPECT_EQ(text(), "two lines") << "a field has one";
}

TEST_F(TextField, DeletesWholeCharactersAndCountsThemInUtf16)
{
    const struct {
        const char* before;
        const char* after;
        const char* question;
    } cases[] { { "ab", "a", "change? 1+1 ''" }, { "aé", "a", "change? 1+1 ''" },
        { "ae\xCC\x81", "a", "change? 1+2 ''" }, { "a\xF0\x9F\x98\x80", "a", "change? 1+2 ''" },
        { "\xF0\x9F\x98\x80x", "\xF0\x9F\x98\x80", "change? 2+1 ''" },
        { "\xF0\x9F\x91\xA8\xE2\x80\x8D\xF0\x9F\x91\xA9", "", "change? 0+5 ''" }, { "", "", "" } };
    field.becomeFirstResponder();
    told();
    for (const auto& [before, after, question] : cases) {
        field.setText(string(before));
        pressKey("delete");
        EXPECT_EQ(text(), after) << before;
        EXPECT_EQ(told(), question) << before;
    }
}

TEST_F(TextField, TypingReplacesTheSelection)
{
    field.setText(string("one two"));
    EXPECT_FALSE(field.selectedTextRange()) << "nothing is being edited";
    field.becomeFirstResponder();
    const id start = field.beginningOfDocument();
    const id fourth = field.positionFromPosition(start, 4);
    EXPECT_EQ(field.positionFromPosition(start, 8), nil);
    EXPECT_EQ(field.positionFromPosition(start, -1), nil);
    EXPECT_EQ(field.offsetFromPosition(field.endOfDocument(), fourth), -3);
    field.setSelectedTextRange(field.textRange(fourth, field.endOfDocument()));
    EXPECT_EQ(textOf(field.textInRange(field.selectedTextRange())), "two");
    typeOnKeyboard("x");
    EXPECT_EQ(text(), "one x");
    pressKey("left");
    pressKey("left");
    typeOnKeyboard("y");
    EXPECT_EQ(text(), "oney x");
    field.replaceRange(field.textRange(field.beginningOfDocument(), field.endOfDocument()), string("new"));
    EXPECT_EQ(text(), "new");
    EXPECT_TRUE(field.selectedTextRange().isEmpty());
}

TEST_F(TextField, ATapPutsTheCaretWhereTheFingerWas)
{
    field.setText(string("wwwwwwwwww"));
    field.becomeFirstResponder();
    field.layoutIfNeeded();
    const CGRect place = field.caretRectForPosition(field.positionFromPosition(field.beginningOfDocument(), 3));
    tap({ 20 + place.origin.x + 1, 117 });
    typeOnKeyboard("|");
    EXPECT_EQ(text(), "www|wwwwwww");
    tap({ 360, 117 });
    typeOnKeyboard("|");
    EXPECT_EQ(text(), "www|wwwwwww|");
}

TEST_F(TextField, ReturnEndsTheEditingWhereSomebodyWaitsForIt)
{
    field.becomeFirstResponder();
    told();
    pressKey("return");
    EXPECT_EQ(told(), "return?");
    EXPECT_TRUE(field.isEditing());
    field.addTarget(delegate, sel_registerName("exited:"), UIControlEvents::EditingDidEndOnExit);
    delegate->refused = "return?";
    pressKey("return");
    EXPECT_EQ(told(), "return?");
    delegate->refused = "";
    typeOnKeyboard("a\nb");
    EXPECT_EQ(told(), "change? 0+0 'a', return?, exit event, end?, ended") << "nobody takes the b";
    EXPECT_FALSE(typeOnKeyboard("b"));
    EXPECT_FALSE(pressKey("return"));
}

TEST_F(TextField, TheClearButtonIsThereByItsMode)
{
    using enum UITextFieldViewMode;
    const struct {
        UITextFieldViewMode mode;
        bool whileEditing;
        bool otherwise;
    } cases[] { { Never, false, false }, { WhileEditing, true, false }, { UnlessEditing, false, true },
        { Always, true, true } };
    for (const auto& [mode, whileEditing, otherwise] : cases) {
        field.setText(string("text"));
        field.setClearButtonMode(mode);
        runUntilIdle();
        EXPECT_EQ(isKeyThere("Clear text"), otherwise) << static_cast<long>(mode);
        field.becomeFirstResponder();
        EXPECT_EQ(isKeyThere("Clear text"), whileEditing) << static_cast<long>(mode);
        field.setText(nil);
        EXPECT_FALSE(isKeyThere("Clear text")) << "there is nothing to clear";
        field.resignFirstResponder();
    }
    field.setText(string("text"));
    field.setClearButtonMode(Always);
    told();
    tapKey("Clear text");
    EXPECT_EQ(told(), "clear?, begin?, begun");
    EXPECT_EQ(text(), "");
}

TEST_F(TextField, ASecretIsDotsToWhoeverLooks)
{
    field.setSecureTextEntry(true);
    field.setText(string("pa\xF0\x9F\x98\x80"));
    const std::string screen = descriptionOfScreen();
    EXPECT_NE(screen.find("\"•••\""), std::string::npos) << screen;
    EXPECT_EQ(describe(elementsOfScreen()).find("pa"), std::string::npos);
    EXPECT_EQ(text(), "pa\xF0\x9F\x98\x80");
}

TEST_F(TextField, ViewsAtItsSidesTakeRoomFromTheText)
{
    const auto textWidth = [&] { return send<"textRectForBounds:", CGRect>(field, field.bounds()).size.width; };
    EXPECT_EQ(textWidth(), 350);
    field.setBorderStyle(UITextBorderStyle::RoundedRect);
    EXPECT_EQ(textWidth(), 336);
    field.setLeftView(UIView::withFrame(CGRectMake(0, 0, 30, 20)));
    field.setRightView(UIView::withFrame(CGRectMake(0, 0, 40, 20)));
    EXPECT_EQ(textWidth(), 336) << "they aren't shown";
    field.setLeftViewMode(UITextFieldViewMode::Always);
    EXPECT_EQ(textWidth(), 313);
    field.setRightViewMode(UITextFieldViewMode::WhileEditing);
    EXPECT_EQ(textWidth(), 313);
    field.becomeFirstResponder();
    EXPECT_EQ(textWidth(), 280);
}

TEST_F(TextField, OnlyTheCaretKeepsThePictureFromBeingKept)
{
    field.setText(string("text"));
    const id screen(classNamed<"UIScreenFunctions">());
    const auto isKept = [&] { return send<"pictureAtScale:">(screen, 1.0) == send<"pictureAtScale:">(screen, 1.0); };
    EXPECT_TRUE(isKept());
    field.becomeFirstResponder();
    settle();
    EXPECT_FALSE(isKept()) << "it blinks";
    const std::string shown = pictureOfScreen(1);
    advanceClock(500ms);
    EXPECT_NE(pictureOfScreen(1), shown);
    advanceClock(500ms);
    EXPECT_EQ(pictureOfScreen(1), shown);
    field.resignFirstResponder();
    settle();
    EXPECT_TRUE(isKept());
}

} // namespace
