#include "platform/foundation/bundle.h"
#include "platform/foundation/device_root.h"
#include "platform/foundation/values.h"
#include "platform/graphics/bitmap.h"
#include "support/view_test.h"

using namespace platform;
using support::classObject;

namespace {

class NamedImage : public support::ViewTest {
protected:
    void put(const char* name, int side) const
    {
        device_.put("/r.bundle/" + std::string(name), encodePng(*Bitmap::make(side, side)));
    }

    /// Side in points and scale, or "nil".
    std::string image(const char* name, double screen) const
    {
        setScreen({ 390, 844 }, screen);
        const id found
            = send<"imageNamed:inBundle:">(classObject<"UIImage">(), string(name), NSBundle::withPath("/r.bundle"));
        if (!found)
            return "nil";
        return std::to_string(static_cast<int>(send<"size", CGSize>(found).width)) + "@"
            + std::to_string(static_cast<int>(send<"scale", double>(found)));
    }

    const DeviceRoot device_;
};

TEST_F(NamedImage, IsTheOneForTheScreen)
{
    for (const char* const name : { "all", "few", "large" }) {
        if (std::string_view(name) == "all")
            put("all.png", 24);
        if (std::string_view(name) != "large")
            put((std::string(name) + "@2x.png").c_str(), 48);
        if (std::string_view(name) != "few")
            put((std::string(name) + "@3x.png").c_str(), 72);
    }
    put("broken@3x.png", 72);
    device_.put("/r.bundle/broken@2x.png", "no picture");
    device_.put("/r.bundle/text.png", "no picture");
    device_.put("/outside.png", encodePng(*Bitmap::make(4, 4)));
    const struct {
        const char* name;
        double screen;
        const char* image;
    } cases[] = {
        { "all", 1, "24@1" },
        { "all", 2, "24@2" },
        { "all", 3, "24@3" },
        { "few", 3, "24@2" },
        { "few", 1, "24@2" },
        { "large", 2, "24@3" },
        { "broken", 2, "24@3" },
        { "text", 2, "nil" },
        { "none", 2, "nil" },
        { "", 2, "nil" },
        { "../outside", 2, "nil" },
    };
    for (const auto& [name, screen, expected] : cases)
        EXPECT_EQ(image(name, screen), expected) << name << " on " << screen;
    EXPECT_EQ(send<"imageNamed:inBundle:">(classObject<"UIImage">(), string("all"), nil), nil);
    EXPECT_EQ(send<"imageNamed:inBundle:">(classObject<"UIImage">(), nil, NSBundle::withPath("/r.bundle")), nil);
}

} // namespace
