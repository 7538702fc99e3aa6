#include "platform/graphics/canvas.h"

#include "platform/graphics/blur.h"

#include <algorithm>
#include <cairo.h>
#include <cmath>
#include <utility>

/// What has been drawn so far, seen through frosted glass.

namespace platform {

namespace {

// At a quarter of the scale a blur costs a sixteenth, and nobody sees the difference.
constexpr int reduction = 4;

struct Box {
    int x;
    int y;
    int width;
    int height;
};

/// The pixels around the path, and as far beyond as the blur can bring something in; empty for none.
Box reachOf(cairo_t* context, cairo_surface_t* surface, double reach)
{
    double x1 = 0;
    double y1 = 0;
    double x2 = 0;
    double y2 = 0;
    cairo_path_extents(context, &x1, &y1, &x2, &y2);
    double left = INFINITY;
    double top = INFINITY;
    double right = -INFINITY;
    double bottom = -INFINITY;
    for (auto [x, y] : { std::pair(x1, y1), std::pair(x2, y1), std::pair(x1, y2), std::pair(x2, y2) }) {
        cairo_user_to_device(context, &x, &y);
        left = std::min(left, x);
        right = std::max(right, x);
        top = std::min(top, y);
        bottom = std::max(bottom, y);
    }
    const auto within
        = [](double value, int most) { return static_cast<int>(std::clamp(value, 0.0, static_cast<double>(most))); };
    const int width = cairo_image_surface_get_width(surface);
    const int height = cairo_image_surface_get_height(surface);
    const int x = within(std::floor(left - reach), width);
    const int y = within(std::floor(top - reach), height);
    return { x, y, within(std::ceil(right + reach), width) - x, within(std::ceil(bottom + reach), height) - y };
}

/// Each pixel the mean of a square.
std::vector<std::uint32_t> reduced(cairo_surface_t* surface, const Box& box, int width, int height)
{
    const auto* const data = reinterpret_cast<const std::uint32_t*>(cairo_image_surface_get_data(surface));
    const int stride = cairo_image_surface_get_stride(surface) / 4;
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (int row = 0; row < height; ++row)
        for (int column = 0; column < width; ++column) {
            std::uint32_t sums[4] {};
            std::uint32_t count = 0;
            for (int y = row * reduction; y < std::min((row + 1) * reduction, box.height); ++y)
                for (int x = column * reduction; x < std::min((column + 1) * reduction, box.width); ++x, ++count) {
                    const std::uint32_t pixel = data[static_cast<std::ptrdiff_t>(box.y + y) * stride + box.x + x];
                    for (int part = 0; part < 4; ++part)
                        sums[part] += pixel >> 8 * part & 0xFF;
                }
            std::uint32_t mean = 0;
            for (int part = 0; part < 4; ++part)
                mean |= sums[part] / count << 8 * part;
            pixels[static_cast<std::size_t>(row) * static_cast<std::size_t>(width) + static_cast<std::size_t>(column)]
                = mean;
        }
    return pixels;
}

/// Further from its own grey, or nearer to it.
std::uint32_t saturated(std::uint32_t pixel, double saturation)
{
    const double alpha = pixel >> 24;
    const double red = pixel >> 16 & 0xFF;
    const double green = pixel >> 8 & 0xFF;
    const double blue = pixel & 0xFF;
    const double gray = 0.2126 * red + 0.7152 * green + 0.0722 * blue;
    const auto part = [&](double value) {
        return static_cast<std::uint32_t>(std::clamp(gray + (value - gray) * saturation, 0.0, alpha));
    };
    return static_cast<std::uint32_t>(alpha) << 24 | part(red) << 16 | part(green) << 8 | part(blue);
}

} // namespace

void Canvas::fillWithBackdrop(const Path& path, double radius, double saturation, const Color& tint)
{
    cairo_surface_t* const surface = cairo_get_target(context_);
    if (cairo_surface_get_type(surface) == CAIRO_SURFACE_TYPE_IMAGE) {
        cairo_surface_flush(surface);
        tracePath(path);
        const double deviation = radius * scale();
        const Box box = reachOf(context_, surface, 2 * deviation);
        cairo_new_path(context_);
        if (box.width <= 0 || box.height <= 0)
            return;
        const int width = (box.width + reduction - 1) / reduction;
        const int height = (box.height + reduction - 1) / reduction;
        std::vector<std::uint32_t> pixels = reduced(surface, box, width, height);
        blurColors(pixels.data(), width, height, deviation / reduction);
        std::ranges::transform(
            pixels, pixels.begin(), [saturation](std::uint32_t pixel) { return saturated(pixel, saturation); });
        cairo_surface_t* const glass = cairo_image_surface_create_for_data(
            reinterpret_cast<unsigned char*>(pixels.data()), CAIRO_FORMAT_ARGB32, width, height, width * 4);
        save();
        clip(path);
        cairo_identity_matrix(context_);
        cairo_translate(context_, box.x, box.y);
        cairo_scale(context_, reduction, reduction);
        cairo_set_source_surface(context_, glass, 0, 0);
        cairo_pattern_set_extend(cairo_get_source(context_), CAIRO_EXTEND_PAD);
        cairo_pattern_set_filter(cairo_get_source(context_), CAIRO_FILTER_BILINEAR);
        cairo_paint(context_);
        restore();
        cairo_surface_finish(glass);
        cairo_surface_destroy(glass);
    }
    fill(path, tint);
}

} // namespace platform
