#pragma once

#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/uikit/control.h"

#include <string>

namespace platform {

/// What a keyboard is to know of whoever takes its text, by the system's numbers.
struct TextTraits {
    NSInteger keyboardType = 0;
    NSInteger returnKeyType = 0;
    NSInteger keyboardAppearance = 0;
    NSInteger autocapitalizationType = 2; ///< the beginnings of sentences
    NSInteger autocorrectionType = 0;
    NSInteger spellCheckingType = 0;
    bool isSecureTextEntry = false;
    bool enablesReturnKeyAutomatically = false;
    id textContentType {};
};

/// The part of a field that shows its text, the selection and the caret.
class TextCanvasObject;

/// A line of text that can be edited. A delegate is asked and told in this order: may it begin, has it begun; for each
/// change that a keyboard makes, may it be; may it clear, may it return; may it end, has it ended. What a program does
/// isn't asked about.
class TextFieldObject : public ControlObject {
public:
    static const ClassDefinition definition;

    enum class BorderStyle : NSInteger { None = 0, Line = 1, Bezel = 2, RoundedRect = 3 };
    /// When something beside the text is seen.
    enum class ViewMode : NSInteger { Never = 0, WhileEditing = 1, UnlessEditing = 2, Always = 3 };

    id placeholder {};
    id textColor {};
    id font {};
    TextAlignment textAlignment = TextAlignment::Natural;
    BorderStyle borderStyle = BorderStyle::None;
    ViewMode clearButtonMode = ViewMode::Never;
    ViewMode leftViewMode = ViewMode::Never;
    ViewMode rightViewMode = ViewMode::Never;
    bool clearsOnBeginEditing = false;
    id background {};
    Weak<NSObject> delegate {};

    id initWithFrame(CGRect frame);
    TextTraits& textTraits() noexcept { return traits_; }
    void traitsDidChange();
    id text() const;
    id accessibilityValue() const { return string(drawnText()); }
    void setText(const id& newText);
    bool hasText() const noexcept { return !text_.empty(); }
    bool isEditing() const noexcept { return isEditing_; }
    id currentFont() const;
    id leftView() const { return id(leftView_); }
    id rightView() const { return id(rightView_); }
    void setLeftView(const id& view) { setSideView(leftView_, view); }
    void setRightView(const id& view) { setSideView(rightView_, view); }

    // By a program.
    void insertText(const id& inserted);
    void deleteBackward();
    void selectAll(const id& sender);

    // By a keyboard.
    void typeText(const id& typed);
    void typeDeletion();
    void typeReturn();
    void moveCaret(NSInteger steps);

    bool becomeFirstResponder();
    bool resignFirstResponder();
    void didLoseFirstResponder();
    void endTracking(const id& touch, const id& event);
    void clear();

    // Places in the text.
    id selectedTextRange() const;
    void setSelectedTextRange(const id& range);
    id beginningOfDocument() const;
    id endOfDocument() const;
    id positionFromPosition(const id& position, NSInteger offset) const;
    NSInteger offsetFromPosition(const id& from, const id& to) const;
    id rangeFromPositions(const id& from, const id& to) const;
    id textInRange(const id& range) const;
    void replaceRange(const id& range, const id& replacement);
    CGRect caretRect(const id& position) const;
    id closestPosition(CGPoint point) const;

    CGRect textRect(CGRect bounds) const;
    CGRect placeholderRect(CGRect bounds) const;
    CGRect editingRect(CGRect bounds) const;
    CGRect clearButtonRect(CGRect bounds) const;
    CGRect leftViewRect(CGRect bounds) const;
    CGRect rightViewRect(CGRect bounds) const;
    void layoutSubviews();

    CGSize sizeThatFits(CGSize size) const override;
    CGSize intrinsicContentSize() const override { return sizeThatFits({}); }
    bool constrainsSubview(const ViewObject&) const noexcept override { return false; }
    void drawContent(Canvas& canvas, const CGRect& seen) const override;
    std::optional<std::string> shownText() const override;

protected:
    void stateChanged() override;

private:
    friend class TextCanvasObject;

