#include "photograph.h"
#include "platform/foundation/files.h"
#include "platform/foundation/values.h"
#include "platform/graphics/objects.h"
#include "platform/runtime/message.h"
#include "platform/screen/framework.h"

#include <algorithm>
#include <cairo.h>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <png.h>
#include <unistd.h>

/// An icon of a photograph of 12 megapixels, saved as an application saves it, and icons drawn from files for the Home
/// Screen; beside cairo's own reader and writer and a plain libpng with its defaults. Everything lies in the temporary
/// directory and in the system's cache.
///
///     picture_bench save [RUNS]
///     picture_bench render [RUNS]

using namespace platform;
using Clock = std::chrono::steady_clock;

namespace {

constexpr int photographWidth = 4032;
constexpr int photographHeight = 3024;
constexpr float cornerPart = 0.224F;

struct Times {
    double processor; ///< what the work took of a processor, whoever else was there
    double clock;
};

double processorMilliseconds()
{
    timespec time {};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// In milliseconds.
template <class Work> Times medianOf(int runs, Work work)
{
    std::vector<double> processor;
    std::vector<double> clock;
    for (int run = 0; run < runs; ++run) {
        const auto start = Clock::now();
        const double processorStart = processorMilliseconds();
        work();
        processor.push_back(processorMilliseconds() - processorStart);
        clock.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
    }
    std::ranges::sort(processor);
    std::ranges::sort(clock);
    return { processor[processor.size() / 2], clock[clock.size() / 2] };
}

/// From /proc/self/status, in bytes.
double memory(const char* name)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(name))
            return std::atof(line.c_str() + std::strlen(name) + 1) * 1024;
    return 0;
}

void forgetPeak()
{
    ::malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5";
}

id roundedImage(const id& image, CGSize size, double scale, const CGRect& rect, double radius)
{
    UIGraphicsBeginImageContextWithOptions(size, false, scale);
    const id path = send<"bezierPathWithRoundedRect:cornerRadius:">(
        id(objc_getClass("UIBezierPath")), CGRect { {}, size }, radius);
    send<"addClip", void>(path);
    send<"drawInRect:", void>(image, rect);
    id result = UIGraphicsGetImageFromCurrentImageContext();
    UIGraphicsEndImageContext();
    return result;
}

/// The centre of a picture, at its own size.
id cropped(const id& image)
{
    const auto size = send<"size", CGSize>(image);
    const double side = std::min(size.width, size.height);
    return roundedImage(image, { side, side }, 1, { { -(size.width - side) / 2, -(size.height - side) / 2 }, size },
        std::round(side * cornerPart));
}

bool write(const id& image, const char* path)
{
    return send<"writeToFile:atomically:", bool>(UIImagePNGRepresentation(image), string(path), true);
}

const Bitmap& pixelsOf(const id& image)
{
    return *static_cast<UIImage&>(*image).bitmap();
}

cairo_surface_t* surfaceOf(const Bitmap& bitmap)
{
    return cairo_image_surface_create_for_data(
        reinterpret_cast<unsigned char*>(const_cast<std::uint32_t*>(bitmap.pixels.data())), CAIRO_FORMAT_ARGB32,
        bitmap.width, bitmap.height, 4 * bitmap.width);
}

void writeWithCairo(const Bitmap& bitmap, const std::string& path)
{
    cairo_surface_t* const surface = surfaceOf(bitmap);
    cairo_surface_write_to_png(surface, path.c_str());
    cairo_surface_destroy(surface);
}

void writeWithLibpng(const std::vector<std::uint32_t>& pixels, int width, int height, const std::string& path)
{
    std::FILE* const file = std::fopen(path.c_str(), "wb");
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop information = png_create_info_struct(png);
    png_init_io(png, file);
    png_set_IHDR(png, information, static_cast<png_uint_32>(width), static_cast<png_uint_32>(height), 8,
        PNG_COLOR_TYPE_RGBA, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, information);
    png_set_bgr(png);
    for (int y = 0; y < height; ++y)
        png_write_row(png, reinterpret_cast<png_const_bytep>(pixels.data() + std::size_t(y) * std::size_t(width)));
    png_write_end(png, information);
    png_destroy_write_struct(&png, &information);
    std::fclose(file);
}

void renderWithCairo(const std::string& path, int points, double scale)
{
    cairo_surface_t* const source = cairo_image_surface_create_from_png(path.c_str());
    const int side = static_cast<int>(points * scale);
    cairo_surface_t* const target = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, side, side);
    cairo_t* const context = cairo_create(target);
    cairo_scale(context, double(side) / cairo_image_surface_get_width(source),
        double(side) / cairo_image_surface_get_height(source));
    cairo_set_source_surface(context, source, 0, 0);
    cairo_pattern_set_extend(cairo_get_source(context), CAIRO_EXTEND_PAD);
    cairo_paint(context);
    cairo_destroy(context);
    cairo_surface_destroy(target);
    cairo_surface_destroy(source);
}

