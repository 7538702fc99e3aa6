#include "core/paths.h"

#include "platform/darwin/images.h"
#include "state/app_brightness_manager.h"
#include "state/app_mute_manager.h"
#include "support/temporary_device.h"

#include <gtest/gtest.h>

#include <vector>

namespace appledger {

using namespace platform;

namespace {

class Paths : public testing::Test {
protected:
    void loadFrom(std::string imagePath) { setImagePath(reinterpret_cast<const void*>(&ALCompatiblePath), imagePath); }

    void haveOnly(const std::vector<std::string>& directories)
    {
        for (const auto& entry : std::filesystem::directory_iterator(device_.root()))
            std::filesystem::remove_all(entry);
        for (const std::string& directory : directories)
            std::filesystem::create_directories(device_.at(directory));
    }

private:
    const support::TemporaryDevice device_;
};

constexpr std::string_view resources = "/Library/Application Support/AppLedger/Resources.bundle";

TEST_F(Paths, FollowTheRootThatTheLibraryWasLoadedFrom)
{
    const std::string plain(resources);
    const std::string rootless = "/var/jb" + plain;
    const std::string random = "/var/containers/Bundle/Application/.jbroot-0123ABCD";
    const struct {
        std::string image;
        bool existsRootless;
        std::string expected;
    } cases[] = {
        { random + "/usr/lib/TweakInject/AppLedger.dylib", false, random + plain },
        { random + "/usr/lib/TweakInject/AppLedger.dylib", true, random + plain },
        { "/var/jb/Library/MobileSubstrate/DynamicLibraries/AppLedger.dylib", false, rootless },
        { "/Library/MobileSubstrate/DynamicLibraries/AppLedger.dylib", true, rootless },
        { "/Library/MobileSubstrate/DynamicLibraries/AppLedger.dylib", false, plain },
        { "/elsewhere/AppLedger.dylib", true, rootless },
        { "/elsewhere/AppLedger.dylib", false, plain },
        { "/a/Library/PreferenceBundles/x.bundle/x", false, "/a" + plain },
        { "/a/Library/Application Support/x", false, "/a" + plain },
        { "/a/usr/lib/TweakInject/Library/MobileSubstrate/x", false, "/a/usr/lib/TweakInject" + plain },
        { "/usr/lib/TweakInject/Library/PreferenceBundles/x", true, rootless },
        { "/a/usr/lib/TweakInjected/x", false, plain },
    };
    for (const auto& [image, existsRootless, expected] : cases) {
        loadFrom(image);
        haveOnly(existsRootless ? std::vector { rootless } : std::vector<std::string> {});
        EXPECT_EQ(ALCompatiblePath(resources), expected) << image << (existsRootless ? ", rootless" : "");
    }
}

TEST_F(Paths, OfAnImageThatNobodyKnowsAreTriedUnderTheRootlessRoot)
{
    haveOnly({ "/var/jb/here" });
    EXPECT_EQ(ALCompatiblePath("/here"), "/var/jb/here");
    EXPECT_EQ(ALCompatiblePath("/there"), "/there");
}

TEST_F(Paths, OfTheSideFilesAndRootHideFollowTheDirectoriesThatExist)
{
    const std::string rootHide = "/var/mobile/Library/RootHide";
    const std::string preferences = "/var/mobile/Library/Preferences/";
    const struct {
        std::vector<std::string> directories;
        std::string sideRoot;
        std::string rootHideRoot;
        bool isRootHide;
    } cases[] = {
        { {}, "", "", false },
        { { rootHide }, "", "", true },
        { { "/var/jb" }, "/var/jb", "", false },
        { { "/var/jb", rootHide }, "/var/jb", "", true },
        { { "/var/jb" + rootHide }, "/var/jb", "/var/jb", true },
        { { "/var/jb/var/mobile/Library" }, "/var/jb", "", false },
    };
    for (const auto& [directories, sideRoot, rootHideRoot, isRootHide] : cases) {
        haveOnly(directories);
        EXPECT_EQ(GetAppMutePrefPath(), sideRoot + preferences + "com.orbelix.appmute.plist");
        EXPECT_EQ(appBrightnessPreferencePath(), sideRoot + preferences + "com.orbelix.appbrightness.plist");
        EXPECT_EQ(GetRootHideConfigPath(), rootHideRoot + rootHide + "/RootHideConfig.plist");
        EXPECT_EQ(IsRootHideEnvironment(), isRootHide);
    }
}

TEST_F(Paths, OfChoicyAreTakenWhereOneExists)
{
    const std::string bundle = "/Library/PreferenceBundles/ChoicyPrefs.bundle";
    const std::string literal = "/var/containers/Bundle/Application/.jbroot-XXXXXXXX" + bundle;
    const struct {
        std::string image;
        std::vector<std::string> existing;
        std::string expected; ///< "": none
    } cases[] = {
        { "/a/basebin/x", {}, "" },
        { "/a/basebin/x", { bundle, "/a" + bundle, "/var/jb" + bundle }, "/a" + bundle },
        { "/a/basebin/x", { bundle, "/var/jb" + bundle }, "/var/jb" + bundle },
        { "/a/procursus/basebin/x", { "/a" + bundle, "/a/procursus" + bundle }, "/a/procursus" + bundle },
        { "/a/procursus/basebin/x", { "/a" + bundle }, "/a" + bundle },
        { "/a/Library/TweakInject/x", { "/a" + bundle }, "/a" + bundle },
        { "/a/Library/PreferenceBundles/x", { "/a" + bundle }, "" },
        { "/basebin/x", { bundle, "/var/jb" + bundle }, bundle },
        { "/x", { bundle, literal, "/private/var/jb" + bundle }, "/private/var/jb" + bundle },
        { "/x", { bundle, literal }, literal },
        { "/x", { bundle }, bundle },
    };
    for (const auto& [image, existing, expected] : cases) {
        loadFrom(image);
        haveOnly(existing);
        EXPECT_EQ(choicyBundlePath().value_or(""), expected) << image << " with " << existing.size();
    }
}

} // namespace

} // namespace appledger
