#include "platform/darwin/images.h"

#include "platform/foundation/files.h"

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <filesystem>

using namespace platform;

namespace {

int answer()
{
    return 42;
}

int otherAnswer()
{
    return 43;
}

IMP imp(int (*function)())
{
    return reinterpret_cast<IMP>(function);
}

TEST(Images, FindDeclaredSymbolsOfDeclaredImages)
{
    const std::string framework = "/System/Library/PrivateFrameworks/TCC.framework/TCC";
    EXPECT_EQ(platform::dlopen(framework, RTLD_LAZY_MODE), nullptr);
    declareImage(framework, std::vector<ImageSymbol> { { "TCCAccessResetForBundle", imp(answer) } });
    const ImageHandle image = platform::dlopen(framework, RTLD_LAZY_MODE);
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(reinterpret_cast<int (*)()>(platform::dlsym(image, "TCCAccessResetForBundle"))(), 42);
    EXPECT_EQ(platform::dlsym(image, "TCCAccessCopyInformationForBundle"), nullptr);
    EXPECT_EQ(platform::dlsym(nullptr, "TCCAccessResetForBundle"), nullptr);

    declareImage(framework, std::vector<ImageSymbol> { { "TCCAccessCopyInformationForBundle", imp(otherAnswer) } });
    EXPECT_EQ(platform::dlopen(framework, RTLD_LAZY_MODE), image);
    EXPECT_EQ(platform::dlsym(image, "TCCAccessResetForBundle"), imp(answer));
    EXPECT_EQ(platform::dlsym(image, "TCCAccessCopyInformationForBundle"), imp(otherAnswer));

    declareImage("/usr/lib/empty.dylib", {});
    EXPECT_NE(platform::dlopen("/usr/lib/empty.dylib", RTLD_LAZY_MODE), nullptr);
}

/// The host's folder that the platform's own library was loaded from.
std::filesystem::path libraryPath()
{
    Dl_info information {};
    EXPECT_NE(::dladdr(reinterpret_cast<const void*>(&declareImage), &information), 0);
    return std::filesystem::canonical(information.dli_fname);
}

TEST(ImagePath, OfALibraryBeneathTheDevicesRootIsItsPathThere)
{
    const auto* const code = reinterpret_cast<const void*>(&declareImage);
    const std::filesystem::path library = libraryPath();
    EXPECT_EQ(platform::dladdr(code), std::nullopt);
    ASSERT_TRUE(setDeviceRoot(library.parent_path()));
    EXPECT_EQ(platform::dladdr(code), "/" + library.filename().string());
    ASSERT_TRUE(setDeviceRoot(library.parent_path().parent_path()));
    EXPECT_EQ(platform::dladdr(code), "/" + (library.parent_path().filename() / library.filename()).string());
    // The test's own executable lies elsewhere.
    ASSERT_TRUE(setDeviceRoot(library.parent_path()));
    EXPECT_EQ(platform::dladdr(reinterpret_cast<const void*>(&answer)), std::nullopt);
}

TEST(ImagePath, ThatTheHostSetWins)
{
    const auto* const code = reinterpret_cast<const void*>(&declareImage);
    ASSERT_TRUE(setDeviceRoot(libraryPath().parent_path()));
    const std::string path = "/var/jb/usr/lib/TweakInject/AppLedger.dylib";
    setImagePath(code, path);
    EXPECT_EQ(platform::dladdr(reinterpret_cast<const void*>(&setImagePath)), path);
    EXPECT_EQ(platform::dladdr(reinterpret_cast<const void*>(&answer)), std::nullopt);
    const int local = 0;
    EXPECT_EQ(platform::dladdr(&local), std::nullopt);
    setImagePath(nullptr, "/nowhere");
    EXPECT_EQ(platform::dladdr(nullptr), std::nullopt);
}

} // namespace
