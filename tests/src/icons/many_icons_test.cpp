#include "icons/custom_icon.h"
#include "platform/dispatch/clock.h"
#include "src/icons/counted_opens.h"
#include "support/pictures.h"
#include "support/view_test.h"

#include <thread>

namespace appledger {

using namespace platform;
using namespace support;

namespace {

constexpr int applications = 10'000;

std::string identifier(int number)
{
    return "com.example.app" + std::to_string(number);
}

class ManyIcons : public ViewTest {
protected:
    /// As a surface draws one; whether it was the owner's.
    static bool draw(int number)
    {
        const std::string name = identifier(number);
        return customIcon(name, iconKey(name, "gen", 60.0), [](const id& image) {
            return std::optional(image);
        }).has_value();
    }

    const TemporaryDevice device_;
};

TEST_F(ManyIcons, ADrawLooksAtTheDiskOnce)
{
    // Every other application has a picture of the owner's.
    const std::string picture = plainPng(green, 2);
    for (int number = 0; number < applications; number += 2)
        device_.put(iconFile(identifier(number)), picture);
    (void)takeOpensOf("");
    for (int number = 1; number < applications; number += 2)
        EXPECT_FALSE(draw(number));
    EXPECT_EQ(takeOpensOf("AppLedgerIcons"), applications / 2) << "one look for each";
    for (int number = 0; number < applications; number += 2)
        EXPECT_TRUE(draw(number));
    EXPECT_EQ(ALGetImageCache().count(), 1500U);
    (void)takeOpensOf("");

    for (int round = 0; round < 3; ++round)
        for (int number = 1; number < applications; number += 2)
            EXPECT_FALSE(draw(number));
    EXPECT_EQ(takeOpensOf("AppLedgerIcons"), 0);
    // The last ones are kept; what the cache has dropped is read again, without a look whether it is there.
    for (int number = applications - 2; number >= applications - 3000; number -= 2)
        EXPECT_TRUE(draw(number));
    EXPECT_EQ(takeOpensOf("AppLedgerIcons"), 0);
    EXPECT_TRUE(draw(0));
    EXPECT_GT(takeOpensOf("AppLedgerIcons"), 0);
    EXPECT_EQ(ALGetImageCache().count(), 1500U);

    announceIcon(identifier(1));
    EXPECT_FALSE(draw(1));
    EXPECT_FALSE(draw(3));
    EXPECT_EQ(takeOpensOf("AppLedgerIcons"), 1) << "one application is looked for anew";
}

TEST_F(ManyIcons, TheTablesAreReadAndChangedByAnyThread)
{
    constexpr int names = 40;
    for (int number = 0; number < names; number += 2)
        device_.put(iconFile(identifier(number)), plainPng(green, 2));
    std::atomic<bool> stop { false };
    std::atomic<int> wrong { 0 };
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 3; ++thread)
        threads.emplace_back([&] {
            while (!stop)
                for (int number = 0; number < names; ++number)
                    wrong += ALCustomIconPathIfExists(identifier(number)).has_value() != (number % 2 == 0);
        });
    for (int round = 0; round < 300; ++round)
        ALInvalidateCustomIconPresence(round % 3 == 0 ? "" : identifier(round % names));
    stop = true;
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}

TEST_F(ManyIcons, KeysAreTheApplicationTheSurfaceTheNumbersAndTheToken)
{
    EXPECT_EQ(iconKey("a.b", "gen", 60.0), "a.b_gen_60.000000_0");
    EXPECT_EQ(iconKey("a.b", "uiimg", 2), "a.b_uiimg_2_0");
    EXPECT_EQ(iconKey("a.b", "search", 3.0, 40.0), "a.b_search_3.000000_40.000000_0");
    EXPECT_EQ(iconKey("a.b", "notif"), "a.b_notif_0");
    EXPECT_EQ(iconKey("", "gen", 1e300).size(), std::string("_gen__0").size() + 301 + 7);
    announceIcon("a.b");
    EXPECT_EQ(iconKey("a.b", "notif"), "a.b_notif_1");
}

} // namespace

} // namespace appledger
