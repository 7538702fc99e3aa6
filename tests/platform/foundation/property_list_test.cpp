#include "platform/foundation/property_list.h"

#include "platform/foundation/device_root.h"
#include "platform/foundation/url.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <limits>
#include <random>

namespace platform {
namespace {

constexpr PropertyListFormat bothFormats[] { PropertyListFormat::Binary, PropertyListFormat::Xml };

/// describe() tells kinds apart, which equality doesn't, but not data and dates.
std::string detailed(const id& value)
{
    if (const auto seconds = asDate(value))
        return "date " + std::to_string(*seconds);
    if (const auto bytes = asData(value))
        return "data " + bytes->text();
    if (numberKind(value) == NumberKind::Real)
        return "real " + describe(value);
    return describe(value);
}

id nested(int depth)
{
    id value = number(1);
    for (int level = 0; level < depth; ++level)
        value = level % 2 == 0 ? array(std::vector<id> { value }) : dictionary({ { "k", value } });
    return value;
}

/// A value of any shape, with the texts and numbers that tend to go wrong.
id randomValue(std::mt19937& random, int depth)
{
    constexpr std::string_view texts[] { "", "plain", "  spaces  ", "ä€", "😀\U0010FFFF", "<&>\"'", "a\nb\tc\r", "]]>",
        "com.example.app", "-->" };
    switch (random() % (depth > 0 ? 9 : 7)) {
    case 0:
        return string(texts[random() % std::size(texts)]);
    case 1:
        return string(std::string(random() % 40, 'x'));
    case 2:
        return boolean(random() % 2 == 0);
    case 3:
        return number(static_cast<std::int64_t>(random()) << (random() % 33));
    case 4:
        return real(static_cast<double>(random()) / 1024 - 1'000'000);
    case 5:
        return platform::data(std::string(random() % 20, static_cast<char>(random())));
    case 6:
        return date(static_cast<double>(random() % 1'000'000'000) - 500'000'000);
    case 7: {
        std::vector<id> items;
        for (std::size_t count = random() % 20; count > 0; --count)
            items.push_back(randomValue(random, depth - 1));
        return array(std::move(items));
    }
    default: {
        std::vector<std::pair<id, id>> pairs;
        for (std::size_t count = random() % 20; count > 0; --count)
            pairs.emplace_back(string(std::string(texts[random() % std::size(texts)]) + std::to_string(count)),
                randomValue(random, depth - 1));
        return dictionary(std::move(pairs));
    }
    }
}

TEST(PropertyLists, KeepEveryKindInBothFormats)
{
    const id values[] { string(""), string("ä€😀 <&>\"' \t\n end "), boolean(true), boolean(false), number(0),
        number(-1), number(1'000'000'000'000), number(std::numeric_limits<std::int64_t>::min()),
        number(std::numeric_limits<std::int64_t>::max()), real(0), real(0.1), real(1e-300), real(-2), data(""),
        data(std::string_view("\0\xFF\n", 3)), date(0), date(-1), date(86'400.0 * 365 * 200), emptyArray(),
        dictionary({ { "", string("empty key") }, { "a", array({ "x" }) }, { "b", dictionary({}) } }) };
    for (const PropertyListFormat format : bothFormats)
        for (const id& value : values) {
            const auto bytes = dataFromPropertyList(value, format);
            ASSERT_TRUE(bytes) << detailed(value);
            EXPECT_EQ(detailed(propertyListFromData(*bytes)), detailed(value)) << *bytes;
        }
}

TEST(PropertyLists, ABinaryOneKeepsWhatXmlCanNot)
{
    const id values[] { string("\x01\x1B\x7F\b"), string("\uFFFE\uFFFF"), dictionary({ { "\x02", number(1) } }) };
    for (const id& value : values) {
        EXPECT_TRUE(
            isEqual(propertyListFromData(dataFromPropertyList(value, PropertyListFormat::Binary).value_or("")), value));
        EXPECT_EQ(dataFromPropertyList(value, PropertyListFormat::Xml), std::nullopt) << describe(value);
    }
    const id moment = date(-0.75);
    const auto bytes = dataFromPropertyList(moment, PropertyListFormat::Binary);
    EXPECT_EQ(asDate(propertyListFromData(bytes.value_or(""))), -0.75);
}

TEST(PropertyLists, RandomValuesComeBack)
{
    std::mt19937 random(11);
    for (int round = 0; round < 200; ++round) {
        const id value = randomValue(random, 4);
        for (const PropertyListFormat format : bothFormats) {
            const id back = propertyListFromData(dataFromPropertyList(value, format).value_or(""));
            ASSERT_TRUE(isEqual(back, value)) << describe(value) << "\n" << describe(back);
            ASSERT_EQ(dataFromPropertyList(back, format), dataFromPropertyList(value, format)) << describe(value);
        }
    }
}

TEST(PropertyLists, OfOthersAreRead)
{
    const std::pair<std::string_view, std::string_view> cases[] {
        { "\xEF\xBB\xBF<?xml version='1.0'?>\n<!DOCTYPE plist PUBLIC \"-//X//Y\" \"http://example.com/x\">\n"
          "<plist version=\"1.0\"><!-- <dict> --><dict>\n<key>a</key><array/><key>b</key><true />\n</dict></plist>\n",
            R"({"a": [], "b": true})" },
        { "<plist><string>&lt;&#65;&#x1F600;<![CDATA[<b>]]>&amp;</string></plist>", "\"<A😀<b>&\"" },
        { "<plist><array><integer>-7</integer><integer>0x10</integer><real>1.5</real></array></plist>",
            "[-7, 16, 1.5]" },
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(describe(propertyListFromData(text)), expected) << text;
}

TEST(PropertyLists, ThatAreNoneAreNil)
{
    for (const std::string_view text : { "", "x", "bplist00", "<plist>", "<plist/>", "<plist></plist>",
             "<plist><dict><key>a&#0;b</key><true/></dict></plist>", "<plist><string>&#x100000041;</string></plist>",
             "<plist><array></plist>", "<plist><string>&x;</string></plist>", "<plist><dict></array></plist>",
             "<plist><wrong/></plist>", "<plist><true></plist>", "<plist><string><true/></string></plist>",
             "<!DOCTYPE plist [<!ENTITY a \"b\">]><plist><true/></plist>" })
        EXPECT_EQ(propertyListFromData(text), nil) << text;
}

TEST(PropertyLists, RefuseWhatTheyCanNotHold)
{
    const id self = mutableArray();
    send<"addObject:", void>(self, self);
    const id values[] { nil, url("a:b"), set({ number(1) }), array(std::vector<id> { url("a:b") }),
        dictionary(std::vector<std::pair<id, id>> { { number(1), number(2) } }), string(std::string_view("a\0b", 3)),
        nested(129), self };
    for (const id& value : values)
        for (const PropertyListFormat format : bothFormats)
            EXPECT_EQ(dataFromPropertyList(value, format), std::nullopt);
    send<"removeAllObjects", void>(self);
}

TEST(PropertyLists, ACopyDoesNotChangeWithItsOriginal)
{
    const id inner = mutableArray({ string("a") });
    const id original = mutableDictionary({ { string("list"), inner } });
    const id copied = propertyListCopy(original);
    send<"addObject:", void>(inner, string("b"));
    send<"removeAllObjects", void>(original);
    EXPECT_EQ(describe(copied), R"({"list": ["a"]})");
}

TEST(PropertyLists, MayBeNested128Deep)
{
    for (const PropertyListFormat format : bothFormats)
        EXPECT_EQ(describe(propertyListFromData(dataFromPropertyList(nested(128), format).value_or(""))),
            describe(nested(128)));
    const auto xml = [](int depth, std::string_view inside) {
        std::string text = "<plist>";
        for (int level = 0; level < depth; ++level)
            text += "<array>";
        text += inside;
        for (int level = 0; level < depth; ++level)
            text += "</array>";
        return text + "</plist>";
    };
    EXPECT_NE(propertyListFromData(xml(128, "<true/>")), nil);
    EXPECT_EQ(propertyListFromData(xml(129, "<true/>")), nil);
    EXPECT_EQ(propertyListFromData(xml(128, "<dict/>")), nil);
    EXPECT_EQ(propertyListFromData(xml(1'000'000, "")), nil);
    EXPECT_NE(propertyListFromData(xml(1, std::string(100'000, ' '))), nil);
}

/// A binary property list of hand-made objects of less than 256 bytes in all, referred to by one byte; the
/// first is the root.
std::string binaryOf(const std::vector<std::string>& objects, std::uint64_t declaredCount = 0)
{
    std::string bytes = "bplist00";
    std::string offsets;
    for (const std::string& object : objects) {
        offsets += static_cast<char>(bytes.size() >> 8);
        offsets += static_cast<char>(bytes.size());
        bytes += object;
    }
    const std::uint64_t trailer[] { declaredCount != 0 ? declaredCount : objects.size(), 0, bytes.size() };
    bytes += offsets + std::string(6, '\0') + "\2\1";
    for (const std::uint64_t value : trailer)
        for (int shift = 56; shift >= 0; shift -= 8)
            bytes += static_cast<char>(value >> shift);
    return bytes;
}

std::string withCount(int marker, std::uint64_t count)
{
    std::string object { static_cast<char>(marker | 0xF), '\x13' };
    for (int shift = 56; shift >= 0; shift -= 8)
        object += static_cast<char>(count >> shift);
    return object;
}

TEST(PropertyLists, HostileBinaryOnesAreNil)
{
    using namespace std::string_literals;
    EXPECT_EQ(describe(propertyListFromData(binaryOf({ "\xA2\1\1"s, "\x51x"s }))), R"(["x", "x"])");
    EXPECT_EQ(describe(propertyListFromData(binaryOf({ "\xD1\1\2"s, "\x51k"s, "\x09"s }))), R"({"k": true})");

    std::vector<std::string> doubling;
    for (char level = 1; level < 60; ++level)
        doubling.push_back("\xA2"s + level + level);
    doubling.push_back("\x09"s);

    std::vector<std::string> longText { "\xAF\x11\x01\x00"s + std::string(256, '\1'), "" };
    longText[1] = "\x5F\x12"s + "\x00\x40\x00\x00"s + std::string(0x400000, 'x');

    const std::pair<const char*, std::string> cases[] {
        { "holds itself", binaryOf({ "\xA1\0"s }) },
        { "hold each other", binaryOf({ "\xA1\1"s, "\xD1\2\0"s, "\x51k"s }) },
        { "doubles sixty times", binaryOf(doubling) },
        { "one long text many times", binaryOf(longText) },
        { "a key that is a number", binaryOf({ "\xD1\1\1"s, "\x10\5"s }) },
        { "a key that is the dictionary", binaryOf({ "\xD1\0\0"s }) },
        { "a key with a NUL", binaryOf({ "\xD1\1\1"s, "\x53x\0y"s }) },
        { "a wide key with a NUL", binaryOf({ "\xD1\1\1"s, "\x63\0x\0\0\0y"s }) },
        { "an object that isn't there", binaryOf({ "\xA1\7"s }) },
        { "more objects than offsets", binaryOf({ "\x09"s }, std::uint64_t { 1 } << 62) },
        { "many items", binaryOf({ withCount(0xA0, UINT64_MAX) }) },
        { "many items, halved", binaryOf({ withCount(0xD0, UINT64_MAX / 2 + 1) }) },
        { "much text", binaryOf({ withCount(0x50, UINT64_MAX) }) },
        { "much wide text", binaryOf({ withCount(0x60, UINT64_MAX / 2 + 2) }) },
        { "much data", binaryOf({ withCount(0x40, INT64_MAX) }) },
        { "an unknown kind", binaryOf({ "\xF0"s }) },
        { "a count that is a text", binaryOf({ "\x5F\x51\x01x"s }) },
    };
    for (const auto& [what, bytes] : cases)
        EXPECT_EQ(propertyListFromData(bytes), nil) << what;
}

TEST(PropertyLists, TellWhetherAWriteKeepsThem)
{
    using namespace std::string_literals;
    struct Case {
        const char* what;
        std::string bytes;
        bool isKept;
    };
    const auto xml = [](std::string_view value) { return "<plist>" + std::string(value) + "</plist>"; };
    const Case cases[] {
        { "an empty dictionary", xml("<dict/>"), true },
        { "the largest integer", xml("<integer>9223372036854775807</integer>"), true },
        { "the smallest integer", xml("<integer>-9223372036854775808</integer>"), true },
        { "past the largest", xml("<integer>9223372036854775808</integer>"), false },
        { "the largest of 64 bits", xml("<integer>18446744073709551615</integer>"), false },
        { "an archiver's reference", xml("<dict><key>CF$UID</key><integer>3</integer></dict>"), false },
        { "one in a list, binary", binaryOf({ "\xA1\1"s, "\x80\5"s }), false },
        { "a real of four bytes", binaryOf({ "\x22\x3F\xC0\0\0"s }), true },
        { "an integer of 16 bytes", binaryOf({ "\x14"s + std::string(8, '\0') + "\xFF"s + std::string(7, '\0') }),
            false },
        { "a text with a NUL", binaryOf({ "\x53x\0y"s }), false },
        { "a wide text with a NUL", binaryOf({ "\xA1\1"s, "\x63\0x\0\0\0y"s }), false },
        { "a whole character", binaryOf({ "\x62\xD8\x3D\xDE\x00"s }), true },
        { "its second half", binaryOf({ "\x62\xDE\x00\0x"s }), false },
        { "half a character", binaryOf({ "\x61\xD8\x00"s }), false },
        { "a date before time", xml("<date>1919-01-01T00:00:00Z</date>"), true },
        { "garbage", "garbage", false },
    };
    for (const auto& [what, bytes, isKept] : cases)
        EXPECT_EQ(isKeptByWriting(bytes), isKept) << what;
    std::mt19937 random(11);
    for (int round = 0; round < 300; ++round)
        for (const PropertyListFormat format : bothFormats)
            EXPECT_TRUE(isKeptByWriting(
                dataFromPropertyList(randomValue(random, 3), format).value_or("<plist><true/></plist>")))
                << round;
}

TEST(PropertyLists, ThatCanNotBeReadAreDamagedOrOnlyTooLarge)
{
    std::string deep = "<true/>";
    for (int level = 0; level < 129; ++level)
        deep = "<array>" + deep + "</array>";
    const std::pair<std::string, bool> cases[] {
        { "garbage", true },
        { "<plist><array></plist>", true },
        { "bplist00", true },
        { "<plist>" + deep + "</plist>", false },
    };
    for (const auto& [bytes, isDamaged] : cases) {
        const PropertyListReading reading = readPropertyList(bytes);
        EXPECT_EQ(reading.value, nil);
        EXPECT_EQ(reading.isDamaged, isDamaged) << bytes.substr(0, 40);
        EXPECT_NE(reading.problem, "");
    }
    EXPECT_EQ(readPropertyList("<plist><true/></plist>").problem, "");
}

TEST(PropertyLists, DeepBinaryOnesAreNil)
{
    const auto deep = [](int depth) {
        using namespace std::string_literals;
        std::vector<std::string> objects;
        for (int level = 1; level < depth; ++level)
            objects.push_back("\xA1"s + static_cast<char>(level));
        objects.push_back("\xA0"s);
        return binaryOf(objects);
    };
    EXPECT_NE(propertyListFromData(deep(128)), nil);
    EXPECT_EQ(propertyListFromData(deep(129)), nil);
    EXPECT_FALSE(readPropertyList(deep(129)).isDamaged);
}

TEST(PropertyLists, DamagedOnesNeverCrash)
{
    std::mt19937 random(5);
    int readable = 0;
    for (const PropertyListFormat format : bothFormats)
        for (int round = 0; round < 60; ++round) {
            const std::string bytes = dataFromPropertyList(randomValue(random, 3), format).value_or("");
            for (std::size_t length = 0; length < bytes.size(); length += 1 + bytes.size() / 40)
                propertyListFromData(std::string(bytes, 0, length));
            for (int mutation = 0; mutation < 100; ++mutation) {
                std::string damaged = bytes;
                for (std::size_t changes = 1 + random() % 3; changes > 0; --changes) {
                    const std::size_t at = random() % 3 == 0 ? damaged.size() - 1 - random() % 32 % damaged.size()
                                                             : random() % damaged.size();
                    if (random() % 4 == 0)
                        damaged.erase(at, random() % 8);
                    else
                        damaged[at] = static_cast<char>(random());
                    if (damaged.empty())
                        damaged = "x";
                }
                if (const id value = propertyListFromData(damaged)) {
                    dataFromPropertyList(value, format);
                    ++readable;
                }
            }
        }
    EXPECT_GT(readable, 1000);
}

TEST(PropertyLists, AreReadFromFilesByRootKind)
{
    const DeviceRoot device;
    EXPECT_EQ(writePropertyList(array({ "a" }), "/list.plist", PropertyListFormat::Xml), 0);
    EXPECT_EQ(writePropertyList(dictionary({ { "k", number(1) } }), "/pairs.plist", PropertyListFormat::Binary), 0);
    device.put("/broken.plist", "<plist><dict>");
    EXPECT_EQ(writePropertyList(url("a:b"), "/none.plist", PropertyListFormat::Binary), EINVAL);
    EXPECT_EQ(writePropertyList(emptyArray(), "/missing/x.plist", PropertyListFormat::Binary), ENOENT);
    EXPECT_FALSE(fileExists("/none.plist"));

    EXPECT_EQ(describe(arrayWithContentsOfFile("/list.plist")), R"(["a"])");
    EXPECT_EQ(describe(dictionaryWithContentsOfFile("/pairs.plist")), R"({"k": 1})");
    EXPECT_EQ(dictionaryWithContentsOfFile("/list.plist"), nil);
    EXPECT_EQ(arrayWithContentsOfFile("/pairs.plist"), nil);
    for (const std::string_view path : { "/broken.plist", "/none.plist", "/" }) {
        EXPECT_EQ(dictionaryWithContentsOfFile(path), nil) << path;
        EXPECT_EQ(arrayWithContentsOfFile(path), nil) << path;
    }
}

} // namespace
} // namespace platform
