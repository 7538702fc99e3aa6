#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/uikit/views.h"

namespace platform {

namespace {

constexpr double defaultFontSize = 17;

/// A text, centred upright in its box.
class LabelObject : public ViewObject {
public:
    id text {};
    id font {};
    id textColor {};
    id shadowColor {};
    CGSize shadowOffset { 0, -1 };
    TextAlignment textAlignment = TextAlignment::Natural;
    LineBreak lineBreakMode = LineBreak::TruncateTail;
    long numberOfLines = 1;
    bool adjustsFontSizeToFitWidth = false;
    double minimumScaleFactor = 0;
    bool enabled = true;

    LabelObject() { userInteractionEnabled = false; }

    id currentFont() const { return font ? font : fontObject({ .size = defaultFontSize }); }
    id currentColor() const { return textColor ? textColor : colorObject({}); }

    void setText(const id& newText)
    {
        if (isEqual(text, newText))
            return;
        text = asString(newText) ? newText : nil;
        send<"invalidateIntrinsicContentSize", void>(id(this));
    }

    void setFont(const id& newFont)
    {
        const Font former = fontOf();
        font = newFont;
        if (fontOf() == former)
            return;
        send<"invalidateIntrinsicContentSize", void>(id(this));
    }

    std::optional<std::string> shownText() const override
    {
        const auto shown = asString(text);
        return shown ? std::optional(shown->text()) : std::nullopt;
    }

    CGSize sizeThatFits(CGSize size) const override
    {
        const auto shown = asString(text);
        if (!shown || shown->empty())
            return {};
        CGSize measured = measureText(*shown, layoutWith(fontOf()), size.width > 0 ? size.width : unlimitedWidth);
        // Whole points upwards, so that rounding never cuts a text off.
        return { std::ceil(measured.width), std::ceil(measured.height) };
    }

    CGSize intrinsicContentSize() const override
    {
        return sizeThatFits({ numberOfLines == 1 || bounds.size.width <= 0 ? unlimitedWidth : bounds.size.width, 0 });
    }

    void drawContent(Canvas& canvas, const CGRect& seen) const override
    {
        const auto shown = asString(text);
        if (!shown || shown->empty())
            return;
        Font used = fontOf();
        if (adjustsFontSizeToFitWidth) {
            const double width = measureText(*shown, layoutWith(used)).width;
            constexpr double leastScale = 0.5;
            if (width > seen.size.width)
                used.size
                    *= std::max(seen.size.width / width, minimumScaleFactor > 0 ? minimumScaleFactor : leastScale);
        }
        const TextLayout layout = layoutWith(used);
        const CGSize measured = measureText(*shown, layout, seen.size.width);
        CGRect box = seen;
        box.origin.y += (seen.size.height - measured.height) / 2;
        box.size.height = std::max(measured.height, seen.size.height);
        if (const auto shadow = asColor(shadowColor))
            drawText(canvas, *shown, layout, CGRectOffset(box, shadowOffset.width, shadowOffset.height), *shadow);
        drawText(canvas, *shown, layout, box, asColor(textColor).value_or(Color {}));
    }

private:
    Font fontOf() const { return asFont(font).value_or(Font { .size = defaultFontSize }); }

    TextLayout layoutWith(const Font& used) const
    {
        return { .font = used, .alignment = textAlignment, .lineBreak = lineBreakMode, .lines = numberOfLines };
    }
};

constexpr MethodDefinition methods[] {
    getter<"adjustsFontSizeToFitWidth", &LabelObject::adjustsFontSizeToFitWidth>(),
    method<"font", &LabelObject::currentFont>(),
    getter<"lineBreakMode", &LabelObject::lineBreakMode>(),
    getter<"numberOfLines", &LabelObject::numberOfLines>(),
    setterThatAsks<"setAdjustsFontSizeToFitWidth:", &LabelObject::adjustsFontSizeToFitWidth, Asks::Drawing>(),
    setter<"setEnabled:", &LabelObject::enabled>(),
    method<"setFont:", &LabelObject::setFont>(),
    setterThatAsks<"setLineBreakMode:", &LabelObject::lineBreakMode, Asks::Size>(),
    setterThatAsks<"setMinimumScaleFactor:", &LabelObject::minimumScaleFactor, Asks::Drawing>(),
    setterThatAsks<"setNumberOfLines:", &LabelObject::numberOfLines, Asks::Size>(),
    setterThatAsks<"setShadowColor:", &LabelObject::shadowColor, Asks::Drawing>(),
    setterThatAsks<"setShadowOffset:", &LabelObject::shadowOffset, Asks::Drawing>(),
    method<"setText:", &LabelObject::setText>(),
    setterThatAsks<"setTextAlignment:", &LabelObject::textAlignment, Asks::Drawing>(),
    setterThatAsks<"setTextColor:", &LabelObject::textColor, Asks::Drawing>(),
    getter<"text", &LabelObject::text>(),
    getter<"textAlignment", &LabelObject::textAlignment>(),
    method<"textColor", &LabelObject::currentColor>(),
};

} // namespace

const ClassDefinition UILabel_class {
    .name = "UILabel", .superclass = &ViewObject::definition, .allocate = allocate<LabelObject>, .methods = methods
};

} // namespace platform
