#include "platform/foundation/text_property_list.h"
#include "platform/foundation/values.h"

#include <gtest/gtest.h>
#include <random>

namespace platform::detail {

TEST(TextPropertyList, ReadsTheOldForm)
{
    const std::pair<const char*, const char*> cases[] {
        { "word", R"("word")" },
        { " /* a */ com.example-1/$x:y_z // end", R"("com.example-1/$x:y_z")" },
        { R"("a \"b\" \n\t\\ \101 \U00e9")", "\"a \\\"b\\\" \n\t\\\\ A \xC3\xA9\"" },
        { "'it''s'", "" },
        { "'single \" quotes'", R"("single \" quotes")" },
        { "()", "[]" },
        { "( a, (b, c) , \"d\" , )", R"(["a", ["b", "c"], "d"])" },
        { "{}", "{}" },
        { "{ a = b; \"c d\" = { e = ( f ); }; }", R"({"a": "b", "c d": {"e": ["f"]}})" },
        // What isn't one.
        { "", "" },
        { "a b", "" },
        { "( a b )", "" },
        { "( , )", "" },
        { "{ a = b }", "" },
        { "{ a; }", "" },
        { "{ a = ; }", "" },
        { "\"no end", "" },
        { "\"no end\\", "" },
        { "/* no end", "" },
        { "( a", "" },
        { "<0f b", "" },
        { "<0>", "" },
        { "<0g>", "" },
        { "#", "" },
    };
    for (const auto& [text, expected] : cases) {
        const std::optional<id> value = readTextPropertyList(text);
        EXPECT_EQ(value ? describe(*value) : "", expected) << text;
    }
    const std::optional<id> bytes = readTextPropertyList("< 0fBD 7 7 >");
    ASSERT_TRUE(bytes);
    EXPECT_EQ(asData(*bytes)->text(), "\x0F\xBD\x77");
}

TEST(TextPropertyList, BoundsItsDepthAndEndsOnAnyText)
{
    EXPECT_TRUE(readTextPropertyList(std::string(128, '(') + std::string(128, ')')));
    EXPECT_FALSE(readTextPropertyList(std::string(1'000'000, '(')));
    std::mt19937 random(20262);
    constexpr std::string_view characters = "{}()<>=;,\"'\\/* ab01U\n";
    for (int round = 0; round < 20'000; ++round) {
        std::string text;
        for (unsigned length = random() % 24; length > 0; --length)
            text.push_back(characters[random() % characters.size()]);
        readTextPropertyList(text);
    }
}

} // namespace platform::detail
