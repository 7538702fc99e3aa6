#include "scenario/command.h"
#include "scenario/mortal_phone.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <sys/stat.h>

/// Applications that come onto a phone of real processes: from a folder, from those that phones come with, from the
/// store.

namespace scenario {

namespace {

namespace fs = std::filesystem;

constexpr const char* tide = "org.example.tide";
constexpr const char* notes = "com.example.notes";

/// The folder of an application on this computer.
class BundleFolder {
public:
    explicit BundleFolder(const Phone& phone, const std::string& name = "Tide.app")
        : path_(fs::path(phone.root() + ".outside") / name)
    {
        fs::create_directories(path_ / "pages");
        describe("Lagoon", "1.0");
        write("Tide", "an executable");
        write("pages/first", "a page");
        fs::create_symlink("first", path_ / "pages/start");
    }
    ~BundleFolder()
    {
        std::error_code ignored;
        fs::remove_all(path_.parent_path(), ignored);
    }
    BundleFolder(const BundleFolder&) = delete;
    BundleFolder& operator=(const BundleFolder&) = delete;

    const fs::path& path() const { return path_; }
    void write(const std::string& name, const std::string& content) const { std::ofstream(path_ / name) << content; }

    void describe(const std::string& name, const std::string& version, const std::string& identifier = tide,
        const std::string& executable = "Tide") const
    {
        write("Info.plist",
            R"(<plist version="1.0"><dict><key>CFBundleIdentifier</key><string>)" + identifier
                + "</string><key>CFBundleName</key><string>" + name
                + "</string><key>CFBundleShortVersionString</key><string>" + version
                + "</string><key>CFBundleExecutable</key><string>" + executable + "</string></dict></plist>");
    }

private:
    const fs::path path_;
};

Json applicationOf(const Phone& phone, const std::string& identifier)
{
    const Json report = phone.answer({ "phone", "apps" });
    for (const Json& application : report["applications"])
        if (application["application"] == identifier)
            return application;
    return nullptr;
}

bool isShown(const Phone& phone, const std::string& identifier)
{
    const Json report = phone.answer({ "phone", "icons" });
    for (const Json& icon : report["icons"])
        if (icon["application"] == identifier)
            return icon["shown"];
    return false;
}

std::string screen(const Phone& phone)
{
    return phone.answer({ "phone", "describe" })["screen"];
}

/// What lies in the places of applications and where they are put together.
std::set<std::string> contents(const Phone& phone)
{
    std::set<std::string> names;
    for (const char* const place : { "/var/containers/Bundle/Application", "/var/mobile/Containers/Data/Application",
             "/var/mobile/Media/PublicStaging" }) {
        std::error_code error;
        for (const auto& entry : fs::recursive_directory_iterator(phone.root() + place, error))
            names.insert(entry.path());
    }
    return names;
}

std::string dataOf(const Phone& phone, const std::string& identifier)
{
    return phone.root() + phone.answer({ "app", "show", identifier })["record"]["dataContainerURL"].get<std::string>();
}

std::string bundleOf(const Phone& phone, const std::string& identifier)
{
    return phone.root() + phone.answer({ "app", "show", identifier })["record"]["bundleURL"].get<std::string>();
}

} // namespace

TEST(InstallationScenario, AnApplicationComesAtOnceGoesAndComesAgain)
{
    const Phone phone;
    const BundleFolder folder(phone);
    phone.answer({ "phone", "up" });
    for (int round = 0; round < 2; ++round) {
        const Json installed = phone.answer({ "phone", "install", folder.path() });
        EXPECT_EQ(installed["application"], tide);
        EXPECT_EQ(installed["isUpdate"], false);
        EXPECT_TRUE(isShown(phone, tide));
        EXPECT_NE(screen(phone).find("Lagoon"), std::string::npos);
        EXPECT_EQ(phone.answer({ "phone", "tap", "Lagoon" })["opened"], Json::array({ tide }));
        const std::string bundle = bundleOf(phone, tide);
        EXPECT_EQ(fs::status(bundle + "/pages/start").type(), fs::file_type::regular);
        EXPECT_FALSE(fs::is_symlink(bundle + "/pages/start"));
        EXPECT_TRUE(fs::is_directory(dataOf(phone, tide) + "/Documents"));
        EXPECT_EQ(phone.answer({ "phone", "uninstall", tide })["removed"], true);
        EXPECT_EQ(screen(phone).find("Lagoon"), std::string::npos);
        EXPECT_EQ(applicationOf(phone, tide), nullptr);
        EXPECT_FALSE(fs::exists(bundle));
    }
    phone.answer({ "phone", "install", folder.path() });
    phone.answer({ "phone", "respring" });
    EXPECT_TRUE(isShown(phone, tide));
}

TEST(InstallationScenario, AnotherVersionTakesThePlaceOfTheFormerAndKeepsItsData)
{
    const Phone phone;
    const BundleFolder folder(phone);
    phone.answer({ "phone", "up" });
    phone.answer({ "phone", "install", folder.path() });
    phone.answer({ "phone", "tap", tide });
    const std::string data = dataOf(phone, tide);
    std::ofstream(data + "/Documents/mine") << "mine";

    folder.describe("High Tide", "2.0");
    fs::remove(folder.path() / "pages/start");
    EXPECT_EQ(phone.answer({ "phone", "install", folder.path() })["isUpdate"], true);
    EXPECT_EQ(phone.answer({ "phone", "status" })["front"], "") << "the former one has ended";
    EXPECT_NE(screen(phone).find("High Tide"), std::string::npos);
    EXPECT_EQ(applicationOf(phone, tide)["applicationVersion"], "2.0");
    EXPECT_EQ(dataOf(phone, tide), data);
    EXPECT_TRUE(fs::exists(data + "/Documents/mine"));
    EXPECT_FALSE(fs::exists(bundleOf(phone, tide) + "/pages/start"));

    // The one that came with the phone, too, and it doesn't come back beside it.
    folder.describe("Scrawls", "9", notes);
    phone.answer({ "phone", "install", folder.path() });
    phone.answer({ "phone", "down" });
    phone.answer({ "phone", "up" });
    EXPECT_EQ(applicationOf(phone, notes)["name"], "Scrawls");
    int count = 0;
    for (const std::string& path : contents(phone))
        count += path.ends_with("/Scribbles.app") ? 1 : 0;
    EXPECT_EQ(count, 0);
    phone.answer({ "phone", "install", "Scribbles" });
    EXPECT_EQ(applicationOf(phone, notes)["applicationVersion"], "1.4");
}

TEST(InstallationScenario, APhoneThatIsDownHasItWhenItComesUp)
{
    const Phone phone;
    const BundleFolder folder(phone, "Tide");
    phone.answer({ "phone", "install", folder.path() }, 1);
    EXPECT_FALSE(fs::exists(phone.root() + "/var")) << "no phone is made of it";
    phone.answer({ "phone", "up" });
    phone.answer({ "phone", "down" });
    phone.answer({ "phone", "install", folder.path() });
    phone.answer({ "phone", "up" });
    EXPECT_EQ(phone.answer({ "phone", "tap", tide })["opened"], Json::array({ tide }));
}

TEST(InstallationScenario, WhatIsNoApplicationIsRefusedAndLeavesNothing)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    const std::set<std::string> before = contents(phone);
    struct Case {
        std::function<void(const BundleFolder& folder)> spoil;
        std::string reason;
    };
    const auto identifier = [](const std::string& text) {
        return Case { [text](const BundleFolder& folder) { folder.describe("Tide", "1", text); },
            "is no bundle identifier" };
    };
    const Case cases[] {
        { [](const auto& folder) { fs::remove(folder.path() / "Info.plist"); }, "has no Info.plist" },
        { [](const auto& folder) { folder.write("Info.plist", "bplist00 and no more"); }, "isn't a property list" },
        { [](const auto& folder) { folder.write("Info.plist", "<plist><dict/></plist>"); }, "CFBundleIdentifier" },
        identifier("../../../tmp/evil"),
        identifier("com.example/evil"),
        identifier("com.example..evil"),
        identifier("com.example.\xE2\x80\xAE"),
        identifier(std::string(300, 'a')),
        identifier(""),
        { [](const auto& folder) { folder.describe("Tide", "1", "com.apple.Preferences"); }, "is the system's own" },
        { [](const auto& folder) { folder.describe("Tide", "1", tide, "../Tide"); }, "executable" },
        { [](const auto& folder) { folder.describe("Tide", "1", tide, "Ebb"); }, "executable" },
        { [](const auto& folder) { fs::create_symlink("/etc/passwd", folder.path() / "pages/out"); }, "leads out" },
        { [](const auto& folder) { fs::create_symlink("..", folder.path() / "pages/up"); }, "isn't a file" },
        { [](const auto& folder) { fs::create_symlink("nothing", folder.path() / "pages/x"); }, "leads nowhere" },
        { [](const auto& folder) { ::mkfifo((folder.path() / "pages/pipe").c_str(), 0600); }, "neither a file" },
        { [](const auto& folder) {
             std::string deep = folder.path() / "pages";
             for (int depth = 0; depth < 80; ++depth)
                 deep += "/d";
             fs::create_directories(deep);
         },
            "too deep" },
    };
    for (const Case& wrong : cases) {
        const BundleFolder folder(phone);
        wrong.spoil(folder);
        const Json answer = phone.answer({ "phone", "install", folder.path() }, 1);
        EXPECT_NE(answer["error"].get<std::string>().find(wrong.reason), std::string::npos) << wrong.reason << "\n"
                                                                                            << answer["error"];
    }
    for (const char* const word : { "/nowhere/Tide.app", "Nowhere", "com.example.nowhere", "Settings" })
        phone.answer({ "phone", "install", word }, 1);
    EXPECT_EQ(contents(phone), before);
    EXPECT_FALSE(isShown(phone, tide));
}

