#include "phone/process/host.h"

#include <CLI/CLI.hpp>

/// phone-process: one process of a phone. The supervisor starts it.
int main(int argumentCount, char** arguments)
{
    phone::HostOptions options;
    std::string version;
    CLI::App command("One process of a phone; started by the phone's supervisor.");
    command.add_option("--root", options.root, "directory that stands for the device's root")->required();
    command.add_option("--process", options.processName, "SpringBoard, Spotlight, …")->required();
    command.add_option("--bus", options.busAddress, "address of the device's bus")->required();
    command.add_option("--ios", version, "version of the platform")->required();
    command.add_flag("--stock", options.stock, "load no library");
    command.add_option("--report-fd", options.reportDescriptor, "descriptor that is told of each step of the start");
    CLI11_PARSE(command, argumentCount, arguments);

    const auto parsed = platform::parseSystemVersion(version);
    if (!parsed) {
        std::fprintf(stderr, "not a version: %s\n", version.c_str());
        return 2;
    }
    options.version = *parsed;
    return phone::runProcess(options);
}
