#pragma once

#include <string>
#include <string_view>

namespace phone {

/// The folder at that device path, with those that every application has in it, and whose it is. What is there stays.
/// 0, or an `errno`.
[[nodiscard]] int makeDataContainer(const std::string& path, std::string_view bundleIdentifier);

/// The same for a container that applications share.
[[nodiscard]] int makeGroupContainer(const std::string& path, std::string_view group);

} // namespace phone
