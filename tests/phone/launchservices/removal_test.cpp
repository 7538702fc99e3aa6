#include "phone/device/device_image.h"
#include "phone/device/removed_applications.h"
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

constexpr const char* notes = "com.example.notes";

/// A device on which bundles and data containers are put where a test wants them.
class Device : public support::TemporaryDevice {
public:
    void bundle(const std::string& path, const std::string& identifier) const
    {
        write(path + "/Info.plist", dictionary({ { "CFBundleIdentifier", string(identifier) } }));
    }
    void container(const std::string& name, const std::string& identifier) const
    {
        write("/var/mobile/Containers/Data/Application/" + name + "/.com.apple.mobile_container_manager.metadata.plist",
            dictionary({ { "MCMMetadataIdentifier", string(identifier) } }));
    }
};

std::string installed()
{
    std::string text;
    for (const InstalledApplication& application : installedApplications())
        text += application.bundleIdentifier + " at " + application.bundlePath
            + (application.isSystem ? " system; " : "; ");
    return text;
}

const std::string bundles = "/var/containers/Bundle/Application/";
const std::string containers = "/var/mobile/Containers/Data/Application/";

TEST(InstalledApplications, HaveAnIdentifierOnceAndTheSystemsComeFirst)
{
    const Device device;
    device.bundle("/Applications/Settings.app", "com.apple.Preferences");
    device.bundle(bundles + "A/Impostor.app", "com.apple.Preferences");
    device.bundle(bundles + "C/Notes.app", notes);
    device.bundle(bundles + "B/Other.app", notes);
    EXPECT_EQ(installed(),
        "com.apple.Preferences at /Applications/Settings.app system; com.example.notes at " + bundles
            + "B/Other.app; ");
    EXPECT_NE(removeInstalledApplication("com.apple.Preferences"), "");
    EXPECT_TRUE(fileExists(bundles + "A/Impostor.app"));
}

TEST(RemovalOfAnApplication, LeavesNoBundleOfItsIdentifierAndEveryNeighbour)
{
    const Device device;
    device.bundle(bundles + "A/Notes.app", notes);
    device.bundle(bundles + "B/Notes.app", notes);
    device.bundle(bundles + "B/Mail.app", "com.example.mail");
    device.container("D", notes);
    device.container("E", notes);
    device.container("F", "com.example.mail");
    EXPECT_EQ(removeInstalledApplication(notes), "");
    EXPECT_EQ(installed(), "com.example.mail at " + bundles + "B/Mail.app; ");
    EXPECT_EQ(directoryEntries(bundles), std::vector<std::string> { "B" });
    EXPECT_EQ(directoryEntries(containers), std::vector<std::string> { "F" });
    EXPECT_EQ(foldersOfRemovedApplications(), std::vector<std::string> {});
}

TEST(RemovalOfAnApplication, ThatCantBeWrittenDownLeavesItWhole)
{
    const Device device;
    device.bundle(bundles + "A/Notes.app", notes);
    std::ofstream(device.at("/var/db")) << "in the way";
    EXPECT_NE(removeInstalledApplication(notes), "");
    EXPECT_EQ(installed(), "com.example.notes at " + bundles + "A/Notes.app; ");
}

TEST(RemovalOfAnApplication, ThatIsInterruptedIsOverForEveryoneAndFinishedLater)
{
    const Device device;
    device.bundle(bundles + "A/Notes.app", notes);
    device.container("D", notes);
    // As a process leaves it that is killed when it has decided.
    device.write("/var/db/removed_applications.plist",
        dictionary(
            { { notes, array({ bundles + "A", containers + "D", std::string("/var"), bundles + "..", bundles }) } }));
    EXPECT_EQ(installed(), "");
    EXPECT_EQ(dataContainerOf(notes), std::nullopt);
    EXPECT_EQ(finishRemovals().size(), 3U) << "what is no application's folder stays";
    EXPECT_EQ(directoryEntries(bundles), std::vector<std::string> {});
    EXPECT_EQ(directoryEntries(containers), std::vector<std::string> {});
    device.bundle(bundles + "B/Notes.app", notes);
    EXPECT_EQ(installed(), "com.example.notes at " + bundles + "B/Notes.app; ") << "installed anew";
}

TEST(DeviceImage, LeavesRemovedApplicationsOutAndPassesOverWhatIsOdd)
{
    const Device device;
    const std::string library = device.outside() / "library.so";
    std::ofstream(library) << "library";
    ASSERT_EQ(prepareDevice(deviceRoot(), library).problem, "");
    const std::size_t all = installedApplications().size();
    ASSERT_EQ(removeInstalledApplication(notes), "");
    const auto odd = dataContainerOf("com.example.mail");
    ASSERT_TRUE(odd);
    std::filesystem::remove_all(device.at(*odd + "/Library"));
    device.link("/nowhere", *odd + "/Library");

    const DevicePreparation again = prepareDevice(deviceRoot(), library);
    EXPECT_EQ(again.problem, "");
    ASSERT_EQ(again.passedOver.size(), 1U);
    EXPECT_EQ(again.passedOver.front().substr(0, 32), "com.example.mail is passed over:");
    EXPECT_EQ(installedApplications().size(), all - 1);
    EXPECT_EQ(dataContainerOf(notes), std::nullopt);
}

} // namespace
} // namespace phone
