#include "platform/darwin/system.h"

#include <gtest/gtest.h>

using namespace platform;

namespace {

TEST(SystemVersion, IsReadFromOneToThreeNumbersAndNothingElse)
{
    const struct {
        std::string_view text;
        std::string written; ///< empty: it isn't a version
    } cases[] = {
        { "16", "16.0" },
        { "16.0", "16.0" },
        { "16.0.2", "16.0.2" },
        { "14.8.0", "14.8" },
        { "", "" },
        { "16.", "" },
        { ".16", "" },
        { "16..2", "" },
        { "16.0.2.1", "" },
        { "16.0.2.", "" },
        { "-16", "" },
        { "16.-1", "" },
        { "+16", "" },
        { " 16", "" },
        { "16 ", "" },
        { "16b", "" },
        { "99999999999", "" },
    };
    for (const auto& [text, written] : cases) {
        const std::optional<SystemVersion> version = parseSystemVersion(text);
        EXPECT_EQ(version ? version->text() : "", written) << '"' << text << '"';
    }
}

TEST(SystemVersion, IsComparedNumberByNumber)
{
    setProcessFacts({ "com.apple.springboard", "SpringBoard", { 15, 4, 1 } });
    EXPECT_TRUE(isOperatingSystemAtLeastVersion(15, 4, 1));
    EXPECT_TRUE(isOperatingSystemAtLeastVersion(15, 3, 9));
    EXPECT_TRUE(isOperatingSystemAtLeastVersion(9, 9, 9));
    EXPECT_FALSE(isOperatingSystemAtLeastVersion(15, 4, 2));
    EXPECT_FALSE(isOperatingSystemAtLeastVersion(15, 10, 0));
    EXPECT_FALSE(isOperatingSystemAtLeastVersion(16, 0, 0));
}

} // namespace
