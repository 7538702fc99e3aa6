#include "platform/darwin/bus_daemon.h"

#include "platform/foundation/descriptor.h"

#include <array>
#include <cctype>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace platform {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds startLimit(10'000);

/// The daemon's own limit, which is below the system's 107 bytes.
constexpr std::size_t longestSocketPath = 99;

constexpr int exitWhenNotExecuted = 127;

using detail::Descriptor;

/// What the daemon needs of this process, made ready before the fork: after it only calls that are safe
/// in the copy of one thread of many are made.
struct Launch {
    std::string configurationPath;
    Descriptor addressReader;
    Descriptor addressWriter;
    Descriptor log;
    Descriptor nothing;
    pid_t parent = getpid();
};

[[noreturn]] void becomeDaemon(const Launch& launch, const char* configuration, const char* address)
{
    // A group of its own: Ctrl-C at the terminal lets the device's other processes end first.
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != launch.parent)
        _exit(exitWhenNotExecuted);
    // A shortage in the process that starts it, which may pass, isn't the daemon's for ever.
    rlimit descriptors {};
    if (getrlimit(RLIMIT_NOFILE, &descriptors) == 0) {
        descriptors.rlim_cur = descriptors.rlim_max;
        setrlimit(RLIMIT_NOFILE, &descriptors);
    }
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    dup2(launch.nothing.get(), STDIN_FILENO);
    dup2(launch.log.get(), STDOUT_FILENO);
    dup2(launch.log.get(), STDERR_FILENO);
    fcntl(launch.addressWriter.get(), F_SETFD, 0);
    execlp("dbus-daemon", "dbus-daemon", configuration, address, "--nofork", "--nopidfile", "--nosyslog",
        static_cast<char*>(nullptr));
    _exit(errno == ENOENT ? exitWhenNotExecuted : exitWhenNotExecuted - 1);
}

bool printsItsAddress(int descriptor)
{
    const steady_clock::time_point deadline = steady_clock::now() + startLimit;
    while (true) {
        const auto remaining = std::chrono::duration_cast<milliseconds>(deadline - steady_clock::now());
        if (remaining <= milliseconds::zero())
            return false;
        pollfd polled { descriptor, POLLIN, 0 };
        if (poll(&polled, 1, static_cast<int>(remaining.count())) <= 0)
            continue;
        std::array<char, 512> text;
        const ssize_t count = read(descriptor, text.data(), text.size());
        if (count <= 0)
            return false;
        if (std::memchr(text.data(), '\n', static_cast<std::size_t>(count)))
            return true;
    }
}

/// Made anew, so that it is nobody else's, and no link leads elsewhere.
Descriptor newFileIn(const std::string& runDirectory, const char* name)
{
    const Descriptor directory(open(runDirectory.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!directory)
        return {};
    unlinkat(directory.get(), name, 0);
    return Descriptor(
        openat(directory.get(), name, O_WRONLY | O_CREAT | O_EXCL | O_APPEND | O_NOFOLLOW | O_CLOEXEC, 0600));
}

std::string contentOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return { std::istreambuf_iterator<char>(file), {} };
}

std::string whyItEnded(int status, const std::string& logPath)
{
    if (WIFEXITED(status) && WEXITSTATUS(status) == exitWhenNotExecuted)
        return "the program dbus-daemon isn't installed (Debian package: dbus-daemon)";
    std::string said = contentOf(logPath);
    while (!said.empty() && std::isspace(static_cast<unsigned char>(said.back())))
        said.pop_back();
    return "dbus-daemon didn't start to listen" + (said.empty() ? std::string() : ": " + said);
}

} // namespace

std::string busSocketPath(const std::string& runDirectory)
{
    return runDirectory + "/bus";
}

std::string busAddress(std::string_view socketPath)
{
    constexpr std::string_view plain = "-_/.";
    constexpr std::string_view digits = "0123456789abcdef";
    std::string address = "unix:path=";
    for (const char character : socketPath) {
        const auto byte = static_cast<unsigned char>(character);
        if ((byte < 0x80 && std::isalnum(byte)) || plain.find(character) != std::string_view::npos)
            address += character;
        else
            address.append({ '%', digits[byte >> 4], digits[byte & 15] });
    }
    return address;
}

