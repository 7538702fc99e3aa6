#include "platform/foundation/device_path.h"

#include "platform/foundation/device_root.h"

#include <atomic>
#include <fcntl.h>
#include <random>
#include <thread>

namespace platform {
namespace {

using detail::KernelHelp;

std::string kindName(std::string_view path)
{
    static constexpr const char* names[] { "missing", "file", "directory", "other" };
    return names[static_cast<int>(fileKind(path))];
}

/// A root full of links that mean to lead out of it, beside a secret that nobody may read.
class HostileRoot {
public:
    HostileRoot()
    {
        std::ofstream(device.outside() / "secret") << "secret";
        device.put("/secret", "own");
        device.put("/dir/inner/file", "inner");
        device.put("/dir/" + std::string(255, 'n'), "long");
        device.link("/dir", "/absolute");
        device.link("../../../..", "/dir/up");
        device.link("../../secret", "/dir/escape");
        device.link((device.outside() / "secret").string(), "/host");
        device.link("/host/../secret", "/dir/through");
        device.link("loop-b", "/loop-a");
        device.link("loop-a", "/loop-b");
        device.link("nowhere", "/dangling");
        device.link("inner/file", "/dir/tofile");
        device.link("/secret", "/dir/inner/rooted");
        device.link("dir/", "/slashed");
        device.link("secret/", "/notdir");
        device.link("secret", "/chain-1");
        for (int length = 2; length <= 41; ++length)
            device.link("chain-" + std::to_string(length - 1), "/chain-" + std::to_string(length));
    }

