#pragma once

#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/graphics/geometry.h"
#include "platform/runtime/message.h"

#include <cstdint>
#include <initializer_list>
#include <string_view>

/// Short forms of the messages that draw, for pictures that are put together from many figures.

namespace phone {

/// 0xRRGGBB.
inline platform::id color(std::uint32_t code, double alpha = 1)
{
    return platform::send<"colorWithRed:green:blue:alpha:">(platform::id(platform::classNamed<"UIColor">()),
        (code >> 16 & 0xFF) / 255.0, (code >> 8 & 0xFF) / 255.0, (code & 0xFF) / 255.0, alpha);
}

platform::id roundedRect(const platform::CGRect& rect, double radius);
platform::id ellipse(const platform::CGRect& rect);
platform::id disc(platform::CGPoint center, double radius);
platform::id arc(platform::CGPoint center, double radius, double start, double end);
enum class PathEnd { Open, Closed };
platform::id polygon(std::initializer_list<platform::CGPoint> points, PathEnd end = PathEnd::Closed);

void fill(const platform::id& path, const platform::id& color);
void stroke(const platform::id& path, const platform::id& color, double width);

/// The path's inside, in two colours that run into each other from the top to the bottom of the rectangle.
void fillGradient(
    const platform::id& path, const platform::CGRect& rect, const platform::id& top, const platform::id& bottom);

platform::id systemFont(double size, bool bold);
platform::CGSize sizeOfText(std::string_view text, const platform::id& font);
void drawCentered(std::string_view text, const platform::id& font, const platform::id& color, platform::CGPoint center);

/// An image that stays sharp at every scale, of what the function draws.
template <class Drawing> platform::id drawImage(platform::CGSize size, const Drawing& drawing)
{
    const platform::id renderer = platform::send<"initWithSize:">(
        platform::send<"alloc">(platform::id(platform::classNamed<"UIGraphicsImageRenderer">())), size);
    return platform::send<"imageWithActions:">(
        renderer, platform::block([&drawing](const platform::id&) { drawing(); }));
}

} // namespace phone
