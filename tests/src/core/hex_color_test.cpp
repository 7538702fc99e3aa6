#include "core/hex_color.h"

#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"
#include "platform/screen/framework.h"

#include <gtest/gtest.h>

namespace appledger {

using namespace platform;

namespace {

TEST(HexColor, IsMadeOfSixOrEightHexadecimalDigits)
{
    const HexColor black { 0, 0, 0, 1 };
    const struct {
        const char* text;
        std::optional<HexColor> color;
    } cases[] = {
        { "#AF52DE", HexColor { 175 / 255.0, 82 / 255.0, 222 / 255.0, 1 } },
        { "ff8000", HexColor { 1, 128 / 255.0, 0, 1 } },
        { "#FF800080", HexColor { 1, 128 / 255.0, 0, 128 / 255.0 } },
        { "##0000#FF", HexColor { 0, 0, 1, 1 } },
        { "zzzzzz", black },
        { "12zzzz", HexColor { 0, 0, 18 / 255.0, 1 } },
        { "0x00FF", HexColor { 0, 0, 1, 1 } },
        { "   0FF", HexColor { 0, 0, 1, 1 } },
        { "-00001", black },
        { "hexdigit", HexColor { 0, 0, 0, 0 } },
        { "#F0F", std::nullopt },
        { "#1234567", std::nullopt },
        { "", std::nullopt },
        { "#", std::nullopt },
    };
    for (const auto& row : cases)
        EXPECT_EQ(parseHexColor(row.text), row.color) << row.text;
}

/// A colour of a space without red, green and blue.
class StrangeColor : public NSObject {
public:
    static const ClassDefinition definition;
    NSInteger colorSpaceModel = 0;
    id components;

    bool getParts(double*, double*, double*, double*) const { return false; }
    id drawn() { return this; }
};

constexpr MethodDefinition strangeMethods[] {
    method<"CGColor", &StrangeColor::drawn>(),
    getter<"colorSpaceModel", &StrangeColor::colorSpaceModel>(),
    getter<"components", &StrangeColor::components>(),
    method<"getRed:green:blue:alpha:", &StrangeColor::getParts>(),
};

const ClassDefinition StrangeColor::definition { .name = "StrangeColor", .methods = strangeMethods };

id strange(NSInteger model, std::vector<id> components)
{
    const Ref<StrangeColor> color = make<StrangeColor>();
    color->colorSpaceModel = model;
    color->components = array(std::move(components));
    return color;
}

TEST(HexColor, IsTheTextOfAColour)
{
    for (const ClassDefinition* definition : uiKitFrameworkClasses())
        registerClass(*definition);
    const id colors(classNamed<"UIColor">());
    const auto color = [&colors](double red, double green, double blue, double alpha) {
        return send<"colorWithRed:green:blue:alpha:">(colors, red, green, blue, alpha);
    };
    const std::pair<id, const char*> cases[] {
        { color(175 / 255.0, 82 / 255.0, 222 / 255.0, 1), "#AF52DE" },
        { color(1, 0.5, 0, 0.5), "#FF7F007F" },
        { color(0.999, 0, 0, 1), "#FE0000" },
        { send<"whiteColor">(colors), "#FFFFFF" },
        { strange(0, { real(0.5), real(1) }), "#7F7F7F" },
        { strange(0, { real(1), real(0) }), "#FFFFFF00" },
        { strange(0, {}), "#AF52DE" },
        { strange(2, { real(0.5), real(1) }), "#AF52DE" },
        { string("no colour"), "#AF52DE" },
        { nil, "#AF52DE" },
    };
    for (const auto& [value, text] : cases)
        EXPECT_EQ(describe(hexOfColor(value)), describe(string(text)));
    for (const char* const text : { "#AF52DE", "#01020380" })
        EXPECT_EQ(describe(hexOfColor(colorFromHex(text))), describe(string(text)));
    EXPECT_TRUE(isEqual(colorFromHex("#F0F"), send<"systemPurpleColor">(colors)));
}

} // namespace

} // namespace appledger
