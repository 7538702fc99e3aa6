#include "scenario/command.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

/// Automatic clearing, from the command to the files of a phone of real processes.

namespace scenario {

namespace {

namespace fs = std::filesystem;

constexpr const char* notes = "com.example.notes";

/// The data container whose metadata names the application.
fs::path containerOf(const Phone& phone, const std::string& identifier)
{
    for (const auto& entry : fs::directory_iterator(phone.root() + "/var/mobile/Containers/Data/Application")) {
        std::ifstream file(entry.path() / ".com.apple.mobile_container_manager.metadata.plist", std::ios::binary);
        const std::string content { std::istreambuf_iterator<char>(file), {} };
        if (content.find(identifier) != std::string::npos)
            return entry.path();
    }
    ADD_FAILURE() << identifier << " has no container";
    return {};
}

Json endNotes(const Phone& phone)
{
    const fs::path caches = containerOf(phone, notes) / "Library/Caches";
    fs::create_directories(caches / "images");
    std::ofstream(caches / "images/file") << "1";
    std::ofstream(caches / "file") << "1";
    phone.answer({ "phone", "tap", notes });
    const Json report = phone.answer({ "phone", "exit", notes });
    EXPECT_EQ(report["front"], "");
    EXPECT_EQ(report["folders"][0]["folder"], "Library/Caches");
    EXPECT_EQ(report["folders"][0]["before"], 2);
    EXPECT_EQ(report["folders"][0]["after"], std::distance(fs::directory_iterator(caches), {}));
    return report["folders"][0]["after"];
}

} // namespace

TEST(AutoClearScenario, AnApplicationIsClearedWhenItEndsIfItsOwnerSaidSo)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    phone.answer({ "phone", "exit", notes }, 1);
    EXPECT_EQ(endNotes(phone), 2);
    phone.answer({ "policy", "add", "ALAutoClearCacheApps", notes });
    EXPECT_EQ(endNotes(phone), 0);
}

} // namespace scenario
