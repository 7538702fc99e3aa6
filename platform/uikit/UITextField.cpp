#include "platform/dispatch/clock.h"
#include "platform/foundation/values.h"
#include "platform/handles/UIButton.h"
#include "platform/runtime/message.h"
#include "platform/uikit/keyboard.h"
#include "platform/uikit/screen_picture.h"
#include "platform/uikit/shades.h"
#include "platform/uikit/text_field.h"
#include "platform/uikit/text_positions.h"
#include "platform/uikit/views.h"

#include <cmath>

namespace platform {

// Points and seconds.
constexpr double defaultFontSize = 17;
constexpr double roundedInset = 7;
constexpr double roundedPadding = 7; ///< above and below a line of text
constexpr double cornerRadius = 5;
constexpr double clearSide = 19;
constexpr double clearInset = 5; ///< from the field's right edge
constexpr double caretWidth = 2;
constexpr double blinkPeriod = 1;
constexpr double blinkShown = 0.5;

/// The part of a field that shows its text, the selection and the caret.
class TextCanvasObject final : public ViewObject {
public:
    static const ClassDefinition definition;

    TextCanvasObject()
    {
        userInteractionEnabled = false;
        layer().masksToBounds = true;
    }

    void drawContent(Canvas& canvas, const CGRect& seen) const override
    {
        if (const auto* const field = dynamic_cast<const TextFieldObject*>(superview))
            field->drawText(canvas, seen);
    }
};

const ClassDefinition TextCanvasObject::definition {
    .name = "_UITextFieldCanvasView", .superclass = &ViewObject::definition, .allocate = allocate<TextCanvasObject>
};

id TextFieldObject::initWithFrame(CGRect frame)
{
    const id self = sendSuper<"initWithFrame:">(classNamed<"UIControl">(), id(this), frame);
    canvas_ = make<TextCanvasObject>();
    insertSubview(canvas_, 0);
    return self;
}

void TextFieldObject::traitsDidChange()
{
    changed(*this, Asks::Drawing);
    if (firstResponder() == id(this))
        keyboardTextChanged();
}

Font TextFieldObject::fontOf() const
{
    return asFont(font).value_or(Font { .size = defaultFontSize });
}

id TextFieldObject::currentFont() const
{
    return fontObject(fontOf());
}

std::string TextFieldObject::drawnText() const
{
    if (!traits_.isSecureTextEntry)
        return text_;
    std::string dots;
    for (std::size_t offset = 0; offset < text_.size(); offset = caretAfter(text_, offset))
        dots += "•";
    return dots;
}

std::size_t TextFieldObject::drawnOffset(std::size_t offset) const
{
    if (!traits_.isSecureTextEntry)
        return offset;
    constexpr std::size_t dotSize = std::string_view("•").size();
    std::size_t dots = 0;
    for (std::size_t at = 0; at < offset; at = caretAfter(text_, at))
        ++dots;
    return dots * dotSize;
}

std::optional<std::string> TextFieldObject::shownText() const
{
    if (!text_.empty())
        return drawnText();
    const auto hint = asString(placeholder);
    return hint ? std::optional(hint->text()) : std::nullopt;
}

double TextFieldObject::insetAtSides() const noexcept
{
    return borderStyle == BorderStyle::None ? 0 : roundedInset;
}

CGSize TextFieldObject::sizeThatFits(CGSize) const
{
    const auto hint = asString(placeholder);
    const std::string shown = text_.empty() && hint ? hint->text() : drawnText();
    const FontMetrics metrics = metricsOf(fontOf());
    const bool isRounded = borderStyle == BorderStyle::RoundedRect;
    const double line = std::ceil(metrics.ascent + metrics.descent);
    return { std::ceil(measureText(shown, { .font = fontOf() }).width + caretWidth) + 2 * insetAtSides(),
        isRounded ? std::max(line + 2 * roundedPadding, 34.0) : line + (borderStyle == BorderStyle::None ? 0 : 4) };
}

bool TextFieldObject::isShown(ViewMode mode) const noexcept
{
    return mode == ViewMode::Always || mode == (isEditing_ ? ViewMode::WhileEditing : ViewMode::UnlessEditing);
}

void TextFieldObject::setSideView(Ref<ViewObject>& present, const id& view)
{
    if (id(present) == view)
        return;
    if (present && present->superview == this)
        present->removeFromSuperview();
    present = Ref<ViewObject>(asViewObject(view));
    setNeedsLayout();
}

CGRect TextFieldObject::leftViewRect(CGRect box) const
{
    const CGSize size = leftView_ ? leftView_->bounds.size : CGSize {};
    return CGRectMake(box.origin.x, std::floor(CGRectGetMidY(box) - size.height / 2), size.width, size.height);
}

CGRect TextFieldObject::rightViewRect(CGRect box) const
{
    const CGSize size = rightView_ ? rightView_->bounds.size : CGSize {};
    return CGRectMake(
        CGRectGetMaxX(box) - size.width, std::floor(CGRectGetMidY(box) - size.height / 2), size.width, size.height);
}

CGRect TextFieldObject::clearButtonRect(CGRect box) const
{
    return CGRectMake(CGRectGetMaxX(box) - clearSide - clearInset, std::floor(CGRectGetMidY(box) - clearSide / 2),
        clearSide, clearSide);
}

/// What is left beside the views at the sides.
CGRect TextFieldObject::textRect(CGRect box) const
{
    const id self(const_cast<TextFieldObject*>(this));
    double left = box.origin.x + insetAtSides();
    double right = CGRectGetMaxX(box) - insetAtSides();
    if (leftView_ && isShown(leftViewMode))
        left = CGRectGetMaxX(send<"leftViewRectForBounds:", CGRect>(self, box));
    if (rightView_ && isShown(rightViewMode))
        right = send<"rightViewRectForBounds:", CGRect>(self, box).origin.x;
    else if (isShown(clearButtonMode) && hasText())
        right = send<"clearButtonRectForBounds:", CGRect>(self, box).origin.x - clearInset;
    return CGRectMake(left, box.origin.y, std::max(right - left, 0.0), box.size.height);
}

CGRect TextFieldObject::placeholderRect(CGRect box) const
{
    return send<"textRectForBounds:", CGRect>(id(const_cast<TextFieldObject*>(this)), box);
}

CGRect TextFieldObject::editingRect(CGRect box) const
{
    return send<"textRectForBounds:", CGRect>(id(const_cast<TextFieldObject*>(this)), box);
}

void TextFieldObject::showSide(const Ref<ViewObject>& view, bool shown, CGRect frame)
{
    if (!view)
        return;
    if (shown) {
        place(*view, frame);
        if (view->superview != this)
            insertSubview(view, subviews.size());
    } else if (view->superview == this) {
        view->removeFromSuperview();
    }
}

void TextFieldObject::layoutSubviews()
{
    const id self(this);
    const bool showsRight = rightView_ && isShown(rightViewMode);
    const bool showsClear = hasText() && isShown(clearButtonMode) && !showsRight && isEnabled();
    if (showsClear && !clearButton_) {
        const UIButton button = UIButton::withType(UIButtonType::Custom);
        button.setImage(UIImage(send<"systemImageNamed:">(id(classNamed<"UIImage">()), string("xmark.circle.fill"))),
            UIControlState::Normal);
        button.setTintColor(UIColor(send<"tertiaryLabelColor">(id(UIColor::classObject()))));
        send<"setAccessibilityIdentifier:", void>(button.object(), string("ClearText"));
        send<"setAccessibilityLabel:", void>(button.object(), string("Clear text"));
        button.addTarget(self, sel_registerName("_clear"), UIControlEvents::TouchUpInside);
        clearButton_ = Ref<ViewObject>(asViewObject(button));
    }
    if (leftView_)
        showSide(leftView_, isShown(leftViewMode), send<"leftViewRectForBounds:", CGRect>(self, bounds));
    if (rightView_)
        showSide(rightView_, showsRight, send<"rightViewRectForBounds:", CGRect>(self, bounds));
    if (clearButton_)
        showSide(clearButton_, showsClear, send<"clearButtonRectForBounds:", CGRect>(self, bounds));
    place(*canvas_,
        isEditing_      ? send<"editingRectForBounds:", CGRect>(self, bounds)
            : hasText() ? send<"textRectForBounds:", CGRect>(self, bounds)
                        : send<"placeholderRectForBounds:", CGRect>(self, bounds));
    keepCaretInSight(canvas_->bounds.size.width);
}

void TextFieldObject::keepCaretInSight(double width)
{
    const double length = caretPosition(drawnText(), fontOf(), drawnText().size()) + caretWidth;
    double scrolled = std::clamp(scrolled_, 0.0, std::max(length - width, 0.0));
    if (isEditing_) {
        const double caret = caretPosition(drawnText(), fontOf(), drawnOffset(selection_.last));
        scrolled = std::clamp(scrolled, std::max(caret + caretWidth - width, 0.0), std::max(caret, 0.0));
    } else {
        scrolled = 0;
    }
    if (std::exchange(scrolled_, scrolled) != scrolled)
        changed(*canvas_, Asks::Drawing);
}

/// Where the text begins in a box of that width.
double TextFieldObject::textOrigin(double width) const
{
    const double length = caretPosition(drawnText(), fontOf(), drawnText().size()) + caretWidth;
    const double room = std::max(width - length, 0.0);
    if (textAlignment == TextAlignment::Center)
        return std::floor(room / 2) - scrolled_;
    return (textAlignment == TextAlignment::Right ? room : 0) - scrolled_;
}

void TextFieldObject::drawText(Canvas& canvas, const CGRect& box) const
{
    const Font used = fontOf();
    const FontMetrics metrics = metricsOf(used);
    const double height = metrics.ascent + metrics.descent;
    const double top = box.origin.y + (box.size.height - height) / 2;
    const auto hint = asString(placeholder);
    const bool showsHint = text_.empty() && hint;
    const std::string shown = showsHint ? hint->text() : drawnText();
    const Color ordinary = asColor(textColor).value_or(shade::label.color());
    const Color color = showsHint ? shade::tertiaryLabel.color()
        : isEnabled()             ? ordinary
                                  : shade::tertiaryLabel.color();
    const double origin = box.origin.x + textOrigin(box.size.width);
    const auto xOf = [&](std::size_t offset) { return origin + caretPosition(drawnText(), used, drawnOffset(offset)); };
    if (isEditing_ && selection_.first != selection_.last) {
        Color marked = effectiveTint();
        marked.alpha *= 0.2;
        const double first = xOf(selection_.first);
        canvas.fill(Path::roundedRect(CGRectMake(first, top, xOf(selection_.last) - first, height), 0), marked);
    }
    if (isEditing_ && !showsHint)
        platform::drawText(canvas, shown,
            { .font = used, .alignment = TextAlignment::Left, .lineBreak = LineBreak::Clip },
            CGRectMake(origin, top, unlimitedWidth, height + 2), color);
    else
        platform::drawText(canvas, shown, { .font = used, .alignment = textAlignment },
            CGRectMake(box.origin.x, top, box.size.width, height + 2), color);
    if (!isEditing_ || selection_.first != selection_.last)
        return;
    noteMotion();
    if (std::fmod(CACurrentMediaTime() - caretStart_, blinkPeriod) < blinkShown)
        canvas.fill(Path::roundedRect(CGRectMake(xOf(selection_.last), top, caretWidth, height), caretWidth / 2),
            effectiveTint());
}

CGRect TextFieldObject::caretRect(const id& position) const
{
    const auto* const known = as<TextPositionObject>(position);
    const CGRect box = canvas_->frame();
    const FontMetrics metrics = metricsOf(fontOf());
    const double height = metrics.ascent + metrics.descent;
    const double x = caretPosition(drawnText(), fontOf(), drawnOffset(known ? known->offset : 0));
    return CGRectMake(
        box.origin.x + textOrigin(box.size.width) + x, CGRectGetMidY(box) - height / 2, caretWidth, height);
}

id TextFieldObject::closestPosition(CGPoint point) const
{
    const CGRect box = canvas_->frame();
    const std::string drawn = drawnText();
    const std::size_t wanted
        = caretNear(drawn, fontOf(), std::max(point.x - box.origin.x - textOrigin(box.size.width), 0.0));
    std::size_t offset = 0;
    while (offset < text_.size() && drawnOffset(offset) < wanted)
        offset = caretAfter(text_, offset);
    return textPosition(offset);
}

void TextFieldObject::drawContent(Canvas& canvas, const CGRect& seen) const
{
    constexpr Shade ground { shade::gray(255), shade::rgb(28, 28, 30) };
    constexpr Shade border { shade::gray(0, 0.16), shade::gray(255, 0.16) };
    if (background) {
        if (const auto* const image = as<ImageObject>(background))
            image->draw(canvas, seen, effectiveTint());
        return;
    }
    if (borderStyle == BorderStyle::None)
        return;
    const double line = 1 / std::max(screenFacts().scale, 1.0);
    const double radius = borderStyle == BorderStyle::RoundedRect ? cornerRadius : 0;
    canvas.fill(Path::roundedRect(seen, radius), border.color());
    if (borderStyle != BorderStyle::Line || !backgroundColor)
        canvas.fill(Path::roundedRect(CGRectInset(seen, line, line), std::max(radius - line, 0.0)), ground.color());
}

void TextFieldObject::stateChanged()
{
    setNeedsLayout();
    if (!isEnabled())
        send<"resignFirstResponder", bool>(id(this));
}

namespace {

using Field = TextFieldObject;

bool canBecomeFirstResponder(const id& self, SEL)
{
    auto& field = static_cast<TextFieldObject&>(*self);
    return field.isEnabled() && field.window();
}

id none(const id&, SEL)
{
    return nil;
}

CGRect borderRect(const id&, SEL, CGRect bounds)
{
    return bounds;
}

NSInteger comparePositions(const id& self, SEL, const id& one, const id& other)
{
    const NSInteger distance = static_cast<TextFieldObject&>(*self).offsetFromPosition(one, other);
    return distance > 0 ? -1 : distance < 0 ? 1 : 0;
}

constexpr MethodDefinition methods[] {
    method<"_clear", &Field::clear>(),
    method<"_deleteTyped", &Field::typeDeletion>(),
    method<"_didLoseFirstResponder", &Field::didLoseFirstResponder>(),
    method<"_insertTypedText:", &Field::typeText>(),
    method<"_moveCaret:", &Field::moveCaret>(),
    method<"_returnTyped", &Field::typeReturn>(),
    method<"_traitsDidChange", &Field::traitsDidChange>(),
    method<"accessibilityValue", &Field::accessibilityValue>(),
    getter<"background", &Field::background>(),
    method<"becomeFirstResponder", &Field::becomeFirstResponder>(),
    method<"beginningOfDocument", &Field::beginningOfDocument>(),
    method<"borderRectForBounds:", &borderRect>(),
    getter<"borderStyle", &Field::borderStyle>(),
    method<"canBecomeFirstResponder", &canBecomeFirstResponder>(),
    method<"caretRectForPosition:", &Field::caretRect>(),
    getter<"clearButtonMode", &Field::clearButtonMode>(),
    method<"clearButtonRectForBounds:", &Field::clearButtonRect>(),
    getter<"clearsOnBeginEditing", &Field::clearsOnBeginEditing>(),
    method<"closestPositionToPoint:", &Field::closestPosition>(),
    method<"comparePosition:toPosition:", &comparePositions>(),
    getter<"delegate", &Field::delegate>(),
    method<"deleteBackward", &Field::deleteBackward>(),
    method<"editingRectForBounds:", &Field::editingRect>(),
    method<"endOfDocument", &Field::endOfDocument>(),
    method<"endTrackingWithTouch:withEvent:", &Field::endTracking>(),
    method<"font", &Field::currentFont>(),
    method<"hasText", &Field::hasText>(),
    method<"initWithFrame:", &Field::initWithFrame>(),
    method<"insertText:", &Field::insertText>(),
    method<"isEditing", &Field::isEditing>(),
    method<"layoutSubviews", &Field::layoutSubviews>(),
    method<"leftView", &Field::leftView>(),
    getter<"leftViewMode", &Field::leftViewMode>(),
    method<"leftViewRectForBounds:", &Field::leftViewRect>(),
    method<"markedTextRange", &none>(),
    method<"offsetFromPosition:toPosition:", &Field::offsetFromPosition>(),
    getter<"placeholder", &Field::placeholder>(),
    method<"placeholderRectForBounds:", &Field::placeholderRect>(),
    method<"positionFromPosition:offset:", &Field::positionFromPosition>(),
    method<"replaceRange:withText:", &Field::replaceRange>(),
    method<"resignFirstResponder", &Field::resignFirstResponder>(),
    method<"rightView", &Field::rightView>(),
    getter<"rightViewMode", &Field::rightViewMode>(),
    method<"rightViewRectForBounds:", &Field::rightViewRect>(),
    method<"selectAll:", &Field::selectAll>(),
    method<"selectedTextRange", &Field::selectedTextRange>(),
    setterThatAsks<"setBackground:", &Field::background, Asks::Drawing>(),
    setterThatAsks<"setBorderStyle:", &Field::borderStyle, Asks::Size>(),
    setterThatAsks<"setClearButtonMode:", &Field::clearButtonMode, Asks::Layout>(),
    setter<"setClearsOnBeginEditing:", &Field::clearsOnBeginEditing>(),
    setter<"setDelegate:", &Field::delegate>(),
    setterThatAsks<"setFont:", &Field::font, Asks::Size>(),
    method<"setLeftView:", &Field::setLeftView>(),
    setterThatAsks<"setLeftViewMode:", &Field::leftViewMode, Asks::Layout>(),
    setterThatAsks<"setPlaceholder:", &Field::placeholder, Asks::Size>(),
    method<"setRightView:", &Field::setRightView>(),
    setterThatAsks<"setRightViewMode:", &Field::rightViewMode, Asks::Layout>(),
    method<"setSelectedTextRange:", &Field::setSelectedTextRange>(),
    method<"setText:", &Field::setText>(),
    setterThatAsks<"setTextAlignment:", &Field::textAlignment, Asks::Drawing>(),
    setterThatAsks<"setTextColor:", &Field::textColor, Asks::Drawing>(),
    method<"text", &Field::text>(),
    getter<"textAlignment", &Field::textAlignment>(),
    getter<"textColor", &Field::textColor>(),
    method<"textInRange:", &Field::textInRange>(),
    method<"textRangeFromPosition:toPosition:", &Field::rangeFromPositions>(),
    method<"textRectForBounds:", &Field::textRect>(),
};

std::span<const MethodDefinition> allMethods()
{
    static const auto* const all = [] {
        auto* const joined = new std::vector<MethodDefinition>(std::begin(methods), std::end(methods));
        joined->insert(joined->end(), std::begin(TraitMethods<Field>::rows), std::end(TraitMethods<Field>::rows));
        return joined;
    }();
    return *all;
}

} // namespace

const ClassDefinition TextFieldObject::definition { .name = "UITextField",
    .superclass = &ControlObject::definition,
    .allocate = allocate<TextFieldObject>,
    .methods = allMethods() };

} // namespace platform
