#include "platform/graphics/canvas.h"

#include "platform/graphics/blur.h"
#include "platform/graphics/reduction.h"

#include <cairo.h>

namespace platform {

/// A picture that cairo keeps as what was drawn.
class Recording {
public:
    explicit Recording(CGSize size)
    {
        const cairo_rectangle_t extents { 0, 0, size.width, size.height };
        surface = cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, &extents);
    }
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;
    ~Recording() { cairo_surface_destroy(surface); }

    cairo_surface_t* surface;
};

namespace {

cairo_surface_t* surfaceOver(const Bitmap& bitmap)
{
    // cairo doesn't write to a surface that is drawn from.
    auto* const bytes = reinterpret_cast<unsigned char*>(const_cast<std::uint32_t*>(bitmap.pixels.data()));
    return cairo_image_surface_create_for_data(
        bytes, CAIRO_FORMAT_ARGB32, bitmap.width, bitmap.height, 4 * bitmap.width);
}

void addPath(cairo_t* context, const Path& path)
{
    cairo_new_path(context);
    for (const Path::Element& element : path.elements()) {
        const CGPoint* const p = element.points;
        switch (element.verb) {
        case Path::Verb::Move:
            cairo_move_to(context, p[0].x, p[0].y);
            break;
        case Path::Verb::Line:
            cairo_line_to(context, p[0].x, p[0].y);
            break;
        case Path::Verb::Curve:
            cairo_curve_to(context, p[0].x, p[0].y, p[1].x, p[1].y, p[2].x, p[2].y);
            break;
        case Path::Verb::Close:
            cairo_close_path(context);
            break;
        }
    }
}

void setColor(cairo_t* context, const Color& color)
{
    cairo_set_source_rgba(context, color.red, color.green, color.blue, color.alpha);
}

/// A matrix that can't be inverted puts a cairo context into an error from which it doesn't return.
bool canBeDrawn(const CGAffineTransform& t)
{
    constexpr double smallest = 1e-9;
    const double determinant = t.a * t.d - t.b * t.c;
    return std::isfinite(determinant) && std::abs(determinant) > smallest && std::isfinite(t.tx) && std::isfinite(t.ty);
}

} // namespace

Canvas::Canvas(Bitmap& target, double scale)
{
    cairo_surface_t* const surface = surfaceOver(target);
    context_ = cairo_create(surface);
    cairo_surface_destroy(surface);
    cairo_scale(context_, scale, scale);
}

Canvas::Canvas(const std::shared_ptr<Recording>& target)
    : context_(cairo_create(target->surface))
{
}

Canvas::~Canvas()
{
    cairo_surface_flush(cairo_get_target(context_));
    cairo_destroy(context_);
}

std::shared_ptr<Recording> Canvas::makeRecording(CGSize size)
{
    return std::make_shared<Recording>(size);
}

void Canvas::save()
{
    cairo_save(context_);
}

void Canvas::restore()
{
    cairo_restore(context_);
}

void Canvas::concat(const CGAffineTransform& t)
{
    if (!canBeDrawn(t)) {
        // Nothing of it can be seen.
        cairo_rectangle(context_, 0, 0, 0, 0);
        cairo_clip(context_);
        return;
    }
    const cairo_matrix_t matrix { t.a, t.b, t.c, t.d, t.tx, t.ty };
    cairo_transform(context_, &matrix);
}

void Canvas::clip(const Path& path)
{
    addPath(context_, path);
    cairo_clip(context_);
}

void Canvas::tracePath(const Path& path)
{
    addPath(context_, path);
}

void Canvas::fill(const Path& path, const Color& color)
{
    addPath(context_, path);
    setColor(context_, color);
    cairo_fill(context_);
}

void Canvas::fillGradient(const Path& path, CGPoint start, CGPoint end, std::span<const GradientStop> stops)
{
    cairo_pattern_t* const pattern = cairo_pattern_create_linear(start.x, start.y, end.x, end.y);
    for (const GradientStop& stop : stops)
        cairo_pattern_add_color_stop_rgba(
            pattern, stop.offset, stop.color.red, stop.color.green, stop.color.blue, stop.color.alpha);
    addPath(context_, path);
    cairo_set_source(context_, pattern);
    cairo_fill(context_);
    cairo_pattern_destroy(pattern);
}

