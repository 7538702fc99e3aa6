#include "cli/command/phone_client.h"
#include "cli/phone/device_verbs.h"
#include "cli/phone/phone_commands.h"
#include "phone/device/device_image.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <poll.h>
#include <sstream>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace cli {

using Json = nlohmann::json;
namespace fs = std::filesystem;

namespace {

std::string notUp(const phone::PhoneDirectory& directory)
{
    return "the phone at " + directory.root() + " isn't up";
}

fs::path binaryFolder()
{
    return fs::read_symlink("/proc/self/exe").parent_path();
}

/// Starts the supervisor; with a descriptor to tell when the phone is up, in a session of its own.
pid_t startSupervisor(const phone::PhoneDirectory& directory, const UpOptions& options, int readyDescriptor)
{
    const std::string program = binaryFolder() / "phone-supervisor";
    std::vector<std::string> arguments { program, "--root", directory.root(), "--ios", options.version.text() };
    if (options.stock)
        arguments.emplace_back("--stock");
    if (readyDescriptor >= 0) {
        arguments.emplace_back("--ready-fd");
        arguments.push_back(std::to_string(readyDescriptor));
    }
    std::vector<char*> pointers;
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);

    const pid_t process = readyDescriptor >= 0 ? ::fork() : 0;
    if (process != 0)
        return process;
    if (readyDescriptor >= 0) {
        ::setsid();
        const int log = ::open(directory.logFile().c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
        const int nothing = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
        ::dup2(nothing, STDIN_FILENO);
        ::dup2(log, STDOUT_FILENO);
        ::dup2(log, STDERR_FILENO);
    }
    ::execv(program.c_str(), pointers.data());
    ::_exit(127);
}

/// The supervisor writes "up", or what went wrong, and closes its end.
std::string readUntilClosed(int descriptor, std::chrono::seconds limit)
{
    std::string text;
    pollfd waiting { descriptor, POLLIN, 0 };
    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (true) {
        const auto left
            = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0 || ::poll(&waiting, 1, static_cast<int>(left.count())) <= 0)
            return text.empty() ? "it didn't come up in time" : text;
        char buffer[256];
        const ssize_t count = ::read(descriptor, buffer, sizeof buffer);
        if (count <= 0)
            return text;
        text.append(buffer, static_cast<std::size_t>(count));
    }
}

Json askSupervisor(const phone::PhoneDirectory& directory, const Json& request)
{
    if (!connectToPhone(directory))
        return { { "ok", false }, { "error", notUp(directory) } };
    return askPhone(phone::supervisorPeer, request);
}

std::string describeStatus(const Json& status)
{
    std::ostringstream out;
    out << "The phone at " << status.value("root", "") << " is up on version " << status.value("ios", "")
        << (status.value("stock", false) ? ", stock.\n" : ".\n");
    for (const Json& process : status["processes"]) {
        out << "  ";
        out.width(14);
        out.setf(std::ios::left, std::ios::adjustfield);
        out << process.value("name", "");
        if (!process.value("running", false)) {
            out << "not running\n";
            continue;
        }
        out << "process " << process.value("pid", 0)
            << (process.value("injected", Json::array()).empty() ? ", not injected" : ", injected");
        if (const int restarts = process.value("restarts", 0); restarts > 0)
            out << ", restarted " << restarts << (restarts == 1 ? " time" : " times");
        out << '\n';
    }
    const std::string front = status.value("front", "");
    out << "In front: " << (front.empty() ? "the Home Screen" : front);
    for (const Json& prompt : status["prompts"]) {
        out << "\nA prompt of " << prompt.value("process", "") << " is up";
        if (prompt["application"].is_string())
            out << " for " << prompt["application"].get<std::string>();
        out << ", for " << static_cast<long>(prompt.value("secondsUp", 0.0)) << " s: \"" << prompt.value("reason", "")
            << "\"";
    }
    if (status["device"].is_object())
        out << '\n' << describeDevice(status["device"]);
    return out.str();
}

} // namespace

ExitStatus phoneUp(const phone::PhoneDirectory& directory, const UpOptions& options)
{
    if (directory.supervisorProcess() != 0)
        return refuse("the phone at " + directory.root() + " is up already; 'appledger phone down' takes it down");
    std::error_code failed;
    fs::create_directories(directory.runDirectory(), failed);
    if (failed)
        return refuse("can't make " + directory.runDirectory() + ": " + failed.message());
    const fs::path library = binaryFolder().parent_path() / "lib" / "libAppLedger.so";
    if (const auto problem = phone::prepareDevice(directory.root(), library))
        return refuse(*problem);
    if (options.foreground) {
        startSupervisor(directory, options, -1);
        return refuse("can't start the phone's supervisor");
    }
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        return refuse(std::string("can't start the phone: ") + std::strerror(errno));
    ::fcntl(ends[1], F_SETFD, 0);
    startSupervisor(directory, options, ends[1]);
    ::close(ends[1]);
    const std::string said = readUntilClosed(ends[0], std::chrono::seconds { 30 });
    ::close(ends[0]);
    if (said != "up")
        return refuse("the phone didn't come up: " + (said.empty() ? "see " + directory.logFile() : said));
    return phoneStatus(directory);
}

ExitStatus phoneDown(const phone::PhoneDirectory& directory)
{
    const int process = directory.supervisorProcess();
    if (process == 0)
        return refuse(notUp(directory));
    ::kill(process, SIGTERM);
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds { 10 };
    while (directory.supervisorProcess() == process) {
        if (std::chrono::steady_clock::now() > deadline)
            return refuse("the phone doesn't go down");
        std::this_thread::sleep_for(std::chrono::milliseconds { 5 });
    }
    say("The phone at " + directory.root() + " is down.", { { "ok", true }, { "root", directory.root() } });
    return ExitStatus::Done;
}

ExitStatus phoneStatus(const phone::PhoneDirectory& directory)
{
    const Json status = askSupervisor(directory, { { "verb", "status" } });
    if (!status.value("ok", false))
        return refuse(status.value("error", "no answer"));
    say(describeStatus(status), status);
    return ExitStatus::Done;
}

ExitStatus phoneRespring(const phone::PhoneDirectory& directory)
{
    const Json answer = askSupervisor(directory, { { "verb", "respring" } });
    if (!answer.value("ok", false))
        return refuse(answer.value("error", "no answer"));
    say("SpringBoard has started anew as process " + std::to_string(answer.value("pid", 0)) + ".", answer);
    return ExitStatus::Done;
}

ExitStatus phoneKill(const phone::PhoneDirectory& directory, const std::string& process)
{
    const Json answer = askSupervisor(directory, { { "verb", "kill" }, { "process", process } });
    if (!answer.value("ok", false))
        return refuse(answer.value("error", "no answer"));
    say("Killed " + process + "; it is back as process " + std::to_string(answer.value("pid", 0)) + " after "
            + std::to_string(answer.value("milliseconds", 0)) + " ms.",
        answer);
    return ExitStatus::Done;
}

} // namespace cli
