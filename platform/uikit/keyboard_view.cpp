#include "platform/uikit/keyboard_view.h"

#include "platform/dispatch/clock.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/values.h"
#include "platform/graphics/appearance.h"
#include "platform/runtime/message.h"
#include "platform/uikit/device.h"
#include "platform/uikit/shades.h"
#include "platform/uikit/views.h"

#include <chrono>

namespace platform {

namespace {

constexpr double keyRadius = 5;
constexpr double symbolSide = 21;

/// A keyboard may be dark where the screen isn't.
Color now(const Shade& shade)
{
    return isDarkNow() ? shade.dark : shade.light;
}

constexpr Shade ground { shade::rgb(209, 212, 218), shade::rgb(43, 43, 45) };
constexpr Shade lightKey { shade::gray(255), shade::rgb(107, 107, 110) };
constexpr Shade darkKey { shade::rgb(171, 176, 186), shade::rgb(70, 70, 73) };
constexpr Shade edge { shade::rgb(137, 139, 144), shade::rgb(24, 24, 26) };
constexpr Shade blueKey { shade::rgb(0, 122, 255), shade::rgb(10, 132, 255) };
constexpr Shade ink { shade::gray(0), shade::gray(255) };

/// A key; what it is called is what it says.
class KeyViewObject final : public ViewObject {
public:
    static const ClassDefinition definition;

    KeyCap key {};
    bool isPressed = false;

    const KeyboardViewObject* keyboard() const { return dynamic_cast<const KeyboardViewObject*>(superview); }

    std::string title() const
    {
        const KeyboardViewObject* const board = keyboard();
        switch (key.kind) {
        case KeyKind::Character:
            return board && board->shift() != ShiftState::Off ? upperCaseText(key.text) : key.text;
        case KeyKind::Space:
            return "space";
        case KeyKind::Return:
            return returnKeyTitle(board ? board->returnKeyType() : 0);
        case KeyKind::Delete:
            return "delete";
        case KeyKind::Shift:
            return "shift";
        case KeyKind::Page:
            return key.page == KeyPage::Letters ? "ABC" : key.page == KeyPage::Digits ? "123" : "#+=";
        }
        return "";
    }

    id accessibilityLabel() const { return string(title()); }

    void drawContent(Canvas& canvas, const CGRect& seen) const override
    {
        const KeyboardViewObject* const board = keyboard();
        if (!board)
            return;
        const bool isLight = key.kind == KeyKind::Character || key.kind == KeyKind::Space
            || (key.kind == KeyKind::Shift && board->shift() != ShiftState::Off);
        const bool isBlue
            = key.kind == KeyKind::Return && board->canReturn() && isReturnKeyProminent(board->returnKeyType());
        const bool isBare = key.kind == KeyKind::Delete && isPadPage(firstPage(board->type()));
        // Under the finger light and dark change places.
        const Color face = isBlue && !isPressed ? now(blueKey) : now(isLight != isPressed ? lightKey : darkKey);
        if (!isBare || isPressed) {
            canvas.fill(Path::roundedRect(CGRectOffset(seen, 0, 1), keyRadius), now(edge));
            canvas.fill(Path::roundedRect(seen, keyRadius), face);
        }
        Color sign = isBlue && !isPressed ? Color { 1, 1, 1, 1 } : now(ink);
        if (key.kind == KeyKind::Return && !board->canReturn())
            sign.alpha = 0.35;
        drawSign(canvas, seen, sign, *board);
    }

private:
    void drawSign(Canvas& canvas, const CGRect& seen, const Color& sign, const KeyboardViewObject& board) const
    {
        if (key.kind == KeyKind::Delete)
            return drawSymbol(canvas, seen, "delete.left", sign);
        if (key.kind == KeyKind::Shift)
            return drawSymbol(canvas, seen,
                board.shift() == ShiftState::Off      ? "shift"
                    : board.shift() == ShiftState::On ? "shift.fill"
                                                      : "capslock.fill",
                isDarkNow() && board.shift() != ShiftState::Off ? Color { 1, 1, 1, 1 } : sign);
        const bool isLetter = key.kind == KeyKind::Character && key.text.size() < 4;
        const bool isLarge = isLetter && isPadPage(firstPage(board.type()));
        const Font font { .size = isLarge ? 26.0 : isLetter ? 22.5 : 16.0 };
        const std::string text = title();
        const CGSize size = measureText(text, { .font = font });
        drawText(canvas, text, { .font = font, .alignment = TextAlignment::Center },
            CGRectMake(seen.origin.x, CGRectGetMidY(seen) - size.height / 2, seen.size.width, size.height + 2), sign);
    }

