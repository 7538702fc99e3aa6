#pragma once

#include "platform/foundation/device_root.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/values.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

namespace support {

/// A device with the folder of preferences and nothing else, on which a test writes as another process
/// would: past the instances of the domain that the process holds.
class TemporaryDevice : public platform::DeviceRoot {
public:
    using Pairs = std::initializer_list<std::pair<std::string_view, platform::id>>;

    static constexpr std::string_view domainFile = "/var/mobile/Library/Preferences/com.merrowlane.appledger.plist";

    TemporaryDevice() { std::filesystem::create_directories(at(domainFile).parent_path()); }

    void write(std::string_view devicePath, const platform::id& value,
        platform::PropertyListFormat format = platform::PropertyListFormat::Xml) const
    {
        std::filesystem::create_directories(at(devicePath).parent_path());
        EXPECT_EQ(platform::writePropertyList(value, devicePath, format), 0) << devicePath;
    }

    /// Replaces the whole preference domain.
    void writeDomain(Pairs pairs) const { write(domainFile, platform::dictionary(pairs)); }

    void installApplication(const std::string& identifier) const
    {
        write("/Applications/" + identifier + ".app/Info.plist",
            platform::dictionary({ { "CFBundleIdentifier", platform::string(identifier) } }));
    }
};

} // namespace support
