#pragma once

#include <string>

namespace cli {

/// Copies a folder of this computer into that folder of the device, as an application's bundle: its regular files, and
/// what its links to files of its own lead to, without their owners and their rights but for that to be run. Nothing of
/// it lies outside afterwards, and nothing outside is read. "" or why it can't be, for people; then some of it may be
/// there.
std::string copyBundle(const std::string& folder, const std::string& stagedContainer);

} // namespace cli
