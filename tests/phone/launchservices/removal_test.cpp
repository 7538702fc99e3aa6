#include "phone/launchservices/installed_applications.h"
#include "support/temporary_device.h"

namespace phone {

namespace {

using namespace platform;

TEST(RemovalOfAnApplication, RemovesItAndNothingOfTheHosts)
{
    const support::TemporaryDevice device;
    const std::string elsewhere = device.outside() / "elsewhere";
    const std::string application = "/containers/Bundle/Application/A/Notes.app";
    std::filesystem::create_directories(elsewhere + application);
    std::ofstream(elsewhere + application + "/precious") << "precious";
    std::filesystem::remove_all(device.at("/var"));
    // The link leads out of the device only for who doesn't ask the device.
    device.write(
        elsewhere + application + "/Info.plist", dictionary({ { "CFBundleIdentifier", string("com.example.notes") } }));
    device.link(elsewhere, "/var");
    ASSERT_EQ(installedApplications().size(), 1U);

    EXPECT_EQ(removeInstalledApplication("com.example.notes"), "");
    EXPECT_TRUE(installedApplications().empty());
    EXPECT_FALSE(fileExists("/var/containers/Bundle/Application/A"));
    EXPECT_TRUE(std::filesystem::exists(elsewhere + application + "/precious"));
}

} // namespace
} // namespace phone
