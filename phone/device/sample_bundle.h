#pragma once

#include "phone/device/sample_applications.h"

#include <string>
#include <string_view>

namespace phone {

/// Writes the bundle of an application that every phone comes with into the folder at that device path, and beside it
/// what the store knows of it. What is there stays. The version is the application's own where none is given. "" or a
/// sentence without its end that says what couldn't be done.
std::string writeSampleBundle(
    const SampleApplication& application, const std::string& folder, std::string_view version = {});

} // namespace phone