void Canvas::stroke(const Path& path, const Color& color, double width)
{
    addPath(context_, path);
    setColor(context_, color);
    cairo_set_line_width(context_, width);
    cairo_set_line_cap(context_, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(context_, CAIRO_LINE_JOIN_ROUND);
    cairo_stroke(context_);
}

void Canvas::clear(const CGRect& rect)
{
    cairo_save(context_);
    cairo_set_operator(context_, CAIRO_OPERATOR_CLEAR);
    cairo_rectangle(context_, rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
    cairo_fill(context_);
    cairo_restore(context_);
}

void Canvas::draw(const Bitmap& bitmap, const CGRect& rect, double alpha)
{
    if (CGRectIsEmpty(rect) || bitmap.pixels.empty())
        return;
    // cairo looks at every pixel of a large picture with several others, which takes it some twenty times as long.
    const double pixelsForOne = std::min(bitmap.width / rect.size.width, bitmap.height / rect.size.height) / scale();
    const int factor = std::isfinite(pixelsForOne) ? static_cast<int>(std::clamp(pixelsForOne, 1.0, mostReduced)) : 1;
    if (factor > 1) {
        const Bitmap reduced = reducedBy(bitmap, factor);
        paint(reduced, rect, static_cast<double>(bitmap.width) / factor, static_cast<double>(bitmap.height) / factor,
            alpha);
    } else
        paint(bitmap, rect, bitmap.width, bitmap.height, alpha);
}

/// The first `width` and `height` pixels of it, which needn't be whole ones, into the rectangle.
void Canvas::paint(const Bitmap& bitmap, const CGRect& rect, double width, double height, double alpha)
{
    cairo_surface_t* const surface = surfaceOver(bitmap);
    cairo_save(context_);
    cairo_rectangle(context_, rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
    cairo_clip(context_);
    cairo_translate(context_, rect.origin.x, rect.origin.y);
    cairo_scale(context_, rect.size.width / width, rect.size.height / height);
    cairo_set_source_surface(context_, surface, 0, 0);
    cairo_pattern_set_filter(cairo_get_source(context_), CAIRO_FILTER_GOOD);
    // Without it the outermost pixels fade when the picture is scaled.
    cairo_pattern_set_extend(cairo_get_source(context_), CAIRO_EXTEND_PAD);
    cairo_paint_with_alpha(context_, alpha);
    cairo_restore(context_);
    // A recording that still refers to the pixels copies them now: they are the bitmap's.
    cairo_surface_finish(surface);
    cairo_surface_destroy(surface);
}

void Canvas::draw(const Recording& recording, CGSize size, const CGRect& rect, double alpha)
{
    if (CGRectIsEmpty(rect) || size.width <= 0 || size.height <= 0)
        return;
    cairo_save(context_);
    cairo_translate(context_, rect.origin.x, rect.origin.y);
    cairo_scale(context_, rect.size.width / size.width, rect.size.height / size.height);
    cairo_set_source_surface(context_, recording.surface, 0, 0);
    cairo_paint_with_alpha(context_, alpha);
    cairo_restore(context_);
}

void Canvas::beginGroup()
{
    cairo_push_group(context_);
}

void Canvas::endGroup(double alpha)
{
    cairo_pop_group_to_source(context_);
    cairo_paint_with_alpha(context_, alpha);
}

void Canvas::endGroup(const Color& tint)
{
    cairo_pattern_t* const group = cairo_pop_group(context_);
    setColor(context_, tint);
    cairo_mask(context_, group);
    cairo_pattern_destroy(group);
}

void Canvas::endGroupAsShadow(const Color& color, CGSize offset, double radius)
{
    cairo_pattern_t* const group = cairo_pop_group(context_);
    cairo_surface_t* surface = nullptr;
    cairo_pattern_get_surface(group, &surface);
    if (cairo_surface_get_type(surface) == CAIRO_SURFACE_TYPE_IMAGE) {
        cairo_surface_flush(surface);
        blurAlpha(reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(surface)),
            cairo_image_surface_get_width(surface), cairo_image_surface_get_height(surface),
            cairo_image_surface_get_stride(surface) / 4, radius * scale());
        cairo_surface_mark_dirty(surface);
    }
    cairo_save(context_);
    cairo_translate(context_, offset.width, offset.height);
    setColor(context_, color);
    cairo_mask(context_, group);
    cairo_restore(context_);
    cairo_pattern_destroy(group);
}

double Canvas::scale() const
{
    double x = 1;
    double y = 0;
    cairo_user_to_device_distance(context_, &x, &y);
    return std::hypot(x, y);
}

} // namespace platform
