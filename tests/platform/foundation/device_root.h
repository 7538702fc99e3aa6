#pragma once

#include "platform/foundation/files.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <string_view>

namespace platform {

/// A device's root of a test's own, in a directory of its own on the host; gone with the object.
class DeviceRoot {
public:
    DeviceRoot()
    {
        std::string pattern = std::filesystem::temp_directory_path() / "device-XXXXXX";
        host_ = ::mkdtemp(pattern.data());
        std::filesystem::create_directory(root());
        EXPECT_TRUE(setDeviceRoot(root()));
    }
    ~DeviceRoot() { std::filesystem::remove_all(host_); }
    DeviceRoot(const DeviceRoot&) = delete;
    DeviceRoot& operator=(const DeviceRoot&) = delete;

    std::filesystem::path outside() const { return host_; } ///< the directory that the root is in
    std::filesystem::path root() const { return host_ / "root"; }
    std::filesystem::path at(std::string_view devicePath) const
    {
        return root() / std::filesystem::path(devicePath).relative_path();
    }

    /// Writes on the host, past the code under test; makes the directories.
    void put(std::string_view devicePath, std::string_view content) const
    {
        std::filesystem::create_directories(at(devicePath).parent_path());
        std::ofstream(at(devicePath), std::ios::binary) << content;
    }

    std::string get(std::string_view devicePath) const
    {
        std::ifstream file(at(devicePath), std::ios::binary);
        return { std::istreambuf_iterator(file), {} };
    }

    void link(std::string_view target, std::string_view devicePath) const
    {
        std::filesystem::create_symlink(target, at(devicePath));
    }

private:
    std::filesystem::path host_;
};

} // namespace platform
