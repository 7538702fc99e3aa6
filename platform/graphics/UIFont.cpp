#include "platform/graphics/objects.h"

#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace platform {

bool FontObject::isEqualTo(const NSObject& other) const noexcept
{
    const auto* const another = dynamic_cast<const FontObject*>(&other);
    return another && another->font == font;
}

id fontObject(const Font& font)
{
    const Ref<FontObject> object = make<FontObject>();
    object->font = font;
    return object;
}

std::optional<Font> asFont(const id& object)
{
    const auto* const font = as<FontObject>(object);
    return font ? std::optional(font->font) : std::nullopt;
}

namespace {

Font fontOf(const id& self)
{
    return asFont(self).value_or(Font {});
}

id systemFont(const id&, SEL, double size)
{
    return fontObject({ .size = size });
}

id boldSystemFont(const id&, SEL, double size)
{
    return fontObject({ .size = size, .weight = 700 });
}

/// The system counts weights from -0.8 to 0.62; a font file from 100 to 900.
id systemFontOfWeight(const id&, SEL, double size, double weight)
{
    constexpr struct {
        double system;
        int file;
    } weights[] { { -0.7, 100 }, { -0.5, 200 }, { -0.2, 300 }, { 0.11, 400 }, { 0.26, 500 }, { 0.35, 600 },
        { 0.48, 700 }, { 0.59, 800 } };
    for (const auto& [system, file] : weights)
        if (weight < system)
            return fontObject({ .size = size, .weight = file });
    return fontObject({ .size = size, .weight = 900 });
}

id fontWithSize(const id& self, SEL, double size)
{
    return fontObject({ .size = size, .weight = fontOf(self).weight });
}

double pointSize(const id& self, SEL)
{
    return fontOf(self).size;
}

double ascender(const id& self, SEL)
{
    return metricsOf(fontOf(self)).ascent;
}

double descender(const id& self, SEL)
{
    return -metricsOf(fontOf(self)).descent;
}

double lineHeight(const id& self, SEL)
{
    const FontMetrics metrics = metricsOf(fontOf(self));
    return metrics.ascent + metrics.descent;
}

constexpr MethodDefinition methods[] {
    method<"ascender", &ascender>(),
    classMethod<"boldSystemFontOfSize:", &boldSystemFont>(),
    method<"descender", &descender>(),
    method<"fontWithSize:", &fontWithSize>(),
    method<"lineHeight", &lineHeight>(),
    method<"pointSize", &pointSize>(),
    classMethod<"systemFontOfSize:", &systemFont>(),
    classMethod<"systemFontOfSize:weight:", &systemFontOfWeight>(),
};

/// The font and the colour in a dictionary of attributes.
std::pair<Font, Color> styleOf(const id& attributes)
{
    constexpr double fontSizeWithoutAttribute = 12;
    const DictionaryValue pairs = pairsOf(attributes);
    return { asFont(pairs["NSFont"]).value_or(Font { .size = fontSizeWithoutAttribute }),
        asColor(pairs["NSColor"]).value_or(Color {}) };
}

TextLayout layoutWith(const Font& font)
{
    return { .font = font, .alignment = TextAlignment::Natural, .lineBreak = LineBreak::WordWrap, .lines = 0 };
}

CGSize sizeWithAttributes(const id& self, SEL, const id& attributes)
{
    return measureText(asString(self)->view(), layoutWith(styleOf(attributes).first));
}

void drawAtPoint(const id& self, SEL, CGPoint point, const id& attributes)
{
    const auto [font, color] = styleOf(attributes);
    const StringValue text = *asString(self);
    if (Canvas* const canvas = currentCanvas())
        drawText(*canvas, text, layoutWith(font), { point, measureText(text, layoutWith(font)) }, color);
}

void drawInRect(const id& self, SEL, CGRect rect, const id& attributes)
{
    const auto [font, color] = styleOf(attributes);
    if (Canvas* const canvas = currentCanvas())
        drawText(*canvas, *asString(self), layoutWith(font), rect, color);
}

template <auto Function> void addToStrings(std::string_view selector)
{
    using Adapter = detail::MethodAdapter<Function>;
    class_addMethod(object_getClass(string("")), sel_registerName(selector), Adapter::implementation(), Adapter::types);
}

} // namespace

const ClassDefinition FontObject::definition { .name = "UIFont", .allocate = allocate<FontObject>, .methods = methods };

void addStringDrawing()
{
    addToStrings<&sizeWithAttributes>("sizeWithAttributes:");
    addToStrings<&drawAtPoint>("drawAtPoint:withAttributes:");
    addToStrings<&drawInRect>("drawInRect:withAttributes:");
}

} // namespace platform
