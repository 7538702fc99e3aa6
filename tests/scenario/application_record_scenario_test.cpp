#include "scenario/command.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

/// What `appledger app` tells of applications and does with them, on a phone of real processes.

namespace scenario {

namespace {

constexpr const char* chat = "com.example.chat";

std::string dataOf(const Phone& phone, const std::string& identifier)
{
    return phone.root() + phone.answer({ "app", "show", identifier })["record"]["dataContainerURL"].get<std::string>();
}

void put(const std::string& path, std::size_t size)
{
    std::ofstream(path, std::ios::binary) << std::string(size, 'x');
}

TEST(ApplicationRecordScenario, ShowsWhatIsKnownOfAnApplication)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    const Json record = phone.answer({ "app", "show", chat })["record"];
    EXPECT_EQ(record["name"], "Pigeon");
    EXPECT_EQ(record["version"], "12.0");
    EXPECT_EQ(record["isEncrypted"], true);
    EXPECT_EQ(record["hasAppStoreApp"], true);
    EXPECT_EQ(record["urlSchemes"], Json::array({ "pigeon" }));
    EXPECT_EQ(record["appGroups"].size(), 2U);
    EXPECT_GT(record["diskUsage"], 0);
    EXPECT_EQ(record["entitlements"]["application-identifier"], "EXAMPLE001.com.example.chat");
    const std::string bundle = phone.root() + record["bundleURL"].get<std::string>();
    const Json inspected = phone.answer({ "app", "inspect", bundle })["record"];
    for (const char* const same : { "bundleIdentifier", "version", "internalVersion", "urlSchemes", "queriesSchemes",
             "activityTypes", "backgroundModes", "entitlements", "isEncrypted" })
        EXPECT_EQ(inspected[same], record[same]) << same;
    const Json files = phone.answer({ "app", "encryption", bundle + "/Pigeon", bundle + "/Info.plist" })["files"];
    EXPECT_EQ(files[0]["encryption"], "encrypted");
    EXPECT_EQ(files[1]["encryption"], "not mach-o");
    EXPECT_EQ(phone.run({ "app", "encryption", bundle, bundle + "/none" }).status, 1);
    EXPECT_EQ(phone.run({ "app", "inspect", bundle + "/none" }).status, 1);
    EXPECT_EQ(phone.run({ "app", "show", "com.example.none" }).status, 1);
    phone.answer({ "phone", "down" });
    phone.answer({ "phone", "up", "--stock" });
    EXPECT_NE(phone.run({ "app", "show", chat }).errors.find("without the library"), std::string::npos);
}

TEST(ApplicationRecordScenario, MeasuresAndClearsAndForgets)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    const std::string data = dataOf(phone, chat);
    put(data + "/Library/Caches/a", 100000);
    put(data + "/Documents/b", 1000000);
    const Json size = phone.answer({ "app", "size", chat });
    EXPECT_EQ(size["caches"], "102 KB");
    EXPECT_EQ(size["data"], "1.1 MB");
    EXPECT_EQ(phone.answer({ "app", "clear-cache", chat })["after"], "Zero KB");
    EXPECT_TRUE(std::filesystem::exists(data + "/Documents/b"));

    phone.answer({ "phone", "permission", chat, "camera", "allow" });
    phone.answer({ "phone", "permission", chat, "location", "deny" });
    Json permissions = phone.answer({ "app", "permissions", chat });
    EXPECT_EQ(permissions["count"], 1);
    EXPECT_EQ(permissions["location"], false);
    phone.answer({ "phone", "tap", chat });
    EXPECT_EQ(phone.answer({ "app", "clear-data", chat })["after"], "Zero KB");
    EXPECT_FALSE(std::filesystem::exists(data + "/Documents/b"));
    EXPECT_TRUE(std::filesystem::is_empty(data + "/Library/Preferences"));
    EXPECT_EQ(phone.answer({ "phone", "status" })["front"], "") << "it was ended";
    permissions = phone.answer({ "app", "permissions", chat });
    EXPECT_EQ(permissions["count"], 0);
    EXPECT_EQ(permissions["location"], nullptr);
    phone.answer({ "phone", "permission", chat, "photos", "deny" });
    EXPECT_EQ(phone.answer({ "app", "reset-permissions", chat })["count"], 0);
}

TEST(ApplicationRecordScenario, OffloadsAndUninstallsAndTheHomeScreenFollows)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    const std::string data = dataOf(phone, chat);
    put(data + "/Documents/b", 10);
    EXPECT_EQ(phone.answer({ "app", "offload", chat })["done"], true);
    EXPECT_TRUE(phone.answer({ "phone", "tap", chat })["opened"].empty());
    for (const char* const time : { "at once", "after a respring" }) {
        EXPECT_NE(phone.run({ "phone", "describe" }).output.find("☁️ Pigeon"), std::string::npos) << time;
        phone.answer({ "phone", "respring" });
    }
    EXPECT_TRUE(std::filesystem::exists(data + "/Documents/b"));
    EXPECT_EQ(phone.answer({ "app", "uninstall", chat })["done"], true);
    EXPECT_EQ(phone.run({ "phone", "describe" }).output.find("Pigeon"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(data));
    EXPECT_EQ(phone.answer({ "app", "uninstall", "com.apple.camera" })["done"], false);
}

TEST(ApplicationRecordScenario, OpensAFolderOrSaysWhyNot)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    Json report = phone.answer({ "app", "open-folder", "com.example.bank", "bundle" });
    EXPECT_EQ(report["alert"]["message"], "Install Filza app to open the selected directory");
    EXPECT_NE(phone.run({ "phone", "describe" }).output.find("\"Okay\""), std::string::npos);
    EXPECT_EQ(phone.run({ "phone", "alert", "Other" }).status, 1);
    EXPECT_EQ(phone.answer({ "phone", "alert", "1" })["chosen"], "Okay");
    EXPECT_EQ(phone.answer({ "phone", "alert" })["alert"], nullptr);
    EXPECT_EQ(phone.run({ "phone", "alert", "Okay" }).status, 1);

    const std::string bundle = phone.root() + "/var/containers/Bundle/Application/FILES/Files.app";
    std::filesystem::create_directories(bundle);
    std::ofstream(bundle + "/Info.plist")
        << "<plist version=\"1.0\"><dict><key>CFBundleIdentifier</key><string>com.example.files</string>"
           "<key>CFBundleURLTypes</key><array><dict><key>CFBundleURLSchemes</key><array><string>fila</string></array>"
           "</dict></array></dict></plist>";
    phone.answer({ "phone", "respring" });
    report = phone.answer({ "app", "open-folder", "com.example.bank", "bundle" });
    EXPECT_EQ(report["alert"], nullptr);
    EXPECT_EQ(report["opened"], Json::array({ "com.example.files" }));
    EXPECT_NE(report["notes"][0].get<std::string>().find("fila://view/"), std::string::npos);
    EXPECT_NE(report["notes"][0].get<std::string>().find("/Harbour%20Bank.app"), std::string::npos);
}

} // namespace

} // namespace scenario
