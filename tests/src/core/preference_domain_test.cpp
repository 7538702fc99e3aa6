#include "core/preference_domain.h"

#include "support/golden.h"

#include <gtest/gtest.h>

#include <string>

namespace appledger {

namespace {

std::string_view typeName(PreferenceType type)
{
    constexpr std::string_view names[] = { "identifiers", "numbers", "texts", "flag", "text", "integer", "rows" };
    return names[static_cast<std::size_t>(type)];
}

// The names are an interface to other programs: a change of this file is a change of that interface.
TEST(PreferenceDomain, HasTheseKeys)
{
    std::string text;
    for (const PreferenceKey& key : preferenceKeys()) {
        text.append(key.name).append(key.isPrefix ? "<bundle identifier>  " : "  ").append(typeName(key.type));
        text.append("  default ").append(key.defaultText);
        text.append(key.notification.empty() ? "" : "  on ").append(key.notification).append("\n");
        EXPECT_EQ(preferenceKey(key.name), &key);
    }
    EXPECT_GOLDEN(text, "domain.txt");
}

TEST(PreferenceDomain, FindsTheRowOfAWholeKey)
{
    const struct {
        std::string_view key;
        std::string_view row; ///< "": none
    } cases[] = {
        { "ShouldSimulateSuccess/com.example.app", "ShouldSimulateSuccess/" },
        { "ShouldSimulateSuccess", "ShouldSimulateSuccess/" },
        { "ShouldSimulateSuccessfully", "" },
        { "shouldsimulatesuccess", "" },
        { "ALHiddenApps/com.example.app", "" },
        { "ALHiddenApp", "" },
        { "", "" },
    };
    for (const auto& [key, expected] : cases) {
        const PreferenceKey* const row = preferenceKey(key);
        EXPECT_EQ(row ? row->name : "", expected) << key;
    }
}

} // namespace

} // namespace appledger
