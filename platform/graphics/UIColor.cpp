#include "platform/graphics/objects.h"

#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/graphics/appearance.h"
#include "platform/runtime/message.h"

namespace platform {

bool ColorObject::isEqualTo(const NSObject& other) const noexcept
{
    const auto* const another = dynamic_cast<const ColorObject*>(&other);
    return another && another->color == color && another->darkColor == darkColor && another->provider == provider;
}

std::size_t ColorObject::hashValue() const noexcept
{
    return static_cast<std::size_t>((color.red * 256 + color.green) * 65536 + color.blue * 256 + color.alpha);
}

Color ColorObject::resolved() const
{
    if (!provider)
        return darkColor && isDarkNow() ? *darkColor : color;
    // A provider may give a colour that asks a provider; one that goes on for ever is black.
    constexpr int deepest = 8;
    static thread_local int depth = 0;
    if (depth == deepest)
        return {};
    ++depth;
    const id given = callBlock<id>(provider, send<"currentTraitCollection">(id(classNamed<"UITraitCollection">())));
    const Color answer = asColor(given).value_or(Color {});
    --depth;
    return answer;
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
    return color ? std::optional(color->resolved()) : std::nullopt;
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

/// Layers know of no appearance: the colour as it is now.
id coreColor(const id& self, SEL)
{
    const auto& color = static_cast<const ColorObject&>(*self);
    return color.provider || color.darkColor ? colorObject(color.resolved()) : self;
}

id colorWithProvider(const id&, SEL, const id& provider)
{
    const Ref<ColorObject> object = make<ColorObject>();
    object->provider = provider;
    return object;
}

id resolvedColor(const id& self, SEL, const id& traits)
{
    constexpr NSInteger dark = 2;
    const AppearanceScope scope(send<"userInterfaceStyle", NSInteger>(traits) == dark);
    return coreColor(self, nullptr);
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

/// 0xRRGGBBAA, in the light appearance and in the dark one.
template <std::uint32_t Code, std::uint32_t DarkCode = Code> id constant(const id&, SEL)
{
    static NSObject* const color = [] {
        const auto parts = [](std::uint32_t code) {
            return Color { (code >> 24) / 255.0, (code >> 16 & 0xFF) / 255.0, (code >> 8 & 0xFF) / 255.0,
                (code & 0xFF) / 255.0 };
        };
        const Ref<ColorObject> made = make<ColorObject>();
        made->color = parts(Code);
        if (Code != DarkCode)
            made->darkColor = parts(DarkCode);
        return id(made).leak();
    }();
    return color;
}

constexpr MethodDefinition methods[] {
    method<"CGColor", &coreColor>(),
    classMethod<"blackColor", &constant<0x000000FF>>(),
    classMethod<"blueColor", &constant<0x0000FFFF>>(),
    classMethod<"brownColor", &constant<0x996633FF>>(),
    classMethod<"clearColor", &constant<0x00000000>>(),
    method<"colorSpaceModel", &colorSpaceModel>(),
    method<"colorWithAlphaComponent:", &colorWithAlphaComponent>(),
    classMethod<"colorWithDynamicProvider:", &colorWithProvider>(),
    classMethod<"colorWithHue:saturation:brightness:alpha:", &colorWithHue>(),
    classMethod<"colorWithRed:green:blue:alpha:", &colorWithRed>(),
    classMethod<"colorWithWhite:alpha:", &colorWithWhite>(),
    method<"components", &components>(),
    classMethod<"cyanColor", &constant<0x00FFFFFF>>(),
    classMethod<"darkGrayColor", &constant<0x555555FF>>(),
    classMethod<"darkTextColor", &constant<0x000000FF>>(),
    method<"getRed:green:blue:alpha:", &getParts>(),
    classMethod<"grayColor", &constant<0x808080FF>>(),
    classMethod<"greenColor", &constant<0x00FF00FF>>(),
    classMethod<"labelColor", &constant<0x000000FF, 0xFFFFFFFF>>(),
    classMethod<"lightGrayColor", &constant<0xAAAAAAFF>>(),
    classMethod<"lightTextColor", &constant<0xFFFFFF99>>(),
    classMethod<"linkColor", &constant<0x007AFFFF, 0x0984FFFF>>(),
    classMethod<"magentaColor", &constant<0xFF00FFFF>>(),
    classMethod<"opaqueSeparatorColor", &constant<0xC6C6C8FF, 0x38383AFF>>(),
    classMethod<"orangeColor", &constant<0xFF8000FF>>(),
    classMethod<"placeholderTextColor", &constant<0x3C3C434C, 0xEBEBF54C>>(),
    classMethod<"purpleColor", &constant<0x800080FF>>(),
    classMethod<"quaternaryLabelColor", &constant<0x3C3C432E, 0xEBEBF529>>(),
    classMethod<"quaternarySystemFillColor", &constant<0x74748014, 0x7676802E>>(),
    classMethod<"redColor", &constant<0xFF0000FF>>(),
    method<"resolvedColorWithTraitCollection:", &resolvedColor>(),
    classMethod<"secondaryLabelColor", &constant<0x3C3C4399, 0xEBEBF599>>(),
    classMethod<"secondarySystemBackgroundColor", &constant<0xF2F2F7FF, 0x1C1C1EFF>>(),
    classMethod<"secondarySystemFillColor", &constant<0x78788028, 0x78788051>>(),
    classMethod<"secondarySystemGroupedBackgroundColor", &constant<0xFFFFFFFF, 0x1C1C1EFF>>(),
    classMethod<"separatorColor", &constant<0x3C3C434A, 0x54545899>>(),
    method<"set", &set>(),
    method<"setFill", &setFill>(),
    method<"setStroke", &setStroke>(),
    classMethod<"systemBackgroundColor", &constant<0xFFFFFFFF, 0x000000FF>>(),
    classMethod<"systemBlueColor", &constant<0x007AFFFF, 0x0A84FFFF>>(),
    classMethod<"systemBrownColor", &constant<0xA2845EFF, 0xAC8E68FF>>(),
    classMethod<"systemCyanColor", &constant<0x32ADE6FF, 0x64D2FFFF>>(),
    classMethod<"systemFillColor", &constant<0x78788033, 0x7878805C>>(),
    classMethod<"systemGray2Color", &constant<0xAEAEB2FF, 0x636366FF>>(),
    classMethod<"systemGray3Color", &constant<0xC7C7CCFF, 0x48484AFF>>(),
    classMethod<"systemGray4Color", &constant<0xD1D1D6FF, 0x3A3A3CFF>>(),
    classMethod<"systemGray5Color", &constant<0xE5E5EAFF, 0x2C2C2EFF>>(),
    classMethod<"systemGray6Color", &constant<0xF2F2F7FF, 0x1C1C1EFF>>(),
    classMethod<"systemGrayColor", &constant<0x8E8E93FF>>(),
    classMethod<"systemGreenColor", &constant<0x34C759FF, 0x30D158FF>>(),
    classMethod<"systemGroupedBackgroundColor", &constant<0xF2F2F7FF, 0x000000FF>>(),
    classMethod<"systemIndigoColor", &constant<0x5856D6FF, 0x5E5CE6FF>>(),
    classMethod<"systemMintColor", &constant<0x00C7BEFF, 0x66D4CFFF>>(),
    classMethod<"systemOrangeColor", &constant<0xFF9500FF, 0xFF9F0AFF>>(),
    classMethod<"systemPinkColor", &constant<0xFF2D55FF, 0xFF375FFF>>(),
    classMethod<"systemPurpleColor", &constant<0xAF52DEFF, 0xBF5AF2FF>>(),
    classMethod<"systemRedColor", &constant<0xFF3B30FF, 0xFF453AFF>>(),
    classMethod<"systemTealColor", &constant<0x30B0C7FF, 0x40CBE0FF>>(),
    classMethod<"systemYellowColor", &constant<0xFFCC00FF, 0xFFD60AFF>>(),
    classMethod<"tertiaryLabelColor", &constant<0x3C3C434C, 0xEBEBF54C>>(),
    classMethod<"tertiarySystemBackgroundColor", &constant<0xFFFFFFFF, 0x2C2C2EFF>>(),
    classMethod<"tertiarySystemFillColor", &constant<0x7676801E, 0x7676803D>>(),
    classMethod<"tertiarySystemGroupedBackgroundColor", &constant<0xF2F2F7FF, 0x2C2C2EFF>>(),
    classMethod<"whiteColor", &constant<0xFFFFFFFF>>(),
    classMethod<"yellowColor", &constant<0xFFFF00FF>>(),
};

} // namespace

const ClassDefinition ColorObject::definition {
    .name = "UIColor", .allocate = allocate<ColorObject>, .methods = methods
};

} // namespace platform
