#pragma once

#include <string>

namespace phone {

/// "1.4" gives "1.5".
std::string versionAfter(const std::string& version);

/// Installs what the store has: of an application on the phone the next version, and of one that isn't there, or has
/// nothing but its data left, the one that the phone came with. "" or why that can't be, for people. Any process.
std::string deliverFromStore(const std::string& bundleIdentifier);

/// Puts together in a staged container an application that the phone came with, as it was or as that version. "" or why
/// that can't be, for people.
std::string stageSample(
    const std::string& bundleIdentifier, const std::string& version, const std::string& stagedContainer);

} // namespace phone