namespace {

/// SpringBoard dies at that write.
struct Death {
    bool isUpdate;
    const char* moment;
};

// Without a former version nothing has to go, and the file is written twice.
constexpr Death deaths[] { { false, "before 1" }, { false, "after 1" }, { false, "before 2" }, { false, "after 2" },
    { true, "before 1" }, { true, "after 1" }, { true, "before 2" }, { true, "after 2" }, { true, "before 3" },
    { true, "after 3" } };

void PrintTo(const Death& death, std::ostream* out)
{
    *out << death.moment << (death.isUpdate ? " of an update" : "");
}

} // namespace

class KilledInstallation : public testing::TestWithParam<Death> { };

TEST_P(KilledInstallation, LeavesTheApplicationWholeOrNotAtAll)
{
    const auto& [isUpdate, moment] = GetParam();
    const Phone phone;
    const BundleFolder folder(phone);
    phone.answer({ "phone", "up" });
    if (isUpdate)
        phone.answer({ "phone", "install", folder.path() });
    const std::string data = isUpdate ? dataOf(phone, tide) : "";
    const std::set<std::string> before = contents(phone);
    phone.answer({ "phone", "down" });
    const std::string file = phone.root() + "/moment";
    startMortal(phone, file, "removed_applications.plist");
    std::ofstream(file) << moment;
    folder.describe("Lagoon", "2.0");
    phone.answer({ "phone", "install", folder.path() }, 1);
    EXPECT_FALSE(fs::exists(file)) << "SpringBoard wasn't killed";
    phone.answer({ "phone", "respring" });

    const std::string_view undone[] { "before 1", "after 1", "before 2" };
    const bool isDone = std::ranges::find(undone, moment) == std::end(undone);
    const Json application = applicationOf(phone, tide);
    if (isDone) {
        EXPECT_EQ(application["applicationVersion"], "2.0");
        EXPECT_TRUE(fs::exists(bundleOf(phone, tide) + "/pages/first"));
        EXPECT_TRUE(fs::is_directory(dataOf(phone, tide) + "/Documents"));
        EXPECT_TRUE(isShown(phone, tide));
    } else {
        EXPECT_EQ(contents(phone), before);
        EXPECT_EQ(application.is_null(), !isUpdate);
    }
    if (isUpdate) {
        EXPECT_EQ(dataOf(phone, tide), data);
        EXPECT_EQ(contents(phone).size(), before.size()) << "one of the two versions alone is left";
    }
}

