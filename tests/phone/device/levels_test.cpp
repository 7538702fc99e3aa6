#include "phone/device/levels.h"
#include "phone/system/journal.h"
#include "platform/dispatch/run_loop.h"
#include "support/temporary_device.h"

#include <cmath>
#include <limits>

namespace phone {

namespace {

using namespace platform;

constexpr std::string_view file = "/var/db/hardware_levels.plist";
constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

std::string levelsNow()
{
    std::string text;
    for (const HardwareLevel level : { HardwareLevel::MediaVolume, HardwareLevel::Brightness }) {
        const double value = hardwareLevel(level);
        text += (std::signbit(value) ? "-" : "+") + levelText(std::fabs(value)) + " ";
    }
    return text;
}

using Row = std::pair<double, std::string>;

/// The levels are read once in a process.
class StoredLevel : public testing::TestWithParam<Row> { };

TEST_P(StoredLevel, IsFiniteAndWithinItsBounds)
{
    const auto [stored, read] = GetParam();
    const support::TemporaryDevice device;
    device.write(file, dictionary({ { "brightness", real(stored) }, { "media volume", real(0.25) } }),
        PropertyListFormat::Binary);
    EXPECT_EQ(levelsNow(), "+0.25 " + read + " ");
}

INSTANTIATE_TEST_SUITE_P(Levels, StoredLevel,
    testing::Values(Row(0.75, "+0.75"), Row(noNumber, "+0.50"), Row(infinite, "+1.00"), Row(-infinite, "+0.00"),
        Row(-0.0, "+0.00"), Row(1e300, "+1.00"), Row(-3.0, "+0.00")));

TEST(Levels, AreHeldWithinTheirBoundsAndKept)
{
    const support::TemporaryDevice device;
    device.write(file, dictionary({ { "brightness", string("bright") }, { "media volume", array({ "x" }) } }));
    EXPECT_EQ(levelsNow(), "+0.50 +0.50 ");
    setHardwareLevel(HardwareLevel::Brightness, 7);
    setHardwareLevel(HardwareLevel::MediaVolume, -0.0);
    EXPECT_EQ(levelsNow(), "+0.00 +1.00 ");
    setHardwareLevel(HardwareLevel::Brightness, noNumber);
    EXPECT_EQ(levelsNow(), "+0.00 +1.00 ");
    runUntilIdle();
    EXPECT_EQ(asDouble(pairsOf(dictionaryWithContentsOfFile(file))["brightness"]), 1.0);
    EXPECT_EQ(unkeptLevels(), "");
}

TEST(Levels, ThatCantBeKeptAreSaidUntilTheyAre)
{
    const support::TemporaryDevice device;
    std::filesystem::create_directories(device.at("/var"));
    std::ofstream(device.at("/var/db")) << "in the way";
    takeJournal();
    setHardwareLevel(HardwareLevel::Brightness, 0.3);
    runUntilIdle();
    EXPECT_NE(unkeptLevels(), "");
    EXPECT_EQ(journalText(takeJournal()), "note " + unkeptLevels());
    std::filesystem::remove(device.at("/var/db"));
    setHardwareLevel(HardwareLevel::Brightness, 0.3);
    runUntilIdle();
    EXPECT_EQ(unkeptLevels(), "");
    EXPECT_EQ(asDouble(pairsOf(dictionaryWithContentsOfFile(file))["brightness"]), 0.3);
}

} // namespace
} // namespace phone
