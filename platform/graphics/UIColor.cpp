#include "platform/graphics/objects.h"

#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace platform {

bool ColorObject::isEqualTo(const NSObject& other) const noexcept
{
    const auto* const another = dynamic_cast<const ColorObject*>(&other);
    return another && another->color == color;
}

std::size_t ColorObject::hashValue() const noexcept
{
    return static_cast<std::size_t>((color.red * 256 + color.green) * 65536 + color.blue * 256 + color.alpha);
}

id colorObject(const Color& color)
{
    const Ref<ColorObject> object = make<ColorObject>();
    object->color = color;
    return object;
}

std::optional<Color> asColor(const id& object)
{
    const auto* const color = as<ColorObject>(object);
    return color ? std::optional(color->color) : std::nullopt;
}

namespace {

id colorWithRed(const id&, SEL, double red, double green, double blue, double alpha)
{
    const auto part = [](double value) { return value > 0 ? std::min(value, 1.0) : 0.0; };
    return colorObject({ part(red), part(green), part(blue), part(alpha) });
}

id colorWithWhite(const id& self, SEL cmd, double white, double alpha)
{
    return colorWithRed(self, cmd, white, white, white, alpha);
}

id colorWithHue(const id& self, SEL cmd, double hue, double saturation, double brightness, double alpha)
{
    const auto part = [&](double shift) {
        const double k = std::fmod(shift + hue * 6, 6);
        return brightness * (1 - saturation * std::clamp(std::min(k, 4 - k), 0.0, 1.0));
    };
    return colorWithRed(self, cmd, part(5), part(3), part(1), alpha);
}

id colorWithAlphaComponent(const id& self, SEL, double alpha)
{
    Color color = asColor(self).value_or(Color {});
    color.alpha = std::clamp(alpha, 0.0, 1.0);
    return colorObject(color);
}

bool getParts(const id& self, SEL, double* red, double* green, double* blue, double* alpha)
{
    const Color color = asColor(self).value_or(Color {});
    const std::pair<double*, double> parts[] { { red, color.red }, { green, color.green }, { blue, color.blue },
        { alpha, color.alpha } };
    for (const auto& [where, part] : parts)
        if (where)
            *where = part;
    return true;
}

NSInteger colorSpaceModel(const id&, SEL)
{
    constexpr NSInteger redGreenBlue = 1;
    return redGreenBlue;
}

id components(const id& self, SEL)
{
    const Color color = asColor(self).value_or(Color {});
    return array({ real(color.red), real(color.green), real(color.blue), real(color.alpha) });
}

id itself(const id& self, SEL)
{
    return self;
}

void set(const id& self, SEL)
{
    setCurrentFillColor(asColor(self).value_or(Color {}));
    setCurrentStrokeColor(asColor(self).value_or(Color {}));
}

void setFill(const id& self, SEL)
{
    setCurrentFillColor(asColor(self).value_or(Color {}));
}

void setStroke(const id& self, SEL)
{
    setCurrentStrokeColor(asColor(self).value_or(Color {}));
}

/// 0xRRGGBBAA.
template <std::uint32_t Code> id constant(const id&, SEL)
{
    static NSObject* const color = colorObject(
        { (Code >> 24) / 255.0, (Code >> 16 & 0xFF) / 255.0, (Code >> 8 & 0xFF) / 255.0, (Code & 0xFF) / 255.0 })
                                       .leak();
    return color;
}

// The system's colours as they are in its light appearance.
constexpr MethodDefinition methods[] {
    method<"CGColor", &itself>(),
    classMethod<"blackColor", &constant<0x000000FF>>(),
    classMethod<"blueColor", &constant<0x0000FFFF>>(),
    classMethod<"clearColor", &constant<0x00000000>>(),
    method<"colorSpaceModel", &colorSpaceModel>(),
    classMethod<"colorWithHue:saturation:brightness:alpha:", &colorWithHue>(),
    classMethod<"colorWithRed:green:blue:alpha:", &colorWithRed>(),
    classMethod<"colorWithWhite:alpha:", &colorWithWhite>(),
    method<"colorWithAlphaComponent:", &colorWithAlphaComponent>(),
    method<"components", &components>(),
    classMethod<"darkGrayColor", &constant<0x555555FF>>(),
    method<"getRed:green:blue:alpha:", &getParts>(),
    classMethod<"grayColor", &constant<0x808080FF>>(),
    classMethod<"greenColor", &constant<0x00FF00FF>>(),
    classMethod<"labelColor", &constant<0x000000FF>>(),
    classMethod<"lightGrayColor", &constant<0xAAAAAAFF>>(),
    classMethod<"redColor", &constant<0xFF0000FF>>(),
    classMethod<"secondaryLabelColor", &constant<0x3C3C4399>>(),
    classMethod<"separatorColor", &constant<0x3C3C434A>>(),
    method<"set", &set>(),
    method<"setFill", &setFill>(),
    method<"setStroke", &setStroke>(),
    classMethod<"systemBackgroundColor", &constant<0xFFFFFFFF>>(),
    classMethod<"systemBlueColor", &constant<0x007AFFFF>>(),
    classMethod<"systemGray2Color", &constant<0xAEAEB2FF>>(),
    classMethod<"systemGray3Color", &constant<0xC7C7CCFF>>(),
    classMethod<"systemGray4Color", &constant<0xD1D1D6FF>>(),
    classMethod<"systemGray5Color", &constant<0xE5E5EAFF>>(),
    classMethod<"systemGray6Color", &constant<0xF2F2F7FF>>(),
    classMethod<"systemGrayColor", &constant<0x8E8E93FF>>(),
    classMethod<"systemGreenColor", &constant<0x34C759FF>>(),
    classMethod<"systemIndigoColor", &constant<0x5856D6FF>>(),
    classMethod<"systemOrangeColor", &constant<0xFF9500FF>>(),
    classMethod<"systemPinkColor", &constant<0xFF2D55FF>>(),
    classMethod<"systemPurpleColor", &constant<0xAF52DEFF>>(),
    classMethod<"systemRedColor", &constant<0xFF3B30FF>>(),
    classMethod<"systemTealColor", &constant<0x30B0C7FF>>(),
    classMethod<"systemYellowColor", &constant<0xFFCC00FF>>(),
    classMethod<"whiteColor", &constant<0xFFFFFFFF>>(),
};

} // namespace

const ClassDefinition ColorObject::definition {
    .name = "UIColor", .allocate = allocate<ColorObject>, .methods = methods
};

} // namespace platform
