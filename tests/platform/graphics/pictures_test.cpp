#include "platform/graphics/sample_files.h"

#include <gtest/gtest.h>

#include <png.h>
#include <random>

using namespace platform;
using namespace samples;

namespace {

const PngForm varied { "varied", PNG_COLOR_TYPE_RGBA, 8, false, 41, 23, 0, true };

TEST(Pictures, EveryFormOfPngIsRead)
{
    for (const PngForm& form : pngForms) {
        const auto bitmap = decodePicture(makePng(form));
        ASSERT_TRUE(bitmap) << form.name;
        EXPECT_EQ(bitmap->width, 7) << form.name;
        EXPECT_EQ(bitmap->height, 5) << form.name;
        const Color expected = form.colors == PNG_COLOR_TYPE_PALETTE ? Color { 1, 0, 0, 1 } : Color { 1, 1, 1, 1 };
        EXPECT_EQ(bitmap->colorAt(0, 0), expected) << form.name;
        EXPECT_EQ(bitmap->colorAt(6, 4), expected) << form.name;
    }
}

TEST(Pictures, ThePixelsOfAPngAreThoseThatALibraryReads)
{
    for (const int colors : { PNG_COLOR_TYPE_RGB, PNG_COLOR_TYPE_RGBA })
        for (const int filters :
            { PNG_FILTER_NONE, PNG_FILTER_SUB, PNG_FILTER_UP, PNG_FILTER_AVG, PNG_FILTER_PAETH, PNG_ALL_FILTERS })
            for (const int width : { 1, 2, 31, 32, 33, 1000 }) {
                const std::string file = makePng({ "", colors, 8, false, width, 300, filters, true });
                const auto bitmap = decodePicture(file);
                ASSERT_TRUE(bitmap) << colors << ' ' << filters << ' ' << width;
                EXPECT_EQ(bitmap->pixels, readWithLibpng(file)->pixels) << colors << ' ' << filters << ' ' << width;
            }
}

TEST(Pictures, WhatElseAPngHoldsIsUnderstoodOrPassedOver)
{
    const std::string file = makePng(varied);
    const auto withBefore = [&file](const char* name, const std::string& added) {
        std::string result = file;
        return result.insert(chunkAt(file, name), added);
    };
    const std::string text = chunk("tEXt", std::string("Comment\0IDAT IEND", 17));
    const std::string animation = chunk("acTL", bigEndian(2) + bigEndian(0))
        + chunk("fcTL", bigEndian(0) + bigEndian(41) + bigEndian(23) + std::string(14, '\0'));
    const std::string frame = chunk("fcTL", bigEndian(1) + bigEndian(41) + bigEndian(23) + std::string(14, '\0'))
        + chunk("fdAT", bigEndian(2) + "another picture");
    const auto plain = decodePicture(file)->pixels;
    const struct {
        const char* name;
        std::string file;
        bool isSame;
    } cases[] {
        { "text", withBefore("IDAT", text), true },
        { "an animation", file.substr(0, 33) + animation + withBefore("IEND", frame).substr(33), true },
        { "the usual gamma", withBefore("IDAT", chunk("gAMA", bigEndian(45455))), true },
        { "a gamma of 1", withBefore("IDAT", chunk("gAMA", bigEndian(100000))), false },
    };
    for (const auto& [name, changed, isSame] : cases) {
        const auto bitmap = decodePicture(changed);
        ASSERT_TRUE(bitmap) << name;
        EXPECT_EQ(bitmap->pixels == plain, isSame) << name;
        EXPECT_EQ(bitmap->pixels, readWithLibpng(changed)->pixels) << name;
    }
    EXPECT_FALSE(decodePicture(withBefore("IDAT", chunk("NEED", "what nobody knows"))));
}

TEST(Pictures, APngIsTurnedAsItsMetadataAsks)
{
    std::string file = makePng(varied);
    file.insert(chunkAt(file, "IDAT"), chunk("eXIf", metadata(false, 0x0112, 3, 1, 6).substr(6)));
    const auto bitmap = decodePicture(file);
    ASSERT_TRUE(bitmap);
    EXPECT_EQ(bitmap->width, 23);
    EXPECT_EQ(bitmap->height, 41);
}

TEST(Pictures, WhatIsCutOffIsRefused)
{
    for (const PngForm& form : pngForms) {
        const std::string file = makePng(form);
        // The last chunk holds nothing of the picture.
        for (std::size_t length = 0; length + 16 < file.size(); ++length)
            ASSERT_FALSE(decodePicture(file.substr(0, length))) << form.name << ' ' << length;
    }
}

/// A chunk's sum hides most damage from the reader of what is in it: here the sums are right.
TEST(Pictures, DamageIsJudgedAsALibraryJudgesIt)
{
    std::minstd_rand random(13);
    for (const int colors : { PNG_COLOR_TYPE_RGB, PNG_COLOR_TYPE_RGBA }) {
        const std::string file = makePng({ "", colors, 8, false, 41, 23, 0, true });
        const std::size_t start = chunkAt(file, "IDAT") + 8;
        const std::size_t length = chunkAt(file, "IEND") - 4 - start;
        int refused = 0;
        for (int round = 0; round < 1500; ++round) {
            std::string damaged = file;
            for (unsigned flips = 1 + random() % 3; flips > 0; --flips)
                damaged[start + random() % length] ^= static_cast<char>(1 << random() % 8);
            mendSum(damaged, "IDAT");
            const auto bitmap = decodePicture(damaged);
            const auto expected = readWithLibpng(damaged);
            ASSERT_EQ(bitmap.has_value(), expected.has_value()) << round;
            if (bitmap) {
                ASSERT_EQ(bitmap->pixels, expected->pixels) << round;
            }
            refused += !bitmap;
        }
        EXPECT_GT(refused, 1000);
    }
}

TEST(Pictures, NoDamageDoesMoreThanLoseThePicture)
{
    std::vector<std::string> files { encodePng(*Bitmap::make(5, 4)) };
    for (const PngForm& form : pngForms)
        files.push_back(makePng(form));
    for (const std::string& file : files)
        for (std::size_t bit = 0; bit < file.size() * 8; bit += 3) {
            std::string damaged = file;
            damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ 1 << bit % 8);
            if (const auto bitmap = decodePicture(damaged)) {
                EXPECT_EQ(bitmap->pixels.size(),
                    static_cast<std::size_t>(bitmap->width) * static_cast<std::size_t>(bitmap->height));
            }
        }
}

TEST(Pictures, AnAbsurdSizeIsRefusedUnread)
{
    const std::string honest = makePng({ "", PNG_COLOR_TYPE_RGBA, 8 });
    const struct {
        std::uint32_t width;
        std::uint32_t height;
    } sizes[] { { 0, 5 }, { 0x7FFFFFFF, 1 }, { 1000000, 1000000 }, { 40000, 40000 }, { 5000, 5000 } };
    for (const auto& [width, height] : sizes) {
        std::string file = honest;
        file.replace(16, 8, bigEndian(width) + bigEndian(height));
        mendSum(file, "IHDR");
        EXPECT_FALSE(decodePicture(file)) << width << " x " << height;
    }
    EXPECT_FALSE(Bitmap::make(1 << 20, 1 << 20));
    EXPECT_FALSE(Bitmap::make(0, 3));
    EXPECT_TRUE(Bitmap::make(4096, 4096));
}

TEST(Pictures, WhatIsNoPictureIsRefused)
{
    for (const char* const text :
        { "", "GIF89a", "\x89PNG", "\xFF\xD8", "\xFF\xD8\xFF", "<svg/>", "\x89PNG\r\n\x1A\n" })
        EXPECT_FALSE(decodePicture(text)) << text;
}

} // namespace
