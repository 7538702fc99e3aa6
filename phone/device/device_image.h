#pragma once

#include <optional>
#include <string>

namespace phone {

/// Makes the directory a device: the folders of a phone, its sample applications with their containers,
/// and the library in the injection substrate's folder. What is there already stays, preferences above all;
/// only the library and its filter are brought up to date. Empty when all is well, else a sentence that says
/// what couldn't be done; nothing half-written is left then.
std::optional<std::string> prepareDevice(const std::string& root, const std::string& libraryPath);

} // namespace phone
