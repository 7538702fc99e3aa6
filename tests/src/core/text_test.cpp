#include "core/text.h"

#include "core/preference_domain.h"
#include "core/text_table.h"
#include "platform/foundation/locale.h"
#include "support/temporary_device.h"

#include <gtest/gtest.h>
#include <set>
#include <thread>
#include <vector>

using namespace appledger;
using namespace platform;

TEST(Texts, TakeTheStoredLanguageOrElseTheDevicesFirst)
{
    const struct {
        std::string_view stored;
        std::vector<std::string> preferred;
        std::string_view language;
    } cases[] = {
        { "", { "en" }, "en" },
        { "", { "en-GB", "de" }, "en" },
        { "", { "de", "en" }, "zh" },
        { "", { "zh-Hans" }, "zh" },
        { "", { "EN" }, "zh" },
        { "", {}, "zh" },
        { "en", { "de" }, "en" },
        { "zh", { "en" }, "zh" },
        { "en-GB", { "en" }, "en-GB" },
    };
    for (const auto& [stored, preferred, language] : cases)
        EXPECT_EQ(chooseLanguage(stored, preferred), language)
            << stored << ' ' << (preferred.empty() ? "" : preferred.front());
}

TEST(Texts, HoldEachKeyOnceWithItsOwnWords)
{
    std::set<std::string_view> keys;
    for (const auto& [key, english] : textTable()) {
        EXPECT_TRUE(keys.insert(key).second) << key;
        EXPECT_EQ(english, key);
        EXPECT_EQ(textIn("en", key), key);
    }
    EXPECT_EQ(keys.size(), 237U);
    for (const char* const key : { "Badge", "Enter Brightness (0.0~1.0)\n-1 to Disable", "Suspend",
             "Mismatch.\nPurchaser: %@\nLogged in: %@", "Activity Types (%td)", "Indicator Color" })
        EXPECT_TRUE(keys.contains(key)) << key;
}

TEST(Texts, ComeFromTheTableOnlyInALanguageThatItHas)
{
    const std::string badge = "Badge";
    const std::string unknown = "Enter Password";
    EXPECT_EQ(textIn("en", badge), badge);
    EXPECT_NE(textIn("en", badge).data(), badge.data()) << "the caller's characters, not the table's";
    for (const std::string_view text : { std::string_view(badge), std::string_view(unknown), std::string_view() })
        for (const std::string_view language : { "zh", "de", "en-GB", "" })
            EXPECT_EQ(textIn(language, text).data(), text.data()) << language << ' ' << text;
    EXPECT_EQ(textIn("en", unknown).data(), unknown.data());
}

TEST(Texts, KeepTheLanguageThatTheFirstTextFound)
{
    const support::TemporaryDevice device;
    setPreferredLanguages({ "en-US" });
    EXPECT_EQ(ALLoc(""), ""); // decides nothing
    device.writeDomain({ { "ALLanguage", string("de") } });
    EXPECT_EQ(ALLoc("Badge"), "Badge");
    device.writeDomain({ { "ALLanguage", string("en") } });
    EXPECT_EQ(textLanguage(), "de");
}

TEST(Texts, FollowTheDeviceWhenNoLanguageIsStored)
{
    const support::TemporaryDevice device;
    device.writeDomain({ { "ALLanguage", emptyArray() } });
    setPreferredLanguages({ "en-US" });
    EXPECT_EQ(textLanguage(), "en");
}

TEST(Texts, AreDecidedOnceAmongThreads)
{
    const support::TemporaryDevice device;
    std::vector<std::thread> threads;
    std::vector<std::string> texts(8);
    for (std::string& text : texts)
        threads.emplace_back([&text] { text = ALLoc("Clear Cache"); });
    for (std::thread& thread : threads)
        thread.join();
    for (const std::string& text : texts)
        EXPECT_EQ(text, "Clear Cache");
}
