#include "core/appearance.h"

#include "core/settings.h"
#include "platform/darwin/system.h"
#include "platform/foundation/locale.h"
#include "support/temporary_device.h"
#include "support/view_test.h"

namespace appledger {

using namespace platform;
using support::classObject;

namespace {

class Appearance : public support::ViewTest {
protected:
    static void on(const char* version)
    {
        setProcessFacts({ "com.apple.springboard", "SpringBoard", parseSystemVersion(version).value() });
    }

    static std::string hex(const id& color) { return describe(send<"hexStringFromColor:">(settings(), color)); }

    static id settings()
    {
        registerClass(ALSettings::definition);
        return classObject<"ALSettings">();
    }

    const support::TemporaryDevice device_;
};

TEST_F(Appearance, IsDarkByTheStyleAndTheSystem)
{
    const struct {
        const char* version;
        NSInteger style;
        InterfaceStyle system;
        bool isDark;
        NSInteger blur;
    } cases[] = {
        { "16.0", 0, InterfaceStyle::Light, true, 2 },
        { "16.0", 1, InterfaceStyle::Dark, false, 13 },
        { "16.0", 2, InterfaceStyle::Dark, true, 2 },
        { "16.0", 2, InterfaceStyle::Light, false, 13 },
        { "16.0", 7, InterfaceStyle::Dark, false, 13 },
        { "12.4", 0, InterfaceStyle::Light, true, 2 },
        { "12.4", 1, InterfaceStyle::Dark, false, 1 },
        { "12.4", 2, InterfaceStyle::Dark, false, 1 },
    };
    ALAppearance& appearance = ALAppearance::sharedInstance();
    for (const auto& [version, style, system, isDark, blur] : cases) {
        SCOPED_TRACE(std::string(version) + " " + std::to_string(style));
        on(version);
        setScreenStyle(system);
        appearance.currentStyle = style;
        EXPECT_EQ(appearance.isDarkStyle(), isDark);
        EXPECT_EQ(appearance.blurEffectStyle(), blur);
        EXPECT_EQ(hex(appearance.primaryTextColor()), isDark ? "\"#FFFFFF\"" : "\"#000000\"");
    }
}

TEST_F(Appearance, FollowsTheSettings)
{
    on("16.0");
    ALAppearance& appearance = ALAppearance::sharedInstance();
    EXPECT_EQ(appearance.currentStyle, 0);
    send<"setInteger:forKey:", void>(settings(), NSInteger { 1 }, string("kAppearance"));
    EXPECT_EQ(appearance.currentStyle, 1);
    appearance.currentStyle = 0;
    send<"setObject:forKey:", void>(settings(), boolean(true), string("HidePanelSeparatorsEnabled"));
    EXPECT_EQ(appearance.currentStyle, 1) << "one notification for both";
    EXPECT_EQ(hex(appearance.tableSeparatorColor()), "\"#00000000\"");
    send<"setObject:forKey:", void>(settings(), boolean(false), string("HidePanelSeparatorsEnabled"));
    EXPECT_NE(hex(appearance.tableSeparatorColor()), "\"#00000000\"");
}

TEST_F(Appearance, CanBeReadOnItsGround)
{
    on("16.0");
    ALAppearance& appearance = ALAppearance::sharedInstance();
    for (const NSInteger style : { 0, 1 }) {
        appearance.currentStyle = style;
        const std::string ground = style == 0 ? "\"#FFFFFF" : "\"#000000";
        for (const id& color : { appearance.secondaryTextColor(), appearance.actionsBarIconTintColor(),
                 appearance.tableHeaderTextColor(), appearance.tableSeparatorColor() })
            EXPECT_TRUE(hex(color).starts_with(ground)) << hex(color);
    }
    const id background = send<"backgroundColor">(appearance.tableCellSelectedBackgroundView());
    EXPECT_TRUE(hex(background).starts_with("\"#000000"));
}

TEST_F(Appearance, MakesTheWheelOfTheSystemsVersion)
{
    ALAppearance& appearance = ALAppearance::sharedInstance();
    for (const auto& [version, style] : { std::pair("16.0", NSInteger { 100 }), { "12.4", NSInteger { 1 } } }) {
        on(version);
        const id wheel = appearance.activityIndicatorView();
        EXPECT_EQ((send<"activityIndicatorViewStyle", NSInteger>(wheel)), style);
        EXPECT_EQ(hex(send<"color">(wheel)), hex(appearance.secondaryTextColor()));
    }
}

/// The pictures' names that were asked for.
std::string asked;

id imageNamed(const id&, SEL, const id& name)
{
    asked += describe(name);
    return nil;
}

constexpr MethodDefinition helperMethods[] { classMethod<"imageNamed:", &imageNamed>() };
const ClassDefinition Helper_class { .name = "ALHelper", .methods = helperMethods };

TEST_F(Appearance, PointsTheChevronAlongTheLine)
{
    registerClass(Helper_class);
    for (const char* const language : { "en-GB", "ar-EG", "he", "de" }) {
        setPreferredLanguages({ language });
        EXPECT_TRUE(ALAppearance::sharedInstance().tableCellChevronImageView());
    }
    EXPECT_EQ(asked, R"("ChevronRight""ChevronLeft""ChevronLeft""ChevronRight")");
}

/// As much of a table's cell as is dressed.
class Cell : public NSObject {
public:
    static const ClassDefinition definition;
    id backgroundColor;
    id textLabel = send<"new">(classObject<"UILabel">());
    id detailTextLabel = send<"new">(classObject<"UILabel">());
    id selectedBackgroundView;
};

constexpr MethodDefinition cellMethods[] {
    getter<"detailTextLabel", &Cell::detailTextLabel>(),
    setter<"setBackgroundColor:", &Cell::backgroundColor>(),
    setter<"setSelectedBackgroundView:", &Cell::selectedBackgroundView>(),
    getter<"textLabel", &Cell::textLabel>(),
};
const ClassDefinition Cell::definition { .name = "Cell", .methods = cellMethods };

TEST_F(Appearance, DressesACell)
{
    on("16.0");
    ALAppearance& appearance = ALAppearance::sharedInstance();
    const Ref<Cell> cell = make<Cell>();
    ALAppearance::applyStylesToCell(cell);
    EXPECT_EQ(hex(cell->backgroundColor), "\"#00000000\"");
    EXPECT_EQ(hex(send<"textColor">(cell->textLabel)), hex(appearance.primaryTextColor()));
    EXPECT_EQ(hex(send<"textColor">(cell->detailTextLabel)), hex(appearance.secondaryTextColor()));
    EXPECT_TRUE(cell->selectedBackgroundView);
    ALAppearance::applyStylesToCell(nil);
}

} // namespace

} // namespace appledger
