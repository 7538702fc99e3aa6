#include "platform/graphics/picture_file.h"

#include "platform/foundation/device_root.h"
#include "platform/foundation/values.h"
#include "platform/graphics/png_chunks.h"
#include "platform/graphics/sample_files.h"
#include "support/view_test.h"

using namespace platform;
using namespace samples;
using support::classObject;

namespace {

Bitmap plain(int width, int height, std::uint32_t color)
{
    Bitmap bitmap = *Bitmap::make(width, height);
    std::ranges::fill(bitmap.pixels, color);
    return bitmap;
}

constexpr std::uint32_t red = 0xFFFF0000;
constexpr std::uint32_t blue = 0xFF0000FF;

/// A red picture whose small copy is blue, so that it shows which of the two was read.
std::string redWithBlueCopy(int width = 600, int height = 600, int copyWidth = 234, int copyHeight = 234)
{
    std::string file = encodePng(plain(width, height, red));
    const std::size_t start = chunkAt(file, std::string(png::smallCopyName));
    const std::size_t end = start + png::chunkFrame + png::numberAt(file, start);
    return file.replace(
        start, end - start, chunk(std::string(png::smallCopyName), encodePng(plain(copyWidth, copyHeight, blue))));
}

class PictureFiles : public support::ViewTest {
protected:
    static id load() { return send<"imageWithContentsOfFile:">(classObject<"UIImage">(), string("/icon.png")); }

    /// What is seen of the image drawn that large: "red", "blue", "nil".
    static std::string drawn(const id& image, double points, double scale)
    {
        if (!image)
            return "nil";
        UIGraphicsBeginImageContextWithOptions({ points, points }, false, scale);
        send<"drawInRect:", void>(image, CGRect { {}, { points, points } });
        const id picture = UIGraphicsGetImageFromCurrentImageContext();
        UIGraphicsEndImageContext();
        const Color color = decodePicture(asData(UIImagePNGRepresentation(picture))->view())->colorAt(0, 0);
        return color == Color { 1, 0, 0, 1 } ? "red" : color == Color { 0, 0, 1, 1 } ? "blue" : "another colour";
    }

    const DeviceRoot device_;
};

TEST_F(PictureFiles, AreReadAsFarAsTheyAreShown)
{
    device_.put("/icon.png", redWithBlueCopy());
    const id image = load();
    EXPECT_EQ((send<"size", CGSize>(image)), (CGSize { 600, 600 }));
    EXPECT_EQ(drawn(image, 60, 3), "blue");
    EXPECT_EQ(drawn(image, 78, 3), "blue");
    EXPECT_EQ(drawn(image, 79, 3), "red");
    EXPECT_EQ(decodePicture(device_.get("/icon.png"))->colorAt(0, 0), (Color { 1, 0, 0, 1 }));
    EXPECT_EQ(decodePicture(asData(UIImagePNGRepresentation(load()))->view())->colorAt(0, 0), (Color { 1, 0, 0, 1 }));
}

TEST_F(PictureFiles, StayWhatTheyWereWhenOthersTakeTheirPlace)
{
    device_.put("/icon.png", redWithBlueCopy());
    const id image = load();
    EXPECT_EQ(writeFileAtomically("/icon.png", "another"), 0);
    EXPECT_EQ(drawn(image, 60, 3), "blue");
    EXPECT_EQ(drawn(image, 300, 1), "red");
    EXPECT_EQ(load(), nil);
}

TEST_F(PictureFiles, AreReadWholeWithoutACopyThatFits)
{
    std::string damagedCopy = redWithBlueCopy();
    damagedCopy[chunkAt(damagedCopy, std::string(png::smallCopyName)) + 60] ^= 1;
    std::string longCopy = redWithBlueCopy();
    longCopy.replace(chunkAt(longCopy, std::string(png::smallCopyName)), 4, bigEndian(0x7FFFFFFF));
    const struct {
        const char* name;
        std::string file;
        const char* color;
    } cases[] {
        { "none", encodePng(plain(200, 200, red)), "red" },
        { "of another shape", redWithBlueCopy(600, 600, 234, 235), "red" },
        { "of its own size", redWithBlueCopy(600, 600, 600, 600), "red" },
        { "damaged", damagedCopy, "red" },
        { "without an end", longCopy, "nil" },
        { "with something behind the picture", redWithBlueCopy() + "more", "red" },
    };
    for (const auto& [name, file, color] : cases) {
        device_.put("/icon.png", file);
        EXPECT_EQ(drawn(load(), 60, 3), color) << name;
    }
}

TEST_F(PictureFiles, AreRefusedWhenTheyAreCutOff)
{
    const std::string file = redWithBlueCopy();
    for (std::size_t length = 0; length < file.size(); length += length + 20 < file.size() ? 151 : 1) {
        device_.put("/icon.png", file.substr(0, length));
        const std::string seen = drawn(load(), 60, 3);
        // Without the last chunk, which holds nothing of it, the picture is whole.
        ASSERT_TRUE(seen == "nil" || (length + 16 >= file.size() && seen == "red")) << length << ' ' << seen;
    }
}

TEST_F(PictureFiles, ShowTheirCopyWhenTheRestIsDamaged)
{
    std::string file = redWithBlueCopy();
    file[file.rfind("IDAT") + 20] ^= 1;
    device_.put("/icon.png", file);
    const id image = load();
    EXPECT_EQ(drawn(image, 60, 3), "blue");
    EXPECT_EQ(drawn(image, 300, 1), "blue");
    EXPECT_EQ(UIImagePNGRepresentation(image), nil);
}

TEST_F(PictureFiles, AreReadAtOnceWhenManyAreOpen)
{
    device_.put("/icon.png", redWithBlueCopy());
    std::vector<id> images;
    for (int index = 0; index < 40; ++index)
        images.push_back(load());
    EXPECT_EQ(drawn(images.front(), 60, 3), "blue");
    EXPECT_EQ(drawn(images.back(), 60, 3), "red");
    images.clear();
    EXPECT_EQ(drawn(load(), 60, 3), "blue");
}

} // namespace
