#include "state/running_dot.h"

#include <gtest/gtest.h>

namespace appledger {

namespace {

using platform::CGPoint;

TEST(RunningDot, StandsUnderTheImageInTheDockAndBesideTheNameElsewhere)
{
    EXPECT_EQ(dotCenterInDock({ 60, 80 }, ImageBox { { 30, 31 }, { 60, 62 } }), (CGPoint { 30, 71 }));
    EXPECT_EQ(dotCenterInDock({ 60, 80 }, std::nullopt), (CGPoint { 30, 86 }));

    const LabelBox label { .center = { 30, 70 }, .width = 50 };
    EXPECT_EQ(dotCenterBesideLabel({ 60, 80 }, label, 20), (CGPoint { 47, 70 }));
    EXPECT_EQ(dotCenterBesideLabel({ 60, 80 }, label, 90), (CGPoint { 62, 70 })) << "the label cuts the name off";
    EXPECT_EQ(dotCenterBesideLabel({ 60, 80 }, { .center = { 30, 70 } }, 90), (CGPoint { 67, 70 }))
        << "a label without a width counts as wide as its icon view";
}

TEST(RunningDot, FadesWithItsLabel)
{
    const struct {
        LabelBox label;
        std::optional<platform::CGFloat> strength;
    } labels[] = {
        { { .alpha = 0.04 }, std::nullopt },
        { { .alpha = 0.05 }, 0.05 },
        { { .alpha = 0.5 }, 0.5 },
        { { .alpha = 1, .isHidden = true }, std::nullopt },
    };
    for (const auto& row : labels)
        EXPECT_EQ(dotStrength(row.label), row.strength) << row.label.alpha;

    const struct {
        double strength;
        double present;
        DotAppearance appearance;
    } cases[] = {
        { 0.94, 0, DotAppearance::FollowsLabel },
        { 0.95, 0.09, DotAppearance::FadesIn },
        { 0.95, 0.1, DotAppearance::Stands },
        { 1, 0, DotAppearance::FadesIn },
        { 1, 1, DotAppearance::Stands },
    };
    for (const auto& row : cases)
        EXPECT_EQ(dotAppearance(row.strength, row.present), row.appearance) << row.strength << ' ' << row.present;
}

TEST(RunningDot, KnowsTheDockInAnyCase)
{
    EXPECT_TRUE(isDockLocation("SBIconLocationDock"));
    EXPECT_TRUE(isDockLocation("the floating dOcK"));
    EXPECT_FALSE(isDockLocation("SBIconLocationRoot"));
    EXPECT_FALSE(isDockLocation("Doc"));
}

} // namespace

} // namespace appledger
