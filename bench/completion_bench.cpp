#include "platform/foundation/files.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/values.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

/// Usage: completion_bench [APPLICATIONS] [ROUNDS]
///
/// How long a shell waits for `appledger complete`, from the command's start to its end, on a phone with that many
/// applications; beside `appledger --version`, which is what a start costs. The rounds of all lines take turns.

namespace {

using namespace platform;
using Clock = std::chrono::steady_clock;

struct Line {
    const char* what;
    std::vector<std::string> words;
    std::vector<double> milliseconds {};
};

double millisecondsOf(const std::string& root, const std::vector<std::string>& words)
{
    std::vector<std::string> all { COMMAND, "--root", root };
    all.insert(all.end(), words.begin(), words.end());
    std::vector<char*> arguments;
    for (std::string& word : all)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const auto start = Clock::now();
    const pid_t child = ::vfork();
    if (child == 0) {
        ::execv(arguments[0], arguments.data());
        ::_exit(127);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    if (status != 0)
        std::abort();
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

void install(int number)
{
    const std::string name = "Application " + std::to_string(number);
    const std::string bundle = "/var/containers/Bundle/Application/" + std::to_string(number) + "/" + name + ".app";
    const std::string identifier = "com.example.application" + std::to_string(number);
    if (createDirectories(bundle) != 0
        || writePropertyList(
               dictionary({ { "CFBundleIdentifier", string(identifier) }, { "CFBundleName", string(name) },
                   { "CFBundleExecutable", string(name) }, { "CFBundleShortVersionString", string("1.0") } }),
               bundle + "/Info.plist", PropertyListFormat::Binary)
            != 0)
        std::abort();
}

} // namespace

int main(int argumentCount, char** arguments)
{
    const int applications = argumentCount > 1 ? std::atoi(arguments[1]) : 1000;
    const int rounds = argumentCount > 2 ? std::atoi(arguments[2]) : 51;
    std::string root = std::filesystem::temp_directory_path() / "completion_bench-XXXXXX";
    if (!::mkdtemp(root.data()) || !setDeviceRoot(root) || createDirectories("/var/mobile/Library/Preferences") != 0)
        return 1;
    for (int number = 0; number < applications; ++number)
        install(number);

    Line lines[] { { "--version", { "--version" } }, { "a verb", { "complete", "--", "policy", "bl" } },
        { "every application", { "complete", "--", "policy", "block", "" } },
        { "one, by its name", { "complete", "--", "phone", "tap", "ation 77" } } };
    const int terminal = ::dup(STDOUT_FILENO);
    ::dup2(::open("/dev/null", O_WRONLY), STDOUT_FILENO);
    for (int round = 0; round < rounds; ++round)
        for (Line& line : lines)
            line.milliseconds.push_back(millisecondsOf(root, line.words));
    ::dup2(terminal, STDOUT_FILENO);
    for (Line& line : lines) {
        std::ranges::sort(line.milliseconds);
        std::printf("%-20s median %6.1f ms, slowest %6.1f ms\n", line.what,
            line.milliseconds[line.milliseconds.size() / 2], line.milliseconds.back());
    }
    std::filesystem::remove_all(root);
    return 0;
}
