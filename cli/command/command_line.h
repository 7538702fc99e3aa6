#pragma once

#include "cli/command/output.h"
#include "cli/command/verb_details.h"

#include <string>
#include <string_view>
#include <vector>

namespace cli {

/// Reads the command line, does what it asks for, and returns the exit status. What can't be read ends with its usage.
ExitStatus runCommandLine(int argumentCount, char** arguments);

/// Every verb with what it takes, in the order of the usage; those that stand in no usage too.
std::vector<VerbDetails> everyVerb();

/// What the verbs of a group are about; "" for words that are no group.
std::string groupDescription(std::string_view words);

} // namespace cli
