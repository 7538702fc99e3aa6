#include "platform/foundation/property_list_file.h"

#include "platform/foundation/device_root.h"
#include "platform/foundation/values.h"

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {
namespace {

const std::string folder = "/var/mobile/Library/Preferences";
const std::string file = folder + "/com.example.list.plist";
constexpr PropertyListFileKind arrayKind { PropertyListRoot::Array, PropertyListFormat::Xml, 0640 };
constexpr PropertyListFileKind dictionaryKind { PropertyListRoot::Dictionary, PropertyListFormat::Binary, 0600 };

std::string xml(std::string_view root)
{
    return "<plist>" + std::string(root) + "</plist>";
}

std::optional<id> withOneMore(const id& list)
{
    std::vector<id> items;
    for (const id& item : itemsOf(list))
        items.push_back(item);
    items.push_back(string("new"));
    return array(std::move(items));
}

std::optional<id> withAKey(const id& pairs)
{
    return dictionaryBySetting(pairs, "key", string("new"));
}

TEST(PropertyListFiles, AreMadeAndChanged)
{
    const DeviceRoot device;
    EXPECT_EQ(changePropertyListFile(file, arrayKind, withOneMore).problem, "");
    EXPECT_EQ(changePropertyListFile(file, arrayKind, withOneMore).problem, "");
    EXPECT_EQ(describe(arrayWithContentsOfFile(file)), R"(["new", "new"])");
    struct stat status { };
    ASSERT_EQ(::stat(device.at(file).c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640U);
    ASSERT_EQ(::stat(device.at(folder + "/.com.example.list.plist.lock").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600U);

    const std::string before = device.get(file);
    EXPECT_EQ(changePropertyListFile(file, arrayKind, [](const id&) { return std::nullopt; }).problem, "");
    EXPECT_EQ(changePropertyListFile(file, arrayKind, withAKey).error, EINVAL);
    EXPECT_EQ(device.get(file), before);
}

TEST(PropertyListFiles, ThatAreDamagedAreSetAsideAndNeverLost)
{
    std::string flipped
        = *dataFromPropertyList(dictionary({ { "key", array({ "a", "b" }) } }), PropertyListFormat::Binary);
    flipped[3] = static_cast<char>(flipped[3] ^ 4);
    struct Case {
        PropertyListFileKind kind;
        std::string content;
    };
    const Case cases[] {
        { dictionaryKind, "" },
        { dictionaryKind, "garbage" },
        { dictionaryKind, flipped },
        { dictionaryKind, xml("<array><string>a</string></array>") },
        { arrayKind, xml("<dict/>") },
        { arrayKind, xml("<array><string>a</string>") },
    };
    for (const auto& [kind, content] : cases) {
        const DeviceRoot device;
        device.put(file, content);
        device.put(file + ".damaged-1", "of an earlier day");
        PropertyListFile reader(file, kind);
        EXPECT_EQ(reader.read(), nil);
        EXPECT_NE(reader.problem(), "") << content;
        const auto change = kind.root == PropertyListRoot::Array ? withOneMore : withAKey;
        const WriteOutcome outcome = changePropertyListFile(file, kind, change);
        EXPECT_EQ(outcome.problem, "") << content;
        EXPECT_EQ(outcome.setAside, file + ".damaged-2");
        EXPECT_EQ(device.get(file + ".damaged-1"), "of an earlier day");
        EXPECT_EQ(device.get(file + ".damaged-2"), content);
        EXPECT_EQ(describe(reader.read()), kind.root == PropertyListRoot::Array ? R"(["new"])" : R"({"key": "new"})");
        EXPECT_EQ(reader.problem(), "");
        EXPECT_EQ(changePropertyListFile(file, kind, change).setAside, "");
    }
}

TEST(PropertyListFiles, AWriterThatWasKilledBeforeItReplacedADamagedFileLeftNothingToRepeat)
{
    const DeviceRoot device;
    device.put(file, "garbage");
    std::filesystem::create_hard_link(device.at(file), device.at(file + ".damaged-1"));
    EXPECT_EQ(changePropertyListFile(file, arrayKind, withOneMore).setAside, file + ".damaged-1");
    EXPECT_EQ(device.get(file + ".damaged-1"), "garbage");
    EXPECT_EQ(directoryEntries(folder).size(), 3U);
}

TEST(PropertyListFiles, WhatAWriteWouldChangeUnaskedIsNotWritten)
{
    std::string deep;
    for (int level = 0; level < 130; ++level)
        deep = "<array>" + deep + "</array>";
    const std::string cases[] {
        xml("<dict><key>other</key><dict><key>CF$UID</key><integer>1</integer></dict></dict>"),
        xml("<dict><key>other</key><integer>9223372036854775808</integer></dict>"),
        xml("<dict><key>other</key><integer>18446744073709551615</integer></dict>"),
        xml("<dict><key>other</key>" + deep + "</dict>"),
    };
    for (const std::string& content : cases) {
        const DeviceRoot device;
        device.put(file, content);
        const WriteOutcome outcome = changePropertyListFile(file, dictionaryKind, withAKey);
        EXPECT_NE(outcome.error, 0) << content.substr(0, 80);
        EXPECT_NE(outcome.problem, "");
        EXPECT_EQ(outcome.setAside, "");
        EXPECT_EQ(device.get(file), content);
        EXPECT_EQ(directoryEntries(folder).size(), 2U);
    }
}

TEST(PropertyListFiles, WhatIsNoFileStaysWhereItIs)
{
    const DeviceRoot device;
    const auto isRefused = [&](int error) {
        PropertyListFile reader(file, arrayKind);
        EXPECT_EQ(reader.read(), nil);
        EXPECT_NE(reader.problem(), "");
        const WriteOutcome outcome = changePropertyListFile(file, arrayKind, withOneMore);
        EXPECT_EQ(outcome.error, error);
        EXPECT_NE(outcome.problem, "");
    };
    std::filesystem::create_directories(device.at(file));
    isRefused(EISDIR);
    EXPECT_TRUE(directoryExists(file));
    std::filesystem::remove(device.at(file));
    ASSERT_EQ(::mkfifo(device.at(file).c_str(), 0600), 0);
    isRefused(ENXIO);
    EXPECT_EQ(fileKind(file), FileKind::Other);
    std::filesystem::remove(device.at(file));

    device.put(file, xml("<array><string>a</string></array>"));
    ::chmod(device.at(file).c_str(), 0);
    if (::geteuid() == 0) {
        constexpr uid_t nobody = 65534;
        for (const auto& directory : { device.outside(), device.root(), device.at(folder) })
            ASSERT_EQ(::chown(directory.c_str(), nobody, static_cast<gid_t>(-1)), 0);
        ASSERT_EQ(::chown(device.at(file).c_str(), nobody, static_cast<gid_t>(-1)), 0);
        std::filesystem::remove(device.at(folder + "/.com.example.list.plist.lock"));
        ASSERT_EQ(::seteuid(nobody), 0);
    }
    isRefused(EACCES);
    ASSERT_EQ(::seteuid(::getuid()), 0);
    ::chmod(device.at(file).c_str(), 0600);
    EXPECT_EQ(describe(arrayWithContentsOfFile(file)), R"(["a"])");
}

} // namespace
} // namespace platform