    struct Selection {
        std::size_t first = 0;
        std::size_t last = 0;
        friend bool operator==(const Selection&, const Selection&) = default;
    };

    void replace(Selection range, std::string_view replacement);
    bool mayChange(Selection range, std::string_view replacement);
    void select(Selection selection);
    Selection selectionIn(const id& range) const;
    void beginEditing();
    void endEditing();
    void tellChange();
    void textIsAnother();
    bool isShown(ViewMode mode) const noexcept;
    void setSideView(Ref<ViewObject>& present, const id& view);
    void showSide(const Ref<ViewObject>& view, bool shown, CGRect frame);
    double insetAtSides() const noexcept;
    std::string drawnText() const; ///< as it is seen: of a secret the dots alone
    std::size_t drawnOffset(std::size_t offset) const; ///< of a place in the text
    Font fontOf() const;
    void drawText(Canvas& canvas, const CGRect& box) const;
    double textOrigin(double width) const;
    void keepCaretInSight(double width);

    TextTraits traits_ {};
    std::string text_ {};
    Selection selection_ {};
    bool isEditing_ = false;
    double caretStart_ = 0; ///< when it began to blink
    double scrolled_ = 0; ///< how far the text has been moved for the caret to be seen
    Ref<ViewObject> canvas_ {};
    Ref<ViewObject> clearButton_ {};
    Ref<ViewObject> leftView_ {};
    Ref<ViewObject> rightView_ {};
};

/// The rows of the text input traits, of a class that has `TextTraits& textTraits()`.
template <class C> struct TraitMethods {
    template <auto Member> using Value = std::remove_cvref_t<decltype(std::declval<TextTraits&>().*Member)>;
    template <auto Member> static Value<Member> get(const id& self, SEL)
    {
        return static_cast<C&>(*self).textTraits().*Member;
    }
    template <auto Member> static void set(const id& self, SEL, detail::ArgumentType<Value<Member>> value)
    {
        static_cast<C&>(*self).textTraits().*Member = value;
        ask<"_traitsDidChange", void>(self);
    }

    static constexpr MethodDefinition rows[] {
        method<"autocapitalizationType", &get<&TextTraits::autocapitalizationType>>(),
        method<"autocorrectionType", &get<&TextTraits::autocorrectionType>>(),
        method<"enablesReturnKeyAutomatically", &get<&TextTraits::enablesReturnKeyAutomatically>>(),
        method<"isSecureTextEntry", &get<&TextTraits::isSecureTextEntry>>(),
        method<"keyboardAppearance", &get<&TextTraits::keyboardAppearance>>(),
        method<"keyboardType", &get<&TextTraits::keyboardType>>(),
        method<"returnKeyType", &get<&TextTraits::returnKeyType>>(),
        method<"setAutocapitalizationType:", &set<&TextTraits::autocapitalizationType>>(),
        method<"setAutocorrectionType:", &set<&TextTraits::autocorrectionType>>(),
        method<"setEnablesReturnKeyAutomatically:", &set<&TextTraits::enablesReturnKeyAutomatically>>(),
        method<"setKeyboardAppearance:", &set<&TextTraits::keyboardAppearance>>(),
        method<"setKeyboardType:", &set<&TextTraits::keyboardType>>(),
        method<"setReturnKeyType:", &set<&TextTraits::returnKeyType>>(),
        method<"setSecureTextEntry:", &set<&TextTraits::isSecureTextEntry>>(),
        method<"setSpellCheckingType:", &set<&TextTraits::spellCheckingType>>(),
        method<"setTextContentType:", &set<&TextTraits::textContentType>>(),
        method<"spellCheckingType", &get<&TextTraits::spellCheckingType>>(),
        method<"textContentType", &get<&TextTraits::textContentType>>(),
    };
};

} // namespace platform
