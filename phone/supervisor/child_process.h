#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

namespace phone {

/// A program that was started.
struct ChildProcess {
    pid_t pid = -1; ///< -1: it couldn't be started
    int readyDescriptor = -1; ///< becomes readable when the program says that it is ready, or ends
};

/// Starts a program with an argument "--ready-fd N" behind the others: it writes a byte there once it is
/// ready. It is killed when this process ends.
ChildProcess startChild(std::vector<std::string> arguments);

} // namespace phone