std::string busDaemonConfiguration(std::string_view socketPath)
{
    std::string configuration = "<busconfig>\n  <type>session</type>\n  <listen>";
    configuration += busAddress(socketPath);
    configuration += "</listen>\n"
                     "  <auth>EXTERNAL</auth>\n"
                     "  <policy context=\"default\">\n"
                     "    <allow own=\"*\"/>\n"
                     "    <allow send_destination=\"*\"/>\n"
                     "    <allow receive_sender=\"*\"/>\n"
                     "  </policy>\n";
    // A process that is stopped in a debugger makes the others' messages wait in the daemon.
    constexpr std::pair<std::string_view, long> limits[] = {
        { "max_incoming_bytes", 1'000'000'000 },
        { "max_outgoing_bytes", 1'000'000'000 },
        { "max_message_size", 128L << 20 },
        { "max_completed_connections", 10'000 },
        { "max_incomplete_connections", 10'000 },
        { "max_connections_per_user", 10'000 },
        { "max_names_per_connection", 1'000 },
        { "max_match_rules_per_connection", 1'000 },
        { "max_replies_per_connection", 100'000 },
    };
    for (const auto& [name, value] : limits)
        configuration.append("  <limit name=\"")
            .append(name)
            .append("\">")
            .append(std::to_string(value))
            .append("</limit>\n");
    configuration += "</busconfig>\n";
    return configuration;
}

int startBusDaemon(const std::string& runDirectory, std::string& error)
{
    const std::string socketPath = busSocketPath(runDirectory);
    if (socketPath.size() > longestSocketPath) {
        error = "the path of the bus's socket is longer than " + std::to_string(longestSocketPath)
            + " bytes: " + socketPath;
        return -1;
    }
    Launch launch;
    launch.configurationPath = runDirectory + "/bus.conf";
    const std::string logPath = runDirectory + "/bus.log";
    launch.log = newFileIn(runDirectory, "bus.log");
    const Descriptor configurationFile = newFileIn(runDirectory, "bus.conf");
    const std::string configuration = busDaemonConfiguration(socketPath);
    if (!launch.log || !configurationFile
        || write(configurationFile.get(), configuration.data(), configuration.size())
            != static_cast<ssize_t>(configuration.size())) {
        error = "the bus's files can't be written in " + runDirectory;
        return -1;
    }
    std::array<int, 2> ends { -1, -1 };
    launch.nothing = Descriptor(open("/dev/null", O_RDONLY | O_CLOEXEC));
    if (launch.nothing.get() < 0 || pipe2(ends.data(), O_CLOEXEC) != 0) {
        error = std::string("dbus-daemon can't be started: ") + std::strerror(errno);
        return -1;
    }
    launch.addressReader = Descriptor(ends[0]);
    launch.addressWriter = Descriptor(ends[1]);
    const std::string configurationArgument = "--config-file=" + launch.configurationPath;
    const std::string addressArgument = "--print-address=" + std::to_string(ends[1]);

    const pid_t daemon = fork();
    if (daemon == 0)
        becomeDaemon(launch, configurationArgument.c_str(), addressArgument.c_str());
    if (daemon < 0) {
        error = std::string("dbus-daemon can't be started: ") + std::strerror(errno);
        return -1;
    }
    launch.addressWriter = Descriptor();
    if (printsItsAddress(launch.addressReader.get())) {
        // The daemon opens its socket to everybody, and refuses other users only when they have connected.
        chmod(socketPath.c_str(), 0600);
        return daemon;
    }
    kill(daemon, SIGKILL);
    int status = 0;
    while (waitpid(daemon, &status, 0) < 0 && errno == EINTR) { }
    error = whyItEnded(status, logPath);
    return -1;
}

} // namespace platform
