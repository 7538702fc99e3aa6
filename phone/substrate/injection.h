#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace phone {

/// The folder on the device in which the injection substrate finds libraries, each with a filter beside it.
inline constexpr std::string_view substrateFolder = "/Library/MobileSubstrate/DynamicLibraries";

/// What the substrate does in every process before the system's own code runs: loads each library of the
/// folder whose filter (a property list of the same name, see filter.h) names this process. A library without a
/// readable filter, and one that can't be loaded, is passed over; returns why, a line for each. `loading` is told of
/// each library before it is loaded.
std::vector<std::string> injectLibraries(const std::function<void(const std::string& path)>& loading);

/// What was loaded into this process, by device path.
const std::vector<std::string>& injectedLibraries() noexcept;

} // namespace phone
