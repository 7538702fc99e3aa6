#include "platform/dispatch/clock.h"
#include "platform/foundation/index_set.h"
#include "platform/foundation/notification_center.h"
#include "platform/foundation/utf8.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/uikit/keyboard.h"
#include "platform/uikit/text_field.h"
#include "platform/uikit/text_positions.h"
#include "platform/uikit/views.h"

#include <algorithm>

/// What a field does with its text, and whom it asks and tells.

namespace platform {

namespace {

/// A field has one line.
std::string inOneLine(std::string_view text)
{
    std::string line(text);
    std::ranges::replace_if(
        line, [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return line;
}

std::optional<std::size_t> offsetOf(const id& position)
{
    const auto* const known = as<TextPositionObject>(position);
    return known ? std::optional(known->offset) : std::nullopt;
}

} // namespace

id TextFieldObject::text() const
{
    return string(text_);
}

void TextFieldObject::setText(const id& newText)
{
    const auto shown = asString(newText);
    const std::string next = shown ? shown->text() : "";
    if (next == text_)
        return;
    text_ = next;
    select({ text_.size(), text_.size() });
    textIsAnother();
}

/// Whatever has changed it.
void TextFieldObject::textIsAnother()
{
    setNeedsLayout();
    send<"invalidateIntrinsicContentSize", void>(id(this));
    if (firstResponder() == id(this))
        keyboardTextChanged();
}

void TextFieldObject::select(Selection selection)
{
    caretStart_ = CACurrentMediaTime();
    if (std::exchange(selection_, selection) == selection)
        return;
    changed(*this, Asks::Layout);
    if (!isEditing_)
        return;
    keyboardTextChanged();
    ask<"textFieldDidChangeSelection:", void>(delegate.get(), id(this));
}

void TextFieldObject::replace(Selection range, std::string_view replacement)
{
    range.last = std::min(range.last, text_.size());
    range.first = std::min(range.first, range.last);
    text_.replace(range.first, range.last - range.first, replacement);
    const std::size_t end = range.first + replacement.size();
    select({ end, end });
    textIsAnother();
    tellChange();
}

void TextFieldObject::tellChange()
{
    const Ref<TextFieldObject> self(this);
    sendActions(EditingChanged);
    postLocalNotification("UITextFieldTextDidChangeNotification", id(this));
}

bool TextFieldObject::mayChange(Selection range, std::string_view replacement)
{
    const std::size_t first = detail::utf16Length(std::string_view(text_).substr(0, range.first));
    const std::size_t length
        = detail::utf16Length(std::string_view(text_).substr(range.first, range.last - range.first));
    return ask<"textField:shouldChangeCharactersInRange:replacementString:", bool>(
        delegate.get(), id(this), NSRange { first, length }, string(replacement))
        .value_or(true);
}

void TextFieldObject::insertText(const id& inserted)
{
    if (const auto added = asString(inserted))
        replace(selection_, inOneLine(*added));
}

void TextFieldObject::deleteBackward()
{
    Selection range = selection_;
    if (range.first == range.last)
        range.first = caretBefore(text_, range.last);
    if (range.first != range.last)
        replace(range, "");
}

void TextFieldObject::selectAll(const id&)
{
    select({ 0, text_.size() });
}

void TextFieldObject::typeText(const id& typed)
{
    const Ref<TextFieldObject> self(this); // whoever is asked may take it away
    const auto added = asString(typed);
    if (added && mayChange(selection_, inOneLine(*added)))
        send<"insertText:", void>(id(this), typed);
}

void TextFieldObject::typeDeletion()
{
    const Ref<TextFieldObject> self(this);
    Selection range = selection_;
    if (range.first == range.last)
        range.first = caretBefore(text_, range.last);
    if (range.first == range.last || mayChange(range, ""))
        send<"deleteBackward", void>(id(this));
}

/// Ends the editing where somebody wants to hear of such an end.
void TextFieldObject::typeReturn()
{
    const Ref<TextFieldObject> self(this);
    if (!ask<"textFieldShouldReturn:", bool>(delegate.get(), id(this)).value_or(true))
        return;
    const bool ends = (allControlEvents() & EditingDidEndOnExit) != 0;
    sendActions(EditingDidEndOnExit | PrimaryActionTriggered);
    if (ends)
        send<"resignFirstResponder", bool>(id(this));
}

void TextFieldObject::moveCaret(NSInteger steps)
{
    std::size_t at = steps < 0 ? selection_.first : selection_.last;
    if (selection_.first == selection_.last)
        at = steps < 0 ? caretBefore(text_, at) : caretAfter(text_, at);
    select({ at, at });
}

void TextFieldObject::clear()
{
    const Ref<TextFieldObject> self(this);
    if (!ask<"textFieldShouldClear:", bool>(delegate.get(), id(this)).value_or(true))
        return;
    if (!isEditing_)
        send<"becomeFirstResponder", bool>(id(this));
    if (!text_.empty())
        replace({ 0, text_.size() }, "");
}

bool TextFieldObject::becomeFirstResponder()
{
    const Ref<TextFieldObject> self(this);
    const id object(this);
    if (firstResponder() == object)
        return true;
    if (!send<"canBecomeFirstResponder", bool>(object)
        || !ask<"textFieldShouldBeginEditing:", bool>(delegate.get(), object).value_or(true)
        || !sendSuper<"becomeFirstResponder", bool>(classNamed<"UIControl">(), object))
        return false;
    if (firstResponder() != object)
        return false; // somebody who heard of the keyboard has taken it away again
    beginEditing();
    return true;
}

void TextFieldObject::beginEditing()
{
    const id object(this);
    isEditing_ = true;
    select({ text_.size(), text_.size() });
    changed(*this, Asks::Layout);
    keyboardTextChanged();
    ask<"textFieldDidBeginEditing:", void>(delegate.get(), object);
    sendActions(EditingDidBegin);
    postLocalNotification("UITextFieldTextDidBeginEditingNotification", object);
    if (clearsOnBeginEditing && isEditing_)
        clear();
}

bool TextFieldObject::resignFirstResponder()
{
    const Ref<TextFieldObject> self(this);
    const id object(this);
    if (firstResponder() != object)
        return true;
    if (!ask<"textFieldShouldEndEditing:", bool>(delegate.get(), object).value_or(true)
        || !sendSuper<"resignFirstResponder", bool>(classNamed<"UIControl">(), object))
        return false;
    endEditing();
    return true;
}

void TextFieldObject::didLoseFirstResponder()
{
    const Ref<TextFieldObject> self(this);
    endEditing();
}

void TextFieldObject::endEditing()
{
    const id object(this);
    if (!std::exchange(isEditing_, false))
        return;
    changed(*this, Asks::Layout);
    constexpr NSInteger committed = 0;
    const id listener = delegate.get();
    if (!ask<"textFieldDidEndEditing:reason:", void>(listener, object, committed))
        ask<"textFieldDidEndEditing:", void>(listener, object);
    sendActions(EditingDidEnd);
    postLocalNotification("UITextFieldTextDidEndEditingNotification", object);
}

/// A lift inside: the caret goes where the finger was.
void TextFieldObject::endTracking(const id& touch, const id&)
{
    if (!isTouchInside() || !send<"becomeFirstResponder", bool>(id(this)))
        return;
    const id place = closestPosition(send<"locationInView:", CGPoint>(touch, id(this)));
    const std::size_t offset = offsetOf(place).value_or(text_.size());
    select({ offset, offset });
}

TextFieldObject::Selection TextFieldObject::selectionIn(const id& range) const
{
    const auto* const known = as<TextRangeObject>(range);
    if (!known)
        return { text_.size(), text_.size() };
    return { std::min(known->first, text_.size()), std::min(known->last, text_.size()) };
}

/// Nil where nothing is being edited.
id TextFieldObject::selectedTextRange() const
{
    return isEditing_ ? textRange(selection_.first, selection_.last) : nil;
}

void TextFieldObject::setSelectedTextRange(const id& range)
{
    if (as<TextRangeObject>(range))
        select(selectionIn(range));
}

id TextFieldObject::beginningOfDocument() const
{
    return textPosition(0);
}

id TextFieldObject::endOfDocument() const
{
    return textPosition(text_.size());
}

/// As many UTF-16 units further as said; nil beyond the ends.
id TextFieldObject::positionFromPosition(const id& position, NSInteger offset) const
{
    const auto start = offsetOf(position);
    if (!start || *start > text_.size())
        return nil;
    const auto units = static_cast<NSInteger>(detail::utf16Length(std::string_view(text_).substr(0, *start)));
    const auto all = static_cast<NSInteger>(detail::utf16Length(text_));
    if (offset < -units || offset > all - units)
        return nil;
    return textPosition(detail::bytesOfUtf16(text_, static_cast<std::size_t>(units + offset)));
}

NSInteger TextFieldObject::offsetFromPosition(const id& from, const id& to) const
{
    const auto unitsBefore = [&](const id& position) {
        const std::size_t offset = std::min(offsetOf(position).value_or(0), text_.size());
        return static_cast<NSInteger>(detail::utf16Length(std::string_view(text_).substr(0, offset)));
    };
    return unitsBefore(to) - unitsBefore(from);
}

id TextFieldObject::rangeFromPositions(const id& from, const id& to) const
{
    const auto first = offsetOf(from);
    const auto last = offsetOf(to);
    return first && last ? textRange(*first, *last) : nil;
}

id TextFieldObject::textInRange(const id& range) const
{
    if (!as<TextRangeObject>(range))
        return nil;
    const Selection part = selectionIn(range);
    return string(std::string_view(text_).substr(part.first, part.last - part.first));
}

void TextFieldObject::replaceRange(const id& range, const id& replacement)
{
    const auto added = asString(replacement);
    if (as<TextRangeObject>(range) && added)
        replace(selectionIn(range), inOneLine(*added));
}

} // namespace platform
