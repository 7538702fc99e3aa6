#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>

namespace platform {
namespace {

constexpr auto largest = std::numeric_limits<std::int64_t>::max();
constexpr auto smallest = std::numeric_limits<std::int64_t>::min();
constexpr double infinite = std::numeric_limits<double>::infinity();

TEST(Strings, BytesThatAreNotUtf8AreReplacedOneByOne)
{
    const std::pair<std::string_view, std::string_view> cases[] {
        { "plain", "plain" },
        { "ä€😀", "ä€😀" },
        { "a\x80z", "a\uFFFDz" },
        { "\xC0\xAF", "\uFFFD\uFFFD" }, // overlong
        { "\xE0\x80\x80", "\uFFFD\uFFFD\uFFFD" },
        { "\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD" }, // a surrogate
        { "\xF4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD" }, // past U+10FFFF
        { "\xF0\x9F\x98", "\uFFFD\uFFFD\uFFFD" }, // truncated
        { "\xE2\x82z", "\uFFFD\uFFFDz" },
        { std::string_view("a\0b", 3), std::string_view("a\0b", 3) },
    };
    for (const auto& [bytes, text] : cases)
        EXPECT_EQ(asString(string(bytes))->view(), text) << bytes;
}

TEST(Strings, LengthCountsUtf16Units)
{
    EXPECT_EQ((send<"length", NSUInteger>(string("aä€😀"))), 5U);
}

TEST(Strings, ReadNumbersAsFarAsTheyGo)
{
    struct Case {
        std::string_view text;
        std::int64_t integer;
        double real;
    };
    const Case cases[] {
        { "", 0, 0 },
        { "12", 12, 12 },
        { " \t-7.5 apples", -7, -7.5 },
        { "+3", 3, 3 },
        { "+-3", 0, 0 },
        { "--3", 0, 0 },
        { "x1", 0, 0 },
        { "infinity", 0, 0 },
        { "nan", 0, 0 },
        { "1e3", 1, 1000 },
        { ".5", 0, 0.5 },
        { "99999999999999999999", largest, 1e20 },
        { "-99999999999999999999", smallest, -1e20 },
        { "1e999", 1, infinite },
        { "-1e999", -1, -infinite },
        { "1e-999", 1, 0 },
    };
    for (const auto& [text, integer, real] : cases) {
        EXPECT_EQ((send<"integerValue", NSInteger>(string(text))), integer) << text;
        EXPECT_EQ((send<"doubleValue", double>(string(text))), real) << text;
    }
    EXPECT_EQ((send<"intValue", int>(string("3000000000"))), std::numeric_limits<int>::max());
}

TEST(Values, BoolValueOfAnything)
{
    const std::pair<id, bool> cases[] {
        { nil, false },
        { array({ "YES" }), false },
        { boolean(true), true },
        { number(0), false },
        { number(-2), true },
        { real(0.25), true },
        { string("YES"), true },
        { string("true"), true },
        { string("  -007"), true },
        { string("+0"), false },
        { string("no"), false },
        { string("on"), false },
        { string(""), false },
        { string("++1"), false },
    };
    for (const auto& [object, expected] : cases)
        EXPECT_EQ(boolValue(object), expected) << describe(object);
}

TEST(Numbers, AreEqualByExactValueAndHashAlike)
{
    const id equals[][2] {
        { boolean(true), number(1) },
        { number(2), real(2.0) },
        { real(-0.0), number(0) },
        { number(smallest), real(-0x1p63) },
        { real(std::nan("1")), real(std::nan("2")) },
    };
    for (const auto& [left, right] : equals) {
        EXPECT_TRUE(isEqual(left, right)) << describe(left);
        EXPECT_TRUE(isEqual(right, left)) << describe(left);
        EXPECT_EQ((send<"hash", NSUInteger>(left)), (send<"hash", NSUInteger>(right))) << describe(left);
    }
    const id differents[][2] {
        { number(largest), real(0x1p63) },
        { number((std::int64_t { 1 } << 53) + 1), real(0x1p53) },
        { number(1), real(1.5) },
        { number(1), string("1") },
        { real(infinite), real(-infinite) },
    };
    for (const auto& [left, right] : differents) {
        EXPECT_FALSE(isEqual(left, right)) << describe(left);
        EXPECT_FALSE(isEqual(right, left)) << describe(left);
    }
}

TEST(Numbers, ConvertWithoutLeavingTheirRange)
{
    EXPECT_EQ(asInteger(real(-1.9)), -1);
    EXPECT_EQ(asInteger(real(1e300)), largest);
    EXPECT_EQ(asInteger(real(-infinite)), smallest);
    EXPECT_EQ(asInteger(real(std::nan(""))), 0);
    EXPECT_EQ(asDouble(boolean(true)), 1.0);
    EXPECT_EQ(asInteger(string("1")), std::nullopt);
    EXPECT_EQ(numberKind(boolean(true)), NumberKind::Boolean);
    EXPECT_EQ(numberKind(nil), std::nullopt);
}

TEST(Numbers, HaveAShortText)
{
    const std::pair<id, std::string_view> cases[] {
        { boolean(true), "1" },
        { number(smallest), "-9223372036854775808" },
        { real(0.1), "0.1" },
        { real(2), "2" },
        { real(1e300), "1e+300" },
    };
    for (const auto& [object, text] : cases)
        EXPECT_EQ(asString(send<"stringValue">(object))->view(), text);
}

} // namespace
} // namespace platform