void save(int runs, const std::string& root)
{
    forgetPeak();
    const double before = memory("VmRSS:");
    const id image = imageObject(bench::photograph(photographWidth, photographHeight), 1);
    const double pictureBytes = 4.0 * photographWidth * photographHeight;
    forgetPeak();
    write(cropped(image), "/icon.png");
    const double peak = memory("VmHWM:") - before;

    id icon;
    id file;
    const Times crop = medianOf(runs, [&] { icon = cropped(image); });
    const Times encode = medianOf(runs, [&] { file = UIImagePNGRepresentation(icon); });
    const Times store = medianOf(runs, [&] { send<"writeToFile:atomically:", bool>(file, string("/icon.png"), true); });
    const Bitmap& pixels = pixelsOf(icon);
    const int otherRuns = std::max(1, runs / 4);
    const Times cairo = medianOf(otherRuns, [&] { writeWithCairo(pixels, root + "/cairo.png"); });
    const Bitmap straight = *decodePicture(*readFile("/icon.png"));
    const Times libpng = medianOf(
        otherRuns, [&] { writeWithLibpng(straight.pixels, pixels.width, pixels.height, root + "/libpng.png"); });

    const auto sizeOf = [&](const char* name) { return static_cast<double>(std::filesystem::file_size(root + name)); };
    const double cairoSize = sizeOf("/cairo.png");
    const Times all { crop.processor + encode.processor + store.processor, crop.clock + encode.clock + store.clock };
    std::printf("a photograph of %d x %d, cropped to %d x %d; medians of %d runs, of the others %d\n", photographWidth,
        photographHeight, pixels.width, pixels.height, runs, otherRuns);
    std::printf("%-26s %14s %14s %12s %12s\n", "", "processor, ms", "clock, ms", "bytes", "of cairo's");
    const auto print = [&](const char* name, const Times& times, double size) {
        std::printf("%-26s %14.1f %14.1f", name, times.processor, times.clock);
        if (size > 0)
            std::printf(" %12.0f %12.3f", size, size / cairoSize);
        std::printf("\n");
    };
    print("crop", crop, 0);
    print("encode", encode, sizeOf("/icon.png"));
    print("write", store, 0);
    print("all three", all, 0);
    print("cairo: encode and write", cairo, cairoSize);
    print("libpng: encode and write", libpng, sizeOf("/libpng.png"));
    std::printf("as fast as cairo, by the processor: encode and write %.1f times, all three %.1f times\n",
        cairo.processor / (encode.processor + store.processor), cairo.processor / all.processor);
    std::printf("peak memory of a save: %.1f MB, %.2f times the picture's pixels\n", peak / 1e6, peak / pictureBytes);
}

void render(int runs, const std::string& root)
{
    constexpr int points = 60;
    constexpr double scale = 3;
    const id photograph = imageObject(bench::photograph(photographHeight, photographHeight), 1);
    std::printf(
        "an icon of %d points at %g pixels each; medians in ms of the processor (by the clock)\n", points, scale);
    std::printf("%8s %19s %19s %19s %19s\n", "pixels", "a file of ours", "a file of cairo's", "of that, decoding",
        "all by cairo");
    for (const int side : { 180, 256, 512, 1024, photographHeight }) {
        const double length = side;
        const id icon = roundedImage(
            photograph, { length, length }, 1, { {}, { length, length } }, std::round(length * cornerPart));
        write(icon, "/ours.png");
        writeWithCairo(pixelsOf(icon), root + "/other.png");
        const std::string other = *readFile("/other.png");
        const auto renderFrom = [](const char* path) {
            const id image = send<"imageWithContentsOfFile:">(id(objc_getClass("UIImage")), string(path));
            roundedImage(image, { points, points }, scale, { {}, { points, points } }, std::round(points * cornerPart));
        };
        const int largeRuns = side > 1000 ? runs / 10 + 1 : runs;
        const Times ours = medianOf(runs, [&] { renderFrom("/ours.png"); });
        const Times theirs = medianOf(largeRuns, [&] { renderFrom("/other.png"); });
        const Times decode = medianOf(largeRuns, [&] { decodePicture(other); });
        const Times cairo = medianOf(largeRuns, [&] { renderWithCairo(root + "/other.png", points, scale); });
        std::printf("%8d %9.2f (%7.2f) %9.2f (%7.2f) %9.2f (%7.2f) %9.2f (%7.2f)\n", side, ours.processor, ours.clock,
            theirs.processor, theirs.clock, decode.processor, decode.clock, cairo.processor, cairo.clock);
    }
}

} // namespace

int main(int count, char** arguments)
{
    const std::string what = count > 1 ? arguments[1] : "";
    const int runs = count > 2 ? std::max(1, std::atoi(arguments[2])) : what == "save" ? 8 : 100;
    for (const ClassDefinition* definition : uiKitFrameworkClasses())
        registerClass(*definition);
    std::string root = std::filesystem::temp_directory_path() / "picture_bench-XXXXXX";
    if (!::mkdtemp(root.data()) || !setDeviceRoot(root))
        return 1;
    if (what == "save")
        save(runs, root);
    else if (what == "render")
        render(runs, root);
    else
        std::fprintf(stderr, "usage: picture_bench save|render [RUNS]\n");
    std::filesystem::remove_all(root);
    return what == "save" || what == "render" ? 0 : 2;
}
