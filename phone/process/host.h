#pragma once

#include "platform/darwin/system.h"

#include <string>
#include <string_view>
#include <vector>

namespace phone {

/// How a process of the phone is started.
struct HostOptions {
    std::string root; ///< host path of the device's root
    std::string processName;
    std::string busAddress;
    platform::SystemVersion version;
    bool stock = false; ///< without the injection substrate
    /// Gets the lines "loading PATH" before each library that is injected, and "ready" once the process answers
    /// requests; -1: nobody waits.
    int reportDescriptor = -1;
};

/// Runs a process of the phone until its bus goes or it is told to end. The order is that of the device:
/// the system's classes exist, the substrate loads its libraries, then the system's own code runs. Returns
/// the exit status.
int runProcess(const HostOptions& options);

} // namespace phone