    static void drawSymbol(Canvas& canvas, const CGRect& seen, std::string_view name, const Color& tint)
    {
        const id image = send<"systemImageNamed:">(id(classNamed<"UIImage">()), string(name));
        if (const auto* const picture = as<ImageObject>(image))
            picture->draw(canvas,
                CGRectMake(
                    CGRectGetMidX(seen) - symbolSide / 2, CGRectGetMidY(seen) - symbolSide / 2, symbolSide, symbolSide),
                tint);
    }
};

constexpr MethodDefinition keyMethods[] {
    method<"accessibilityLabel", &KeyViewObject::accessibilityLabel>(),
};
const ClassDefinition KeyViewObject::definition { .name = "UIKBKeyView",
    .superclass = &ViewObject::definition,
    .allocate = allocate<KeyViewObject>,
    .methods = keyMethods };

/// By the system's numbers.
enum class Capitals : NSInteger { None = 0, Words = 1, Sentences = 2, All = 3 };

/// What stands before the caret; empty where the responder doesn't say.
std::optional<std::string> textBeforeCaret(const id& responder)
{
    const id range = askObject<"selectedTextRange">(responder);
    const id before = askObject<"textInRange:">(responder,
        askObject<"textRangeFromPosition:toPosition:">(
            responder, askObject<"beginningOfDocument">(responder), askObject<"start">(range)));
    const auto text = asString(before);
    return text ? std::optional(text->text()) : std::nullopt;
}

} // namespace

bool takesText(const id& responder)
{
    return respondsTo<"insertText:">(responder) && respondsTo<"deleteBackward">(responder);
}

void enterText(std::string_view text)
{
    const id responder = firstResponder();
    if (!ask<"_insertTypedText:", void>(responder, string(text)) && takesText(responder))
        send<"insertText:", void>(responder, string(text));
}

void eraseText()
{
    const id responder = firstResponder();
    if (!ask<"_deleteTyped", void>(responder) && takesText(responder))
        send<"deleteBackward", void>(responder);
}

void pressReturn()
{
    const id responder = firstResponder();
    if (!ask<"_returnTyped", void>(responder) && takesText(responder))
        send<"insertText:", void>(responder, string("\n"));
}

void KeyboardViewObject::setUp(const id& responder)
{
    type_ = static_cast<KeyboardType>(ask<"keyboardType", NSInteger>(responder).value_or(0));
    page_ = firstPage(type_);
    shift_ = ShiftState::Off;
    pressed_.reset();
    ++press_;
    keys_.clear();
    textChanged();
    changed(*this, Asks::Layout);
}

void KeyboardViewObject::textChanged()
{
    const id responder = firstResponder();
    returnKeyType_ = ask<"returnKeyType", NSInteger>(responder).value_or(0);
    needsText_ = ask<"enablesReturnKeyAutomatically", bool>(responder).value_or(false);
    canReturn_ = !needsText_ || ask<"hasText", bool>(responder).value_or(true);
    if (shift_ != ShiftState::Locked)
        setShift(beginsCapital() ? ShiftState::On : ShiftState::Off);
    changed(*this, Asks::Drawing);
}

/// Whether the next letter is a capital by what the responder wants.
bool KeyboardViewObject::beginsCapital() const
{
    const id responder = firstResponder();
    if (page_ != KeyPage::Letters || type_ == KeyboardType::Url || type_ == KeyboardType::EmailAddress
        || ask<"isSecureTextEntry", bool>(responder).value_or(false))
        return false;
    const auto wanted = static_cast<Capitals>(ask<"autocapitalizationType", NSInteger>(responder).value_or(0));
    const auto before = textBeforeCaret(responder);
    switch (wanted) {
    case Capitals::None:
        return false;
    case Capitals::All:
        return true;
    case Capitals::Words:
        return !before || before->empty() || before->ends_with(' ');
    case Capitals::Sentences: {
        if (!before)
            return false;
        const std::size_t last = before->find_last_not_of(' ');
        const bool follows = last + 1 < before->size();
        return last == std::string::npos
            || (follows && std::string_view(".!?").find((*before)[last]) != std::string_view::npos);
    }
    }
    return false;
}

void KeyboardViewObject::setShift(ShiftState shift)
{
    if (std::exchange(shift_, shift) != shift)
        changed(*this, Asks::Drawing);
}

/// Twice in a moment locks it.
void KeyboardViewObject::pressShift()
{
    constexpr double moment = 0.3;
    const double time = CACurrentMediaTime();
    const bool isSecond = lastShift_ >= 0 && time - lastShift_ <= moment;
    lastShift_ = isSecond ? -1 : time;
    if (isSecond)
        setShift(ShiftState::Locked);
    else
        setShift(shift_ == ShiftState::Off ? ShiftState::On : ShiftState::Off);
}

void KeyboardViewObject::makeKeys()
{
    keys_ = keysOf(page_, type_, bounds.size);
    for (const Ref<ViewObject>& view : views_)
        view->removeFromSuperview();
    views_.clear();
    for (const KeyCap& key : keys_) {
        const Ref<KeyViewObject> view = make<KeyViewObject>();
        view->key = key;
        view->setFrame(key.frame);
        insertSubview(view, subviews.size());
        views_.push_back(view);
    }
}

void KeyboardViewObject::layoutSubviews()
{
    if (keys_.empty() || keys_ != keysOf(page_, type_, bounds.size))
        makeKeys();
}

void KeyboardViewObject::setPressed(std::optional<std::size_t> key)
{
    const auto mark = [this](bool pressed) {
        if (pressed_ && *pressed_ < views_.size())
            static_cast<KeyViewObject&>(*views_[*pressed_]).isPressed = pressed;
    };
    mark(false);
    pressed_ = key;
    mark(true);
    changed(*this, Asks::Drawing);
}

std::size_t KeyboardViewObject::keyUnder(const id& touches) const
{
    const CGPoint point
        = send<"locationInView:", CGPoint>(send<"anyObject">(touches), id(const_cast<KeyboardViewObject*>(this)));
    return static_cast<std::size_t>(keyNear(keys_, point) - keys_.data());
}

void KeyboardViewObject::touchesBegan(const id& touches, const id&)
{
    if (keys_.empty())
        return;
    const Ref<KeyboardViewObject> self(this);
    const std::size_t key = keyUnder(touches);
    setPressed(key);
    ++press_;
    if (keys_[key].kind == KeyKind::Shift)
        pressShift();
    if (keys_[key].kind != KeyKind::Delete)
        return;
    eraseText();
    constexpr std::chrono::nanoseconds patience = std::chrono::milliseconds { 500 };
    dispatch_after(patience, dispatch_get_main_queue(), [self, press = press_] { self->repeatDeletion(press); });
}

void KeyboardViewObject::repeatDeletion(unsigned press)
{
    if (press_ != press || !pressed_ || !takesText(firstResponder()))
        return;
    eraseText();
    constexpr std::chrono::nanoseconds pause = std::chrono::milliseconds { 100 };
    dispatch_after(pause, dispatch_get_main_queue(),
        [self = Ref<KeyboardViewObject>(this), press] { self->repeatDeletion(press); });
}

/// A finger may slide to another key that enters something.
void KeyboardViewObject::touchesMoved(const id& touches, const id&)
{
    if (!pressed_ || *pressed_ >= keys_.size())
        return;
    const auto slides = [](const KeyCap& key) { return key.kind == KeyKind::Character || key.kind == KeyKind::Space; };
    const std::size_t key = keyUnder(touches);
    if (key != *pressed_ && slides(keys_[*pressed_]) && slides(keys_[key]))
        setPressed(key);
}

void KeyboardViewObject::touchesEnded(const id&, const id&)
{
    const Ref<KeyboardViewObject> self(this); // what a key does may take the keyboard away
    const std::optional<std::size_t> pressed = pressed_;
    setPressed(std::nullopt);
    ++press_;
    if (pressed && *pressed < keys_.size())
        perform(KeyCap(keys_[*pressed]));
}

void KeyboardViewObject::touchesCancelled(const id&, const id&)
{
    setPressed(std::nullopt);
    ++press_;
}

void KeyboardViewObject::perform(const KeyCap& key)
{
    switch (key.kind) {
    case KeyKind::Character:
        enterText(shift_ != ShiftState::Off ? upperCaseText(key.text) : key.text);
        if (shift_ != ShiftState::Locked)
            textChanged();
        break;
    case KeyKind::Space:
        enterText(" ");
        // A word goes on in letters.
        if (page_ == KeyPage::Digits || page_ == KeyPage::Symbols)
            page_ = firstPage(type_) == KeyPage::Letters ? KeyPage::Letters : page_;
        textChanged();
        setNeedsLayout();
        break;
    case KeyKind::Return:
        if (canReturn_)
            pressReturn();
        break;
    case KeyKind::Page:
        page_ = key.page;
        shift_ = ShiftState::Off;
        textChanged();
        changed(*this, Asks::Layout);
        break;
    case KeyKind::Delete:
    case KeyKind::Shift:
        break; // done when the finger came down
    }
}

void KeyboardViewObject::drawContent(Canvas& canvas, const CGRect& seen) const
{
    // What is below the keys is of the same colour, down to the screen's edge.
    CGRect whole = seen;
    whole.size.height += screenFacts().safeArea.bottom;
    canvas.fill(Path::roundedRect(whole, 0), now(ground));
}

namespace {

using Board = KeyboardViewObject;
constexpr MethodDefinition methods[] {
    method<"layoutSubviews", &Board::layoutSubviews>(),
    method<"touchesBegan:withEvent:", &Board::touchesBegan>(),
    method<"touchesCancelled:withEvent:", &Board::touchesCancelled>(),
    method<"touchesEnded:withEvent:", &Board::touchesEnded>(),
    method<"touchesMoved:withEvent:", &Board::touchesMoved>(),
};

} // namespace

const ClassDefinition KeyboardViewObject::definition { .name = "UIKeyboardLayoutStar",
    .superclass = &ViewObject::definition,
    .allocate = allocate<KeyboardViewObject>,
    .methods = methods };

} // namespace platform
