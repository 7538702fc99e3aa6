#include "cli/command/arguments.h"
#include "cli/command/phone_client.h"
#include "cli/command/verb_rows.h"
#include "cli/history/policy_session.h"
#include "cli/phone/device.h"
#include "phone/device/device_image.h"
#include "phone/supervisor/child_process.h"
#include "phone/supervisor/running_supervisor.h"
#include "platform/foundation/descriptor.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <poll.h>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace cli {

using Json = nlohmann::json;
namespace fs = std::filesystem;

namespace {

constexpr int exitWhenNotExecuted = 127;

fs::path binaryFolder()
{
    return fs::read_symlink("/proc/self/exe").parent_path();
}

struct UpOptions {
    platform::SystemVersion version { 16, 0, 0 };
    bool stock = false;
    bool foreground = false;
    bool isTemporary = false;
};

constexpr const char* temporaryMark = "temporary"; ///< in the folder of a phone that goes when it goes down

/// Starts the supervisor; with a descriptor to tell when the phone is up, in a session of its own.
pid_t startSupervisor(const phone::PhoneDirectory& directory, const UpOptions& options, int readyDescriptor)
{
    const std::string program = binaryFolder() / "phone-supervisor";
    std::vector<std::string> arguments { program, "--root", directory.root(), "--ios", options.version.text() };
    arguments.insert(arguments.end(), { "--command", binaryFolder() / "appledger" });
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
        const int log = directory.openLogFile(O_WRONLY | O_CREAT | O_APPEND);
        const int nothing = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
        // Who reads what the command says must not wait for the phone's end.
        if (::setsid() < 0 || log < 0 || nothing < 0 || ::dup2(nothing, STDIN_FILENO) < 0
            || ::dup2(log, STDOUT_FILENO) < 0 || ::dup2(log, STDERR_FILENO) < 0)
            ::_exit(exitWhenNotExecuted);
    }
    if (phone::closeOnExecAllBut(readyDescriptor))
        ::execv(program.c_str(), pointers.data());
    ::_exit(exitWhenNotExecuted);
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

/// Of one process, behind its name.
std::string describeProcess(const Json& process)
{
    if (!process.value("running", false))
        return "not running";
    const bool isInjected = !process.value("injected", Json::array()).empty();
    std::string text = "process " + std::to_string(process.value("pid", 0));
    if (!process.value("answers", false))
        text += ", doesn't answer";
    else
        text += isInjected ? ", injected" : ", not injected";
    if (const int restarts = process.value("restarts", 0); restarts > 0)
        text += ", restarted " + std::to_string(restarts) + (restarts == 1 ? " time" : " times");
    if (process.value("withoutLibraries", false)) {
        text += "; it crashed " + std::to_string(process.value("crashes", 0)) + " times (the last by signal "
            + std::to_string(process.value("lastSignal", 0)) + ") and came up without third-party libraries";
        if (process.contains("lastLoaded") && process["lastLoaded"].is_string())
            text += "; the last that it loaded was " + process["lastLoaded"].get<std::string>();
    }
    return text;
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
        out << describeProcess(process) << '\n';
    }
    if (!status["front"].is_string())
        out << "In front: unknown, since SpringBoard doesn't say";
    else {
        const auto front = status["front"].get<std::string>();
        out << "In front: " << (front.empty() ? "the Home Screen" : front);
    }
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

ExitStatus showStatus(const phone::PhoneDirectory& directory)
{
    return tellAnswer(directory, phone::supervisorPeer, { { "verb", "status" } }, describeStatus);
}

ExitStatus comeUp(const phone::PhoneDirectory& directory, const UpOptions& options)
{
    if (directory.supervisorProcess() != 0)
        return refuse("the phone at " + directory.root() + " is up already; 'appledger phone down' takes it down");
    if (const std::string problem = directory.makeRunDirectory(); !problem.empty())
        return refuse(problem);
    const fs::path library = binaryFolder().parent_path() / "lib" / "libAppLedger.so";
    const phone::DevicePreparation preparation = phone::prepareDevice(directory.root(), library);
    if (!preparation.problem.empty())
        return refuse(preparation.problem);
    for (const std::string& passedOver : preparation.passedOver)
        warn(passedOver);
    // What was to end while the phone was down: the processes read the lists at their start.
    if (const std::string problem = settlePolicies(directory); !problem.empty())
        warn(problem);
    if (options.foreground) {
        startSupervisor(directory, options, -1);
        return refuse("can't start the phone's supervisor");
    }
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        return refuse(std::string("can't start the phone: ") + std::strerror(errno));
    const pid_t supervisor = startSupervisor(directory, options, ends[1]);
    ::close(ends[1]);
    if (supervisor < 0) {
        ::close(ends[0]);
        return refuse(std::string("can't start the phone: ") + std::strerror(errno));
    }
    const std::string said = readUntilClosed(ends[0], std::chrono::seconds { 30 });
    ::close(ends[0]);
    if (said != "up")
        return refuse("the phone didn't come up: " + (said.empty() ? "see " + directory.logFile() : said));
    return showStatus(directory);
}

ExitStatus comeUpForAWhile(const UpOptions& options)
{
    std::error_code error;
    std::string root = fs::temp_directory_path(error) / "appledger.XXXXXX";
    if (error || !::mkdtemp(root.data()))
        return refuse("can't make a directory for the phone: " + (error ? error.message() : std::strerror(errno)));
    const phone::PhoneDirectory directory(root);
    const platform::detail::Descriptor mark(
        directory.makeRunDirectory().empty() ? directory.openRunFile(temporaryMark, O_WRONLY | O_CREAT) : -1);
    const ExitStatus status = mark ? comeUp(directory, options) : refuse("can't make a phone in " + root);
    if (status != ExitStatus::Done)
        fs::remove_all(root, error);
    return status;
}

/// What there is of it when it is down.
std::string removeTemporary(const phone::PhoneDirectory& directory)
{
    const platform::detail::Descriptor mark(directory.openRunFile(temporaryMark, O_RDONLY));
    std::error_code error;
    if (!mark)
        return "";
    fs::remove_all(directory.root(), error);
    return error ? " Its directory can't be removed: " + error.message() + "." : " Its directory is removed.";
}

Action up(Arguments& arguments)
{
    const auto options = std::make_shared<UpOptions>();
    arguments.addVersion(options->version);
    arguments.flag("--stock", options->stock, "without the library");
    arguments.flag("--foreground", options->foreground, "stay in front until interrupted");
    arguments.flag("--temporary", options->isTemporary, "a new one, in a directory that goes when the phone goes down");
    return [options](const phone::PhoneDirectory& directory) {
        return options->isTemporary ? comeUpForAWhile(*options) : comeUp(directory, *options);
    };
}

/// Asks the supervisor, then tells it by a signal, then kills it; says which of these it took.
ExitStatus goDown(const phone::PhoneDirectory& directory)
{
    constexpr auto timeToComeDown = std::chrono::milliseconds { 6000 };
    constexpr auto timeAfterSignal = std::chrono::milliseconds { 6500 };
    const auto supervisor = phone::RunningSupervisor::find(directory);
    if (!supervisor)
        return refuse(whyNotConnected(directory));
    std::string steps;
    const Json answer = askPhone(directory, phone::supervisorPeer, { { "verb", "down" } });
    const bool heard = answer.value("ok", false);
    for (const Json& name : answer.value("killed", Json::array()))
        steps += " " + name.get<std::string>() + " didn't end when it was told to, and was killed.";
    bool ended = heard && supervisor->waitUntilEnded(timeToComeDown);
    if (!ended) {
        steps += heard ? " It answered, but didn't end." : " It didn't answer: " + answer.value("error", "") + ".";
        steps += " Its supervisor was told by a signal.";
        supervisor->signal(SIGTERM); // one that has gone is seen by the wait
        ended = supervisor->waitUntilEnded(timeAfterSignal);
    }
    if (!ended) {
        if (supervisor->signal(SIGKILL))
            steps += " It was killed.";
        ended = supervisor->waitUntilEnded(timeAfterSignal);
    }
    if (!ended)
        return refuse("the phone at " + directory.root() + " doesn't go down." + steps);
    steps += removeTemporary(directory);
    say("The phone at " + directory.root() + " is down." + steps,
        { { "ok", true }, { "root", directory.root() }, { "killed", answer.value("killed", Json::array()) } });
    return ExitStatus::Done;
}

ExitStatus respring(const phone::PhoneDirectory& directory)
{
    return tellAnswer(directory, phone::supervisorPeer, { { "verb", "respring" } }, [](const Json& answer) {
        return "SpringBoard has started anew as process " + std::to_string(answer.value("pid", 0)) + ".";
    });
}

Action killProcess(Arguments& arguments)
{
    const auto process = std::make_shared<Word>();
    arguments.add("PROCESS", *process).required();
    return [process](const phone::PhoneDirectory& directory) {
        return tellAnswer(directory, phone::supervisorPeer, { { "verb", "kill" }, { "process", process->text() } },
            [&process](const Json& answer) {
                return "Killed " + process->text() + "; it is back as process " + std::to_string(answer.value("pid", 0))
                    + " after " + std::to_string(answer.value("milliseconds", 0)) + " ms.";
            });
    };
}

constexpr VerbRow rows[] {
    { "phone up", "start the phone", up, "status" },
    { "phone down", "stop the phone", plain<goDown>, "down" },
    { "phone status", "what runs, and what is in front", plain<showStatus>, "status" },
    { "phone respring", "restart SpringBoard", plain<respring>, "respring" },
    { "phone kill", "kill a process with SIGKILL; the supervisor has it back", killProcess, "kill" },
};

} // namespace

extern const VerbRows lifeVerbs { rows };

} // namespace cli
