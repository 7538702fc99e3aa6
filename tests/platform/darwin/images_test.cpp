#include "platform/darwin/images.h"

#include "platform/foundation/device_root.h"

#include <dlfcn.h>
#include <link.h>
#include <sys/stat.h>
#include <vector>

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

/// The base addresses of the libraries that were loaded from descriptors, in their order.
std::vector<const void*> loadedFromDescriptors()
{
    std::vector<const void*> bases;
    ::dl_iterate_phdr(
        [](dl_phdr_info* information, std::size_t, void* found) {
            if (std::string_view(information->dlpi_name).starts_with("/proc/self/fd/"))
                static_cast<std::vector<const void*>*>(found)->push_back(
                    reinterpret_cast<const void*>(information->dlpi_addr));
            return 0;
        },
        &bases);
    return bases;
}

/// A library that this process has loaded already, and that is none of ours: a copy of it can be loaded again.
std::filesystem::path someLibrary()
{
    std::string path;
    ::dl_iterate_phdr(
        [](dl_phdr_info* information, std::size_t, void* found) {
            const std::string_view name = information->dlpi_name;
            if (name.find("/libplist") == std::string_view::npos)
                return 0;
            *static_cast<std::string*>(found) = name;
            return 1;
        },
        &path);
    return path;
}

TEST(LoadedLibrary, IsTheDevicesOwnWhereverLinksLead)
{
    const DeviceRoot device;
    // On the host a file that is no library lies where the link leads; beneath the device's root a library does.
    const std::string elsewhere = device.outside() / "elsewhere";
    std::filesystem::create_directories(elsewhere);
    std::ofstream(elsewhere + "/One.dylib") << "no library";
    device.link(elsewhere, "/Library");
    device.put(elsewhere + "/folder/file", "");
    std::filesystem::copy_file(someLibrary(), device.at(elsewhere + "/One.dylib"));
    std::filesystem::copy_file(someLibrary(), device.at("/Two.dylib"));

    EXPECT_EQ(loadLibrary("/Library/One.dylib"), "");
    EXPECT_EQ(loadLibrary("/Two.dylib"), "");
    // As an update does, while both are loaded.
    std::filesystem::rename(device.at("/Two.dylib"), device.at("/Former.dylib"));
    std::filesystem::remove(device.at(elsewhere + "/One.dylib"));
    const auto bases = loadedFromDescriptors();
    ASSERT_EQ(bases.size(), 2U);
    EXPECT_EQ(platform::dladdr(bases[0]), elsewhere + "/One.dylib");
    EXPECT_EQ(platform::dladdr(bases[1]), "/Two.dylib");
}

TEST(LoadedLibrary, IsOneOrTheReasonIsTold)
{
    const DeviceRoot device;
    device.put("/text.dylib", "no library");
    device.link("/text.dylib", "/link.dylib");
    ASSERT_EQ(::mkfifo(device.at("/pipe.dylib").c_str(), 0600), 0);
    for (const char* const path : { "/missing.dylib", "/text.dylib", "/link.dylib", "/pipe.dylib", "/" })
        EXPECT_TRUE(loadLibrary(path).starts_with(std::string(path) + ": ")) << loadLibrary(path);
    EXPECT_TRUE(loadedFromDescriptors().empty());
}

} // namespace