    DeviceRoot device;
};

class EachWay : public testing::TestWithParam<KernelHelp> {
protected:
    EachWay() { detail::setKernelHelp(GetParam()); }
};

INSTANTIATE_TEST_SUITE_P(DevicePaths, EachWay, testing::Values(KernelHelp::Asked, KernelHelp::Declined),
    [](const auto& info) { return info.param == KernelHelp::Asked ? "WithKernelHelp" : "WithoutKernelHelp"; });

TEST_P(EachWay, NothingLeadsOutOfTheRoot)
{
    const HostileRoot hostile;
    struct Case {
        std::string path;
        std::string kind;
        std::string content;
    };
    const Case cases[] {
        { "/", "directory", "" },
        { "", "missing", "" },
        { "/..", "directory", "" },
        { "/../secret", "file", "own" },
        { "../../../secret", "file", "own" },
        { "dir/inner/../inner//./file", "file", "inner" },
        { "/dir/up", "directory", "" },
        { "/dir/up/secret", "file", "own" },
        { "/dir/up/../secret", "file", "own" },
        { "/dir/escape", "file", "own" },
        { "/host", "missing", "" },
        { "/dir/through", "missing", "" },
        { "/absolute/inner/file", "file", "inner" },
        { "/absolute/../secret", "file", "own" },
        { "/dir/tofile", "file", "inner" },
        { "/dir/tofile/", "missing", "" },
        { "/dir/inner/rooted", "file", "own" },
        { "/secret/", "missing", "" },
        { "/secret/..", "missing", "" },
        { "/secret/../secret", "missing", "" },
        { "/slashed", "directory", "" },
        { "/slashed/inner/", "directory", "" },
        { "/slashed/inner/.", "directory", "" },
        { "/notdir", "missing", "" },
        { "/loop-a", "missing", "" },
        { "/loop-a/x", "missing", "" },
        { "/dangling", "missing", "" },
        { "/chain-40", "file", "own" },
        { "/chain-41", "missing", "" },
        { "/dir/" + std::string(255, 'n'), "file", "long" },
        { "/" + std::string(256, 'n'), "missing", "" },
        { "/" + std::string(256, 'n') + "/../secret", "missing", "" },
        { "/" + std::string(5000, '/') + "secret", "missing", "" },
        { std::string("/secret\0.png", 12), "missing", "" },
    };
    for (const auto& [path, kind, content] : cases) {
        EXPECT_EQ(kindName(path), kind) << path;
        EXPECT_EQ(readFile(path).value_or(""), content) << path;
    }
}

TEST_P(EachWay, ChangesStayInTheRoot)
{
    const HostileRoot hostile;
    const DeviceRoot& device = hostile.device;
    EXPECT_EQ(writeFileAtomically("/dir/up/../new", "1"), 0);
    EXPECT_EQ(device.get("/new"), "1");
    EXPECT_EQ(createDirectories("/dir/up/../made/../made/deep/"), 0);
    EXPECT_TRUE(std::filesystem::is_directory(device.at("/made/deep")));
    EXPECT_FALSE(std::filesystem::exists(device.outside() / "made"));

    EXPECT_EQ(writeFileAtomically("/dir/escape", "2"), 0); // the link goes, what it led to stays
    EXPECT_FALSE(std::filesystem::is_symlink(device.at("/dir/escape")));
    EXPECT_EQ(device.get("/dir/escape") + device.get("/secret"), "2own");

    EXPECT_EQ(removeFile("/host"), 0);
    EXPECT_TRUE(std::filesystem::exists(device.outside() / "secret"));
    EXPECT_EQ(removeFile("/dir/up"), 0);

    for (const std::string_view path : { "/", "/.", "/..", "/dir/..", "/dir/.", "." }) {
        EXPECT_EQ(removeFile(path), EINVAL) << path;
        EXPECT_EQ(writeFileAtomically(path, ""), EINVAL) << path;
    }
    EXPECT_EQ(writeFileAtomically(std::string_view("/a\0b", 4), ""), ENOENT);
    EXPECT_EQ(writeFileAtomically("/" + std::string(256, 'n'), ""), ENAMETOOLONG);
    EXPECT_EQ(writeFileAtomically("/" + std::string(255, 'n'), ""), 0);
    EXPECT_EQ(writeFileAtomically("/secret/x", ""), ENOTDIR);
    EXPECT_EQ(createDirectories("/loop-a/x"), ELOOP);
    EXPECT_EQ(createDirectories("/dangling"), EEXIST);
    EXPECT_EQ(createDirectories("/secret/x"), ENOTDIR);
}

TEST_P(EachWay, ARenameMeanwhileLetsNobodyOut)
{
    const HostileRoot hostile;
    const DeviceRoot& device = hostile.device;
    std::filesystem::create_directories(device.at("/a/b/c"));
    std::atomic<bool> done { false };
    std::thread mover([&] {
        // The kernel refuses ".." to who looks during any rename, so leave it some time in between.
        for (unsigned round = 0, seen = 0; !done; ++round) {
            if (round % 50 == 0)
                std::filesystem::rename(device.at("/a/b/c"), device.at("/c"));
            else if (round % 50 == 10)
                std::filesystem::rename(device.at("/c"), device.at("/a/b/c"));
            else
                seen += std::filesystem::exists(device.at("/a/b/c")) ? 1 : 0;
        }
    });
    int found = 0;
    for (int attempt = 0; attempt < 3000; ++attempt)
        if (const auto content = readFile("/a/b/c/../../../../secret")) {
            ASSERT_EQ(*content, "own");
            ++found;
        }
    done = true;
    mover.join();
    EXPECT_GT(found, 0);
}

TEST(DevicePaths, BothWaysAgreeOnRandomPaths)
{
    const HostileRoot hostile;
    constexpr std::string_view components[] { "..", ".", "", "dir", "inner", "file", "secret", "absolute", "up",
        "escape", "host", "loop-a", "dangling", "tofile", "rooted", "slashed", "notdir", "chain-20", "chain-30",
        "through" };
    std::mt19937 random(7);
    const auto look = [](KernelHelp help, const std::string& path) {
        detail::setKernelHelp(help);
        return kindName(path) + ":" + readFile(path).value_or("") + ":"
            + std::to_string(detail::openDevicePath(path, O_RDONLY).error);
    };
    int existing = 0;
    for (int round = 0; round < 3000; ++round) {
        std::string path;
        for (std::size_t length = 1 + random() % 5; length > 0; --length)
            path += "/" + std::string(components[random() % std::size(components)]);
        const std::string kernel = look(KernelHelp::Asked, path);
        ASSERT_EQ(look(KernelHelp::Declined, path), kernel) << path;
        ASSERT_FALSE(kernel.starts_with("file:secret")) << path;
        existing += kernel.starts_with("missing") ? 0 : 1;
    }
    EXPECT_GT(existing, 200);
}

TEST(DevicePaths, TheSameRootAgainTakesNothing)
{
    const DeviceRoot root;
    const auto open = [] { return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}); };
    const auto before = open();
    for (int round = 0; round < 10; ++round)
        EXPECT_TRUE(setDeviceRoot(root.root()));
    EXPECT_EQ(open(), before);
    std::filesystem::rename(root.root(), root.outside() / "aside");
    std::filesystem::create_directory(root.root());
    EXPECT_TRUE(setDeviceRoot(root.root())) << "another folder of the name";
    EXPECT_EQ(writeFileAtomically("/x", ""), 0);
    EXPECT_TRUE(std::filesystem::exists(root.at("/x")));
}

TEST(DevicePaths, NothingExistsWithoutARoot)
{
    EXPECT_EQ(kindName("/"), "missing");
    EXPECT_EQ(deviceRoot(), "");
    EXPECT_FALSE(setDeviceRoot("/nowhere at all"));
    EXPECT_EQ(writeFileAtomically("/x", ""), ENOENT);
}

} // namespace
} // namespace platform
