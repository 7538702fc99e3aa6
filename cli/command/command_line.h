#pragma once

#include "cli/command/output.h"

namespace cli {

/// Reads the command line, does what it asks for, and returns the exit status. What can't be read ends with its usage.
ExitStatus runCommandLine(int argumentCount, char** arguments);

} // namespace cli
