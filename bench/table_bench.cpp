#include "platform/dispatch/clock.h"
#include "platform/dispatch/run_loop.h"
#include "platform/foundation/index_path.h"
#include "platform/foundation/values.h"
#include "platform/handles/UITableView.h"
#include "platform/handles/UIWindow.h"
#include "platform/runtime/class_definition.h"
#include "platform/screen/framework.h"
#include "platform/uikit/renderer.h"

#include <algorithm>
#include <cairo.h>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <pango/pangocairo.h>

/// A frame of scrolling in a table of 10,000 rows with a title, a detail and an accessory each, at two pixels a point
/// on a screen of 390 x 844 points: rows are laid out and made, and the screen is drawn. Its peer draws the same texts
/// and lines of the same rows with cairo and Pango alone, and has no tree, no cells and no touches. Medians and the
/// slowest in a hundred.
///
///     table_bench [FRAMES]

using namespace platform;
using Clock = std::chrono::steady_clock;

namespace {

constexpr CGSize screen { 390, 844 };
constexpr double scale = 2;
constexpr std::size_t rowCount = 10'000;
constexpr double rowHeight = 44;
constexpr double speed = 23; ///< points a frame

std::string titleOf(std::size_t row)
{
    return "Application " + std::to_string(row);
}
std::string detailOf(std::size_t row)
{
    return "com.example.application" + std::to_string(row);
}

struct Source : NSObject {
    static const ClassDefinition definition;

    NSInteger numberOfRows(const id&, NSInteger) { return rowCount; }
    id cellForRow(const id& table, const id& path)
    {
        UITableViewCell cell = UITableView(table).dequeueReusableCell(string("row"));
        if (!cell)
            cell = UITableViewCell::withStyle(UITableViewCellStyle::Subtitle, string("row"));
        const std::size_t row = asIndexPath(path)->row;
        cell.textLabel().setText(string(titleOf(row)));
        cell.detailTextLabel().setText(string(detailOf(row)));
        cell.setAccessoryType(
            row % 3 == 0 ? UITableViewCellAccessoryType::Checkmark : UITableViewCellAccessoryType::DisclosureIndicator);
        return cell;
    }
};
constexpr MethodDefinition sourceMethods[] {
    method<"tableView:cellForRowAtIndexPath:", &Source::cellForRow>(),
    method<"tableView:numberOfRowsInSection:", &Source::numberOfRows>(),
};
const ClassDefinition Source::definition {
    .name = "BenchTableSource", .allocate = allocate<Source>, .methods = sourceMethods
};

/// Of one piece of work a frame, in milliseconds.
template <class Frame> void measure(const char* name, int frames, Frame frame)
{
    std::vector<double> times;
    for (int count = 0; count < frames; ++count) {
        const auto start = Clock::now();
        frame(count);
        times.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
    }
    std::ranges::sort(times);
    std::printf("%-28s median %6.2f ms, slowest in a hundred %6.2f ms\n", name, times[times.size() / 2],
        times[times.size() * 99 / 100]);
}

/// The peer: the rows that are seen at the offset, by hand.
class Peer {
public:
    Peer()
        : surface_(cairo_image_surface_create(
            CAIRO_FORMAT_ARGB32, static_cast<int>(screen.width * scale), static_cast<int>(screen.height * scale)))
        , context_(cairo_create(surface_))
        , layout_(pango_cairo_create_layout(context_))
    {
        cairo_scale(context_, scale, scale);
    }
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;
    ~Peer()
    {
        g_object_unref(layout_);
        cairo_destroy(context_);
        cairo_surface_destroy(surface_);
    }

    void draw(double offset)
    {
        cairo_set_source_rgb(context_, 1, 1, 1);
        cairo_paint(context_);
        const auto first = static_cast<std::size_t>(offset / rowHeight);
        for (std::size_t row = first; static_cast<double>(row) * rowHeight < offset + screen.height; ++row) {
            const double y = static_cast<double>(row) * rowHeight - offset;
            write(titleOf(row), 17, y + 4);
            write(detailOf(row), 12, y + 26);
            cairo_rectangle(context_, 16, y + rowHeight - 0.5, screen.width - 16, 0.5);
            cairo_fill(context_);
            cairo_move_to(context_, screen.width - 24, y + 16);
            cairo_line_to(context_, screen.width - 18, y + 22);
            cairo_line_to(context_, screen.width - 24, y + 28);
            cairo_set_line_width(context_, 2);
            cairo_stroke(context_);
        }
        cairo_surface_flush(surface_);
    }

private:
    void write(const std::string& text, double size, double y)
    {
        PangoFontDescription* const font = pango_font_description_from_string("sans");
        pango_font_description_set_absolute_size(font, size * PANGO_SCALE);
        pango_layout_set_font_description(layout_, font);
        pango_font_description_free(font);
        pango_layout_set_text(layout_, text.data(), static_cast<int>(text.size()));
        cairo_set_source_rgb(context_, 0, 0, 0);
        cairo_move_to(context_, 16, y);
        pango_cairo_show_layout(context_, layout_);
    }

    cairo_surface_t* surface_;
    cairo_t* context_;
    PangoLayout* layout_;
};

} // namespace

int main(int count, char** arguments)
{
    const int frames = count > 1 ? std::max(std::atoi(arguments[1]), 1) : 400;
    holdClock();
    for (const ClassDefinition* definition : uiKitFrameworkClasses())
        registerClass(*definition);
    setScreen(screen, scale);
    const Ref<Source> source = make<Source>();
    const UIWindow window = UIWindow::withFrame({ {}, screen });
    window.makeKeyAndVisible();
    const UITableView table = UITableView::withFrame({ {}, screen }, UITableViewStyle::Plain);
    table.setDataSource(source);
    window.addSubview(table);
    runUntilIdle();

    const double top = table.contentOffset().y;
    measure("rows made and laid out", frames, [&](int frame) {
        table.setContentOffset({ 0, top + frame * speed });
        runUntilIdle();
    });
    table.setContentOffset({ 0, top });
    runUntilIdle();
    measure("a whole frame", frames, [&](int frame) {
        table.setContentOffset({ 0, top + frame * speed });
        runUntilIdle();
        if (!renderScreen(scale))
            std::abort();
    });
    Peer peer;
    measure("peer: cairo and Pango alone", frames, [&](int frame) { peer.draw(frame * speed); });
    return 0;
}