INSTANTIATE_TEST_SUITE_P(InstallationScenario, KilledInstallation, testing::ValuesIn(deaths));

TEST(InstallationScenario, TheStoreInstallsWhatItLetsThrough)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    constexpr const char* bank = "com.example.bank";
    const std::string data = dataOf(phone, bank);
    EXPECT_EQ(applicationOf(phone, bank)["applicationVersion"], "4.2.1");
    const Json bought = phone.answer({ "phone", "store", "buy", bank, "org.example.unknown", "--road", "jobs" });
    EXPECT_EQ(
        bought["installed"], Json::parse(R"([{"application": "com.example.bank", "applicationVersion": "4.2.2"}])"));
    EXPECT_EQ(bought["notes"].size(), 1U) << "of the one that the store doesn't have";
    EXPECT_EQ(applicationOf(phone, bank)["applicationVersion"], "4.2.2");
    EXPECT_EQ(dataOf(phone, bank), data);
    EXPECT_EQ(phone.answer({ "app", "show", bank })["record"]["appStoreVendable"], true);

    phone.answer({ "policy", "freeze", bank });
    EXPECT_EQ(phone.answer({ "phone", "store", "buy", bank, "--road", "purchase" })["installed"], Json::array());
    EXPECT_EQ(applicationOf(phone, bank)["applicationVersion"], "4.2.2");
    phone.answer({ "policy", "unfreeze", bank });

    EXPECT_EQ(phone.answer({ "phone", "uninstall", bank })["removed"], true);
    EXPECT_FALSE(isShown(phone, bank));
    phone.answer({ "phone", "store", "buy", bank });
    EXPECT_TRUE(isShown(phone, bank)) << "SpringBoard hears of it from the store's process";
    EXPECT_EQ(phone.answer({ "phone", "tap", bank })["opened"], Json::array({ bank }));
}

} // namespace scenario
