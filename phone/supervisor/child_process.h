#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

namespace phone {

/// A program that was started.
struct ChildProcess {
    pid_t pid = -1; ///< -1: it couldn't be started, and errno says why
    int reportDescriptor = -1; ///< reads what the program reports of its start, until it closes it or ends
};

/// Starts a program with an argument "--report-fd N" behind the others: it reports there, a line at a time, what it
/// does on its start. It gets no other descriptor but the standard ones, and is killed when this process ends.
ChildProcess startChild(std::vector<std::string> arguments);

/// Marks every descriptor but the standard ones and `kept` (-1: none) as closed by exec. Between fork and exec.
bool closeOnExecAllBut(int kept) noexcept;

} // namespace phone
