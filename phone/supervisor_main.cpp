#include "phone/supervisor/supervisor.h"

#include <CLI/CLI.hpp>

/// phone-supervisor: runs the processes of one phone. `appledger phone up` starts it.
int main(int argumentCount, char** arguments)
{
    phone::SupervisorOptions options;
    std::string version;
    CLI::App command("Runs the processes of one phone; started by 'appledger phone up'.");
    command.add_option("--root", options.root, "directory that stands for the device's root")->required();
    command.add_option("--ios", version, "version of the platform")->required();
    command.add_flag("--stock", options.stock, "without the library");
    command.add_option("--command", options.command, "the program that takes back what is to end by itself");
    command.add_option("--ready-fd", options.readyDescriptor, "descriptor that is told when the phone is up");
    CLI11_PARSE(command, argumentCount, arguments);

    const auto parsed = platform::parseSystemVersion(version);
    if (!parsed) {
        std::fprintf(stderr, "not a version: %s\n", version.c_str());
        return 2;
    }
    options.version = *parsed;
    return phone::Supervisor(std::move(options)).run();
}
