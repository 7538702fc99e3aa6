#include "platform/graphics/sample_files.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <jpeglib.h>
#include <random>

using namespace platform;
using namespace samples;

namespace {

/// The colour in the middle of a quarter, rounded: "ff0000".
std::string colorIn(const Bitmap& bitmap, bool right, bool lower)
{
    const Color color = bitmap.colorAt(bitmap.width * (right ? 3 : 1) / 4, bitmap.height * (lower ? 3 : 1) / 4);
    EXPECT_EQ(color.alpha, 1);
    std::string text;
    for (const double part : { color.red, color.green, color.blue })
        text += part < 0.02 ? "00" : part > 0.98 ? "ff" : part > 0.48 && part < 0.52 ? "80" : "??";
    return text;
}

TEST(Jpeg, EveryFormShowsItsColours)
{
    const std::string orange = "ff8000";
    const struct {
        JpegForm form;
        std::vector<unsigned char> samples;
        std::string color;
        std::string zeros; ///< what samples of 0 are
    } cases[] {
        { { "colours", JCS_RGB, JCS_YCbCr }, { 255, 128, 0 }, orange, "000000" },
        { { "plain colours", JCS_RGB, JCS_RGB }, { 255, 128, 0 }, orange, "000000" },
        { { "progressive", JCS_RGB, JCS_YCbCr, false, true }, { 255, 128, 0 }, orange, "000000" },
        { { "grey", JCS_GRAYSCALE, JCS_GRAYSCALE, false }, { 128 }, "808080", "000000" },
        { { "inks, inverted", JCS_CMYK, JCS_CMYK }, { 255, 128, 0, 255 }, orange, "000000" },
        { { "inks, inverted, as brightness", JCS_CMYK, JCS_YCCK }, { 255, 128, 0, 255 }, orange, "000000" },
        { { "inks, progressive", JCS_CMYK, JCS_YCCK, true, true }, { 255, 128, 0, 255 }, orange, "000000" },
        { { "inks", JCS_CMYK, JCS_CMYK, false }, { 0, 127, 255, 0 }, orange, "ffffff" },
        { { "black ink", JCS_CMYK, JCS_CMYK, false }, { 0, 0, 0, 127 }, "808080", "ffffff" },
    };
    for (const auto& [form, samples, color, zeros] : cases) {
        const auto bitmap = decodePicture(makeJpeg(form, samples));
        ASSERT_TRUE(bitmap) << form.name;
        EXPECT_EQ(colorIn(*bitmap, true, true), color) << form.name;
        EXPECT_EQ(colorIn(*bitmap, false, false), zeros) << form.name;
    }
}

/// Where the quarter is, which is the left upper one of what is stored.
std::string seen(const std::string& metadata)
{
    JpegForm form { "", JCS_RGB, JCS_YCbCr, false, false, metadata };
    form.width = 48;
    const auto bitmap = decodePicture(makeJpeg(form, { 255, 255, 255 }));
    if (!bitmap)
        return "nothing";
    std::string place = bitmap->width == 48 && bitmap->height == 16 ? "wide" : "high";
    for (const bool lower : { false, true })
        for (const bool right : { false, true })
            if (colorIn(*bitmap, right, lower) == "000000")
                place += std::string(lower ? " lower" : " upper") + (right ? " right" : " left");
    return place;
}

constexpr std::uint16_t orientation = 0x0112;
constexpr std::uint16_t twoBytes = 3;

TEST(Jpeg, IsTurnedUpright)
{
    const char* const expected[] { "wide upper left", "wide upper right", "wide lower right", "wide lower left",
        "high upper left", "high upper right", "high lower right", "high lower left" };
    for (const bool isLittleEndian : { false, true })
        for (std::uint16_t value = 1; value <= 8; ++value)
            EXPECT_EQ(seen(metadata(isLittleEndian, orientation, twoBytes, 1, value)), expected[value - 1])
                << isLittleEndian << ' ' << value;
}

TEST(Jpeg, IsTakenAsItStandsWhereMetadataMakesNoSense)
{
    const std::string good = metadata(true, orientation, twoBytes, 1, 3);
    const auto with = [&good](std::size_t at, const std::string& bytes) {
        return std::string(good).replace(at, bytes.size(), bytes);
    };
    const std::string cases[] {
        metadata(true, orientation, twoBytes, 1, 0),
        metadata(true, orientation, twoBytes, 1, 9),
        metadata(true, orientation, twoBytes, 1, 0xFFFF),
        metadata(true, orientation, 2, 1, 3),
        metadata(true, orientation, twoBytes, 1000, 3),
        metadata(true, 0x0100, twoBytes, 1, 3),
        with(0, "Exit"),
        with(6, "MM"),
        with(6, "XX"),
        with(8, "!"),
        with(10, "\xFF\xFF\xFF\xFF"), // the directory lies beyond the end
        with(10, std::string("\xF8\xFF\xFF\xFF", 4)),
        with(10, std::string(4, '\0')),
        good.substr(0, 24),
        good.substr(0, 10),
        good.substr(0, 6),
    };
    for (const std::string& metadata : cases)
        EXPECT_EQ(seen(metadata), "wide upper left") << testing::PrintToString(metadata);
    // More entries than there are: those that there are count.
    EXPECT_EQ(seen(with(14, "\xFF\xFF")), "wide lower right");
}

TEST(Jpeg, WhatIsCutOffIsRefused)
{
    for (const bool isProgressive : { false, true }) {
        const std::string file = makeJpeg({ "", JCS_RGB, JCS_YCbCr, true, isProgressive, {}, 40, 40 }, { 255, 128, 0 });
        ASSERT_TRUE(decodePicture(file));
        for (std::size_t length = 0; length < file.size(); ++length)
            ASSERT_FALSE(decodePicture(file.substr(0, length))) << length << " of " << file.size();
        EXPECT_TRUE(decodePicture(file + "what a camera adds"));
    }
}

TEST(Jpeg, AnAbsurdSizeIsRefusedUnread)
{
    const std::string honest = makeJpeg({ "", JCS_RGB, JCS_YCbCr, false, true }, { 255, 128, 0 });
    const std::size_t size = honest.find("\xFF\xC2") + 5;
    for (const std::string_view sides : { "\xFF\xFF\xFF\xFF", "\x13\x88\x13\x88" })
        EXPECT_FALSE(decodePicture(std::string(honest).replace(size, 4, sides)));
}

TEST(Jpeg, ManyScansAreGivenUp)
{
    std::string file = makeJpeg({ "", JCS_GRAYSCALE, JCS_GRAYSCALE, false, true }, { 128 });
    const std::size_t scan = file.rfind("\xFF\xDA");
    const std::string last = file.substr(scan, file.size() - 2 - scan);
    ASSERT_TRUE(decodePicture(file));
    for (int count = 0; count < 1000; ++count)
        file.insert(scan, last);
    EXPECT_FALSE(decodePicture(file));
}

TEST(Jpeg, NoDamageDoesMoreThanLoseThePicture)
{
    std::minstd_rand random(17);
    const std::string exif = metadata(false, orientation, twoBytes, 1, 8);
    const std::string files[] {
        makeJpeg({ "", JCS_RGB, JCS_YCbCr, true, false, exif }, { 255, 128, 0 }),
        makeJpeg({ "", JCS_RGB, JCS_YCbCr, true, true, exif }, { 255, 128, 0 }),
        makeJpeg({ "", JCS_CMYK, JCS_YCCK }, { 255, 128, 0, 255 }),
    };
    for (const std::string& file : files)
        for (int round = 0; round < 700; ++round) {
            std::string damaged = file;
            for (unsigned changes = 1 + random() % 4; changes > 0; --changes)
                damaged[random() % damaged.size()] = static_cast<char>(random());
            if (const auto bitmap = decodePicture(damaged)) {
                EXPECT_EQ(bitmap->pixels.size(),
                    static_cast<std::size_t>(bitmap->width) * static_cast<std::size_t>(bitmap->height));
            }
        }
}

} // namespace
