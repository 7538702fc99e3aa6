#include "cli/command/command_line.h"

int main(int argumentCount, char** arguments)
{
    return static_cast<int>(cli::finishOutput(cli::runCommandLine(argumentCount, arguments)));
}
