#include "platform/graphics/text.h"

#include <array>
#include <climits>
#include <memory>
#include <pango/pangocairo.h>
#include <string>
#include <unordered_map>

namespace platform {

namespace {

// In the order of preference. Signs that none of them has come from whatever font of the system has them; one of signs
// in this list would lend its digits to ordinary text.
constexpr const char* families = "Inter, Noto Sans, DejaVu Sans, sans-serif";

struct Release {
    void operator()(void* object) const { g_object_unref(object); }
};
using LayoutPointer = std::unique_ptr<PangoLayout, Release>;
using ContextPointer = std::unique_ptr<PangoContext, Release>;

struct FreeDescription {
    void operator()(PangoFontDescription* description) const { pango_font_description_free(description); }
};
using DescriptionPointer = std::unique_ptr<PangoFontDescription, FreeDescription>;

int inPangoUnits(double points)
{
    constexpr double most = 1'000'000;
    return static_cast<int>(std::clamp(points, 0.0, most) * PANGO_SCALE);
}

DescriptionPointer describeFont(const Font& font)
{
    DescriptionPointer description(pango_font_description_new());
    pango_font_description_set_family_static(description.get(), families);
    pango_font_description_set_absolute_size(description.get(), inPangoUnits(font.size));
    pango_font_description_set_weight(description.get(), static_cast<PangoWeight>(font.weight));
    return description;
}

/// Measures alike at every scale: nothing is fitted to pixels.
ContextPointer makeContext()
{
    ContextPointer context(pango_font_map_create_context(pango_cairo_font_map_get_default()));
    cairo_font_options_t* const options = cairo_font_options_create();
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    pango_cairo_context_set_font_options(context.get(), options);
    cairo_font_options_destroy(options);
    pango_context_set_round_glyph_positions(context.get(), FALSE);
    return context;
}

/// The layout counts lines for each paragraph by itself; all of them together are no more than wanted.
void limitLines(PangoLayout* layout, std::string_view text, const TextLayout& wanted)
{
    if (wanted.lines <= 0 || pango_layout_get_line_count(layout) <= wanted.lines)
        return;
    const PangoLayoutLine* const last
        = pango_layout_get_line_readonly(layout, static_cast<int>(std::min<long>(wanted.lines, INT_MAX) - 1));
    const std::string shown(text.substr(0, static_cast<std::size_t>(last->start_index + last->length)));
    constexpr std::string_view ellipsis = "…";
    const bool isMarked = pango_layout_get_ellipsize(layout) != PANGO_ELLIPSIZE_NONE;
    const auto show
        = [&](const std::string& part) { pango_layout_set_text(layout, part.data(), static_cast<int>(part.size())); };
    show(isMarked ? shown + std::string(ellipsis) : shown);
    if (pango_layout_get_line_count(layout) > wanted.lines)
        show(shown);
}

LayoutPointer makeLayout(PangoContext* context, std::string_view text, const TextLayout& wanted, double width)
{
    LayoutPointer layout(pango_layout_new(context));
    const DescriptionPointer description = describeFont(wanted.font);
    pango_layout_set_font_description(layout.get(), description.get());
    pango_layout_set_text(layout.get(), text.data(), static_cast<int>(text.size()));
    if (width < unlimitedWidth)
        pango_layout_set_width(layout.get(), inPangoUnits(width));
    switch (wanted.alignment) {
    case TextAlignment::Center:
        pango_layout_set_alignment(layout.get(), PANGO_ALIGN_CENTER);
        break;
    case TextAlignment::Right:
        pango_layout_set_alignment(layout.get(), PANGO_ALIGN_RIGHT);
        break;
    case TextAlignment::Justified:
        pango_layout_set_justify(layout.get(), TRUE);
        break;
    default:
        break;
    }
    switch (wanted.lineBreak) {
    case LineBreak::TruncateHead:
        pango_layout_set_ellipsize(layout.get(), PANGO_ELLIPSIZE_START);
        break;
    case LineBreak::TruncateMiddle:
        pango_layout_set_ellipsize(layout.get(), PANGO_ELLIPSIZE_MIDDLE);
        break;
    case LineBreak::TruncateTail:
        pango_layout_set_ellipsize(layout.get(), PANGO_ELLIPSIZE_END);
        break;
    default:
        break;
    }
    pango_layout_set_wrap(
        layout.get(), wanted.lineBreak == LineBreak::CharacterWrap ? PANGO_WRAP_CHAR : PANGO_WRAP_WORD_CHAR);
    // A negative height is a number of lines; with an ellipsis the text then wraps up to it.
    constexpr long noLimit = 100'000;
    pango_layout_set_height(
        layout.get(), static_cast<int>(wanted.lines > 0 ? -std::min(wanted.lines, noLimit) : -noLimit));
    limitLines(layout.get(), text, wanted);
    return layout;
}

/// Where the size of a text stands that this thread has measured lately, empty if it hasn't: the same few names are
/// measured at every layout.
CGSize& measuredLately(std::string_view text, const TextLayout& wanted, double width)
{
    constexpr std::size_t mostKept = 1024;
    thread_local std::unordered_map<std::string, CGSize> sizes;
    const std::array<double, 6> how { wanted.font.size, static_cast<double>(wanted.font.weight),
        static_cast<double>(wanted.alignment), static_cast<double>(wanted.lineBreak), static_cast<double>(wanted.lines),
        width };
    std::string key(text);
    key.append(reinterpret_cast<const char*>(how.data()), sizeof how);
    if (sizes.size() >= mostKept && !sizes.contains(key))
        sizes.clear();
    return sizes[std::move(key)];
}

} // namespace

FontMetrics metricsOf(const Font& font)
{
    const ContextPointer context = makeContext();
    const DescriptionPointer description = describeFont(font);
    PangoFontMetrics* const metrics = pango_context_get_metrics(context.get(), description.get(), nullptr);
    const FontMetrics result { pango_font_metrics_get_ascent(metrics) / double { PANGO_SCALE },
        pango_font_metrics_get_descent(metrics) / double { PANGO_SCALE } };
    pango_font_metrics_unref(metrics);
    return result;
}

std::string upperCaseText(std::string_view text)
{
    char* const capitals = g_utf8_strup(text.data(), static_cast<gssize>(text.size()));
    std::string result(capitals);
    g_free(capitals);
    return result;
}

CGSize measureText(std::string_view text, const TextLayout& wanted, double width)
{
    if (text.empty())
        return {};
    CGSize& size = measuredLately(text, wanted, width);
    if (size == CGSize {}) {
        const ContextPointer context = makeContext();
        const LayoutPointer layout = makeLayout(context.get(), text, wanted, width);
        PangoRectangle extents;
        pango_layout_get_extents(layout.get(), nullptr, &extents);
        size = { extents.width / double { PANGO_SCALE }, extents.height / double { PANGO_SCALE } };
    }
    return size;
}

namespace {

/// Whether a caret may stand before each code point, and after the last.
std::vector<bool> caretPlaces(std::string_view text)
{
    const auto length = static_cast<int>(text.size());
    std::vector<PangoLogAttr> attributes(static_cast<std::size_t>(g_utf8_strlen(text.data(), length)) + 1);
    pango_get_log_attrs(text.data(), length, 0, nullptr, attributes.data(), static_cast<int>(attributes.size()));
    std::vector<bool> places;
    for (const PangoLogAttr& attribute : attributes)
        places.push_back(attribute.is_cursor_position != 0);
    return places;
}

/// The offsets of the places, in their order.
std::vector<std::size_t> caretOffsets(std::string_view text)
{
    std::vector<std::size_t> offsets;
    const std::vector<bool> places = caretPlaces(text);
    const char* at = text.data();
    for (std::size_t index = 0; index < places.size(); ++index) {
        const auto offset = static_cast<std::size_t>(at - text.data());
        if (places[index] || offset == text.size())
            offsets.push_back(offset);
        if (offset < text.size())
            at = g_utf8_next_char(at);
    }
    return offsets;
}

constexpr LineBreak cutOff = LineBreak::Clip;

LayoutPointer makeLine(PangoContext* context, std::string_view text, const Font& font)
{
    return makeLayout(
        context, text, { .font = font, .alignment = TextAlignment::Left, .lineBreak = cutOff }, unlimitedWidth);
}

} // namespace

std::size_t caretBefore(std::string_view text, std::size_t offset)
{
    const std::vector<std::size_t> offsets = text.empty() ? std::vector<std::size_t> {} : caretOffsets(text);
    const auto next = std::ranges::lower_bound(offsets, offset);
    return next == offsets.begin() ? 0 : *std::prev(next);
}

std::size_t caretAfter(std::string_view text, std::size_t offset)
{
    const std::vector<std::size_t> offsets = text.empty() ? std::vector<std::size_t> {} : caretOffsets(text);
    const auto next = std::ranges::upper_bound(offsets, offset);
    return next == offsets.end() ? text.size() : *next;
}

double caretPosition(std::string_view text, const Font& font, std::size_t offset)
{
    if (text.empty())
        return 0;
    const ContextPointer context = makeContext();
    const LayoutPointer line = makeLine(context.get(), text, font);
    PangoRectangle strong;
    pango_layout_get_cursor_pos(line.get(), static_cast<int>(std::min(offset, text.size())), &strong, nullptr);
    return strong.x / double { PANGO_SCALE };
}

std::size_t caretNear(std::string_view text, const Font& font, double position)
{
    if (text.empty())
        return 0;
    const ContextPointer context = makeContext();
    const LayoutPointer line = makeLine(context.get(), text, font);
    int index = 0;
    int behind = 0;
    pango_layout_xy_to_index(line.get(), inPangoUnits(position), 0, &index, &behind);
    const char* const at = g_utf8_offset_to_pointer(text.data() + index, behind);
    return std::min(static_cast<std::size_t>(at - text.data()), text.size());
}

void drawText(Canvas& canvas, std::string_view text, const TextLayout& wanted, const CGRect& rect, const Color& color)
{
    if (text.empty() || CGRectIsEmpty(rect))
        return;
    const ContextPointer context = makeContext();
    cairo_t* const target = canvas.native();
    pango_cairo_update_context(target, context.get());
    const LayoutPointer layout = makeLayout(context.get(), text, wanted, rect.size.width);
    cairo_save(target);
    cairo_set_source_rgba(target, color.red, color.green, color.blue, color.alpha);
    cairo_move_to(target, rect.origin.x, rect.origin.y);
    pango_cairo_show_layout(target, layout.get());
    cairo_restore(target);
}

} // namespace platform
