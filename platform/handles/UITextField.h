#pragma once

#include "platform/handles/UIControl.h"
#include "platform/handles/UIFont.h"
#include "platform/handles/UIImage.h"
#include "platform/handles/UILabel.h"

namespace platform {

enum class UITextBorderStyle : NSInteger { None = 0, Line = 1, Bezel = 2, RoundedRect = 3 };
enum class UITextFieldViewMode : NSInteger { Never = 0, WhileEditing = 1, UnlessEditing = 2, Always = 3 };
enum class UIKeyboardType : NSInteger {
    Default = 0,
    ASCIICapable = 1,
    NumbersAndPunctuation = 2,
    URL = 3,
    NumberPad = 4,
    PhonePad = 5,
    NamePhonePad = 6,
    EmailAddress = 7,
    DecimalPad = 8,
    Twitter = 9,
    WebSearch = 10,
    ASCIICapableNumberPad = 11,
};
enum class UIReturnKeyType : NSInteger {
    Default = 0,
    Go = 1,
    Join = 3,
    Next = 4,
    Route = 5,
    Search = 6,
    Send = 7,
    Done = 9,
    EmergencyCall = 10,
    Continue = 11,
};
enum class UITextAutocapitalizationType : NSInteger { None = 0, Words = 1, Sentences = 2, AllCharacters = 3 };
enum class UITextAutocorrectionType : NSInteger { Default = 0, No = 1, Yes = 2 };
enum class UIKeyboardAppearance : NSInteger { Default = 0, Dark = 1, Light = 2 };

class UITextRange : public Handle {
public:
    using Handle::Handle;
    static Class classObject() { return classNamed<"UITextRange">(); }
    bool isEmpty() const { return call<"isEmpty", bool>(); }
    id start() const { return call<"start", id>(); }
    id end() const { return call<"end", id>(); }
};

class UITextField : public UIControl {
public:
    using UIControl::UIControl;
    static Class classObject() { return classNamed<"UITextField">(); }
    static UITextField withFrame(const CGRect& frame) { return initialised<UITextField, "initWithFrame:">(frame); }

    /// Never nil.
    id text() const { return call<"text", id>(); }
    void setText(const id& text) const { call<"setText:">(text); }
    id placeholder() const { return call<"placeholder", id>(); }
    void setPlaceholder(const id& placeholder) const { call<"setPlaceholder:">(placeholder); }
    void setFont(const UIFont& font) const { call<"setFont:">(font); }
    void setTextColor(const UIColor& color) const { call<"setTextColor:">(color); }
    void setTextAlignment(NSTextAlignment alignment) const { call<"setTextAlignment:">(alignment); }
    void setBorderStyle(UITextBorderStyle style) const { call<"setBorderStyle:">(style); }
    void setBackground(const UIImage& image) const { call<"setBackground:">(image); }
    void setClearButtonMode(UITextFieldViewMode mode) const { call<"setClearButtonMode:">(mode); }
    void setClearsOnBeginEditing(bool clears) const { call<"setClearsOnBeginEditing:">(clears); }
    void setLeftView(const UIView& view) const { call<"setLeftView:">(view); }
    void setLeftViewMode(UITextFieldViewMode mode) const { call<"setLeftViewMode:">(mode); }
    void setRightView(const UIView& view) const { call<"setRightView:">(view); }
    void setRightViewMode(UITextFieldViewMode mode) const { call<"setRightViewMode:">(mode); }
    /// It isn't kept.
    void setDelegate(const id& delegate) const { call<"setDelegate:">(delegate); }
    bool isEditing() const { return call<"isEditing", bool>(); }

    void setKeyboardType(UIKeyboardType type) const { call<"setKeyboardType:">(type); }
    void setReturnKeyType(UIReturnKeyType type) const { call<"setReturnKeyType:">(type); }
    void setKeyboardAppearance(UIKeyboardAppearance appearance) const { call<"setKeyboardAppearance:">(appearance); }
    void setSecureTextEntry(bool isSecure) const { call<"setSecureTextEntry:">(isSecure); }
    void setAutocapitalizationType(UITextAutocapitalizationType type) const
    {
        call<"setAutocapitalizationType:">(type);
    }
    void setAutocorrectionType(UITextAutocorrectionType type) const { call<"setAutocorrectionType:">(type); }
    void setEnablesReturnKeyAutomatically(bool enables) const { call<"setEnablesReturnKeyAutomatically:">(enables); }

    bool hasText() const { return call<"hasText", bool>(); }
    void insertText(const id& text) const { call<"insertText:">(text); }
    void deleteBackward() const { call<"deleteBackward">(); }
    /// Nil where nothing is being edited.
    UITextRange selectedTextRange() const { return call<"selectedTextRange", UITextRange>(); }
    void setSelectedTextRange(const UITextRange& range) const { call<"setSelectedTextRange:">(range); }
    id beginningOfDocument() const { return call<"beginningOfDocument", id>(); }
    id endOfDocument() const { return call<"endOfDocument", id>(); }
    /// In UTF-16 units; nil beyond the ends.
    id positionFromPosition(const id& position, NSInteger offset) const
    {
        return call<"positionFromPosition:offset:", id>(position, offset);
    }
    NSInteger offsetFromPosition(const id& from, const id& to) const
    {
        return call<"offsetFromPosition:toPosition:", NSInteger>(from, to);
    }
    UITextRange textRange(const id& from, const id& to) const
    {
        return call<"textRangeFromPosition:toPosition:", UITextRange>(from, to);
    }
    id textInRange(const UITextRange& range) const { return call<"textInRange:", id>(range); }
    void replaceRange(const UITextRange& range, const id& text) const { call<"replaceRange:withText:">(range, text); }
    CGRect caretRectForPosition(const id& position) const { return call<"caretRectForPosition:", CGRect>(position); }
};

} // namespace platform
