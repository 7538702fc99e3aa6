#include "platform/graphics/bitmap.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <png.h>
#include <string>
#include <turbojpeg.h>
#include <vector>

namespace {

using namespace platform;

void append(png_structp png, png_bytep bytes, png_size_t size)
{
    static_cast<std::string*>(png_get_io_ptr(png))->append(reinterpret_cast<const char*>(bytes), size);
}

struct PngForm {
    const char* name;
    int colors;
    int depth;
    bool interlaced = false;
};

/// A picture of 7 x 5 pixels whose samples are all of their highest value; with a palette, its colour 0, red.
std::string makePng(const PngForm& form)
{
    std::string bytes;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop information = png_create_info_struct(png);
    png_set_write_fn(png, &bytes, append, nullptr);
    png_set_IHDR(png, information, 7, 5, form.depth, form.colors,
        form.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
        PNG_FILTER_TYPE_DEFAULT);
    const png_color red { 255, 0, 0 };
    if (form.colors == PNG_COLOR_TYPE_PALETTE)
        png_set_PLTE(png, information, &red, 1);
    png_write_info(png, information);
    std::vector<unsigned char> row(64, form.colors == PNG_COLOR_TYPE_PALETTE ? 0 : 0xFF);
    const int passes = form.interlaced ? png_set_interlace_handling(png) : 1;
    for (int pass = 0; pass < passes; ++pass)
        for (int y = 0; y < 5; ++y)
            png_write_row(png, row.data());
    png_write_end(png, information);
    png_destroy_write_struct(&png, &information);
    return bytes;
}

constexpr PngForm forms[] {
    { "gray 1", PNG_COLOR_TYPE_GRAY, 1 },
    { "gray 2", PNG_COLOR_TYPE_GRAY, 2 },
    { "gray 4", PNG_COLOR_TYPE_GRAY, 4 },
    { "gray 8", PNG_COLOR_TYPE_GRAY, 8 },
    { "gray 16", PNG_COLOR_TYPE_GRAY, 16 },
    { "gray and alpha 8", PNG_COLOR_TYPE_GRAY_ALPHA, 8 },
    { "gray and alpha 16", PNG_COLOR_TYPE_GRAY_ALPHA, 16 },
    { "palette 1", PNG_COLOR_TYPE_PALETTE, 1 },
    { "palette 8, interlaced", PNG_COLOR_TYPE_PALETTE, 8, true },
    { "colours 8", PNG_COLOR_TYPE_RGB, 8 },
    { "colours 16", PNG_COLOR_TYPE_RGB, 16 },
    { "colours and alpha 8, interlaced", PNG_COLOR_TYPE_RGBA, 8, true },
    { "colours and alpha 16", PNG_COLOR_TYPE_RGBA, 16 },
};

/// Red, in three colours or in four inks as files store them (inverted).
std::string makeJpeg(bool inks)
{
    constexpr int side = 16;
    std::vector<unsigned char> pixels;
    for (int pixel = 0; pixel < side * side; ++pixel)
        for (const unsigned char part :
            inks ? std::vector<unsigned char> { 255, 0, 0, 255 } : std::vector<unsigned char> { 255, 0, 0 })
            pixels.push_back(part);
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    const tjhandle handle = tjInitCompress();
    EXPECT_EQ(tjCompress2(
                  handle, pixels.data(), side, 0, side, inks ? TJPF_CMYK : TJPF_RGB, &bytes, &size, TJSAMP_444, 95, 0),
        0);
    std::string result(reinterpret_cast<char*>(bytes), size);
    tjFree(bytes);
    tjDestroy(handle);
    return result;
}

TEST(Pictures, EveryFormOfPngIsRead)
{
    for (const PngForm& form : forms) {
        const auto bitmap = decodePicture(makePng(form));
        ASSERT_TRUE(bitmap) << form.name;
        EXPECT_EQ(bitmap->width, 7) << form.name;
        EXPECT_EQ(bitmap->height, 5) << form.name;
        const Color expected = form.colors == PNG_COLOR_TYPE_PALETTE ? Color { 1, 0, 0, 1 } : Color { 1, 1, 1, 1 };
        EXPECT_EQ(bitmap->colorAt(0, 0), expected) << form.name;
        EXPECT_EQ(bitmap->colorAt(6, 4), expected) << form.name;
    }
}

TEST(Pictures, JpegsOfColoursAndOfInksShowTheSame)
{
    for (const bool inks : { false, true }) {
        const auto bitmap = decodePicture(makeJpeg(inks));
        ASSERT_TRUE(bitmap) << inks;
        const Color color = bitmap->colorAt(8, 8);
        EXPECT_NEAR(color.red, 1, 0.02) << inks;
        EXPECT_NEAR(color.green, 0, 0.02) << inks;
        EXPECT_NEAR(color.blue, 0, 0.02) << inks;
        EXPECT_EQ(color.alpha, 1) << inks;
    }
}

TEST(Pictures, NoDamageDoesMoreThanLoseThePicture)
{
    std::vector<std::string> files { makeJpeg(false), makeJpeg(true) };
    for (const PngForm& form : forms)
        files.push_back(makePng(form));
    for (const std::string& file : files) {
        const bool isPng = file.starts_with("\x89PNG");
        for (std::size_t length = 0; length < file.size(); ++length) {
            const auto bitmap = decodePicture(file.substr(0, length));
            // The last chunk of a PNG holds nothing of the picture.
            if (isPng && length + 16 < file.size()) {
                EXPECT_FALSE(bitmap) << length;
            }
        }
        for (std::size_t bit = 0; bit < file.size() * 8; bit += 3) {
            std::string damaged = file;
            damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ 1 << bit % 8);
            const auto bitmap = decodePicture(damaged);
            if (bitmap) {
                EXPECT_EQ(bitmap->pixels.size(),
                    static_cast<std::size_t>(bitmap->width) * static_cast<std::size_t>(bitmap->height));
            }
        }
    }
}

