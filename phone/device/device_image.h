#pragma once

#include <string>
#include <vector>

namespace phone {

struct DevicePreparation {
    std::string problem {}; ///< "" when all is well, else a sentence that says what couldn't be done
    std::vector<std::string> passedOver {}; ///< sentences: sample applications that couldn't be put in order, and why
};

/// Makes the directory a device: the folders of a phone, its sample applications with their containers,
/// and the library in the injection substrate's folder. What is there already stays, preferences above all;
/// only the library and its filter are brought up to date. An application that the owner has removed stays removed, and
/// one whose folders are odd doesn't hold up the others. Nothing is left half-written.
DevicePreparation prepareDevice(const std::string& root, const std::string& libraryPath);

} // namespace phone
