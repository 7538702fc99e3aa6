#include "cli/command/output.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fcntl.h>
#include <nlohmann/json.hpp>
#include <unistd.h>

namespace cli {

namespace {

TEST(Output, ShowsWhatATerminalWouldObey)
{
    struct Case {
        std::string text;
        std::string shown; ///< in text of several lines
        std::string line = {}; ///< on one line, where it differs
    };
    const Case cases[] {
        { "plain äöü 😀", "plain äöü 😀" },
        { "\x1B[2J", "\\x1B[2J" },
        { "a\rb\x07\x7F\t", "a\\x0Db\\x07\\x7F\\x09" },
        { std::string("n\0l", 3), "n\\x00l" },
        { "two\nlines", "two\nlines", "two\\x0Alines" },
        { "\xC2\x9B"
          "31m\xC2\x9F\xC2\xA0",
            "\\x9B31m\\x9F\xC2\xA0" },
        { "\xE2\x80\xAE"
          "gpj.\xE2\x81\xA9\xE2\x80\xA6",
            "\\u202Egpj.\\u2069\xE2\x80\xA6" },
        { "\x9B"
          "0m\xC2",
            "\xEF\xBF\xBD"
            "0m\xEF\xBF\xBD" },
    };
    setOutputFormat(OutputFormat::Text);
    for (const auto& [text, shown, line] : cases) {
        EXPECT_EQ(onOneLine(text), line.empty() ? shown : line);
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        say(text, {});
        EXPECT_EQ(refuse(text), ExitStatus::Refused);
        EXPECT_EQ(finishOutput(ExitStatus::Done), ExitStatus::Done);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), shown + "\n");
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "appledger: " + shown + "\n");
    }
}

TEST(Output, AsJsonIsTheSameObjectWithoutAControlCharacter)
{
    const nlohmann::json object { { "name", "\x1B[31m\x7F\xC2\x9B\xE2\x80\xAE\nä" } };
    setOutputFormat(OutputFormat::Json);
    testing::internal::CaptureStdout();
    say("never", object);
    std::fflush(stdout);
    std::string printed = testing::internal::GetCapturedStdout();
    EXPECT_EQ(printed, "{\"name\":\"\\u001b[31m\\u007F\\u009B\\u202E\\nä\",\"ok\":true,\"version\":1}\n");
    EXPECT_EQ(nlohmann::json::parse(printed)["name"], object["name"]);
}

TEST(Output, ShowsValuesWithTheDigitsThatTheyWereGiven)
{
    const std::pair<nlohmann::json, const char*> cases[] { { 0.8F, "0.8" }, { 1.0F / 3, "0.33333334" }, { 0.1, "0.1" },
        { 1.0 / 3, "0.3333333333333333" }, { 1e300, "1e+300" }, { 0.0, "0.0" }, { 3, "3" }, { "0.8", "\"0.8\"" },
        { nullptr, "null" } };
    for (const auto& [value, shown] : cases)
        EXPECT_EQ(valueText(value), shown);
}

TEST(Output, ThatIsLostIsARefusal)
{
    const int former = ::dup(STDOUT_FILENO);
    const int full = ::open("/dev/full", O_WRONLY);
    std::fflush(stdout);
    ASSERT_EQ(::dup2(full, STDOUT_FILENO), STDOUT_FILENO);
    testing::internal::CaptureStderr();
    say("short, so that it stands in the buffer", {});
    const ExitStatus status = finishOutput(ExitStatus::Done);
    ::dup2(former, STDOUT_FILENO);
    std::clearerr(stdout);
    EXPECT_EQ(status, ExitStatus::Refused);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "appledger: standard output can't be written\n");
}

} // namespace
} // namespace cli