std::string bigEndian(std::uint32_t value)
{
    return { static_cast<char>(value >> 24), static_cast<char>(value >> 16), static_cast<char>(value >> 8),
        static_cast<char>(value) };
}

std::uint32_t checkSum(const std::string& bytes)
{
    std::uint32_t sum = 0xFFFFFFFF;
    for (const char c : bytes) {
        sum ^= static_cast<unsigned char>(c);
        for (int bit = 0; bit < 8; ++bit)
            sum = sum >> 1 ^ ((sum & 1) != 0 ? 0xEDB88320 : 0);
    }
    return ~sum;
}

TEST(Pictures, AnAbsurdSizeIsRefusedUnread)
{
    const std::string honest = makePng({ "", PNG_COLOR_TYPE_RGBA, 8 });
    const struct {
        std::uint32_t width;
        std::uint32_t height;
    } sizes[] { { 0, 5 }, { 0x7FFFFFFF, 1 }, { 1000000, 1000000 }, { 40000, 40000 }, { 5000, 5000 } };
    for (const auto& [width, height] : sizes) {
        std::string header = "IHDR" + bigEndian(width) + bigEndian(height) + honest.substr(24, 5);
        const std::string file = honest.substr(0, 12) + header + bigEndian(checkSum(header)) + honest.substr(33);
        EXPECT_FALSE(decodePicture(file)) << width << " x " << height;
    }
    EXPECT_FALSE(Bitmap::make(1 << 20, 1 << 20));
    EXPECT_FALSE(Bitmap::make(0, 3));
    EXPECT_TRUE(Bitmap::make(4096, 4096));
}

TEST(Pictures, WhatIsWrittenIsReadBack)
{
    Bitmap bitmap = *Bitmap::make(3, 2);
    bitmap.pixels = { 0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0x80800000, 0x00000000, 0xFFFFFFFF };
    const auto read = decodePicture(encodePng(bitmap));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->pixels, bitmap.pixels);
    EXPECT_EQ(encodePng({}), "");
}

} // namespace
