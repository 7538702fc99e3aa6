#include "scenario/command.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <poll.h>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

/// A supervisor that survives what a machine does to it, and that ends when it is told to.

namespace scenario {

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

/// Looks again and again, for that long at most.
template <class Condition> bool holdsWithin(std::chrono::seconds limit, const Condition& condition)
{
    const auto end = Clock::now() + limit;
    while (!condition()) {
        if (Clock::now() > end)
            return false;
        ::poll(nullptr, 0, 10);
    }
    return true;
}

bool isAlive(int process)
{
    return ::kill(process, 0) == 0;
}

std::string logOf(const Phone& phone)
{
    std::ifstream file(phone.root() + "/.phone/log");
    return { std::istreambuf_iterator<char>(file), {} };
}

Json processNamed(const Json& status, const std::string& name)
{
    for (const Json& process : status.value("processes", Json::array()))
        if (process["name"] == name)
            return process;
    return Json::object();
}

bool allAnswer(const Phone& phone)
{
    const Json status = Json::parse(phone.run({ "phone", "status", "--json" }).output, nullptr, false);
    return status.is_object() && status.contains("processes")
        && std::ranges::all_of(status["processes"], [](const Json& process) { return process["answers"] == true; });
}

int childNamed(int parent, const std::string& program)
{
    std::ifstream children("/proc/" + std::to_string(parent) + "/task/" + std::to_string(parent) + "/children");
    for (int child = 0; children >> child;) {
        std::error_code failed;
        if (std::filesystem::read_symlink("/proc/" + std::to_string(child) + "/exe", failed).filename() == program)
            return child;
    }
    return -1;
}

} // namespace

TEST(SupervisorScenario, DownEndsAPhoneWhoseBusOrProcessIsStopped)
{
    const struct {
        const char* program; ///< that is stopped; "" for the supervisor itself
        const char* said;
    } cases[] {
        { "dbus-daemon", "told by a signal" },
        { "phone-process", "SpringBoard didn't end when it was told to, and was killed" },
        { "", "It was killed" },
    };
    for (const auto& [program, said] : cases) {
        SCOPED_TRACE(*program ? program : "phone-supervisor");
        const Phone phone;
        const Json up = phone.answer({ "phone", "up" });
        const int supervisor = up["supervisor"];
        const int springBoard = processNamed(up, "SpringBoard")["pid"];
        const int stopped = *program ? childNamed(supervisor, program) : supervisor;
        ASSERT_GT(stopped, 0);
        ::kill(*program && std::string_view(program) == "phone-process" ? springBoard : stopped, SIGSTOP);
        const auto before = Clock::now();
        const Outcome down = phone.run({ "phone", "down" });
        EXPECT_EQ(down.status, 0) << down.errors;
        EXPECT_NE(down.output.find(said), std::string::npos) << down.output;
        EXPECT_LT(Clock::now() - before, 20s);
        EXPECT_TRUE(holdsWithin(5s, [&] { return !isAlive(springBoard) && !isAlive(supervisor); }));
        EXPECT_EQ(phone.run({ "phone", "up" }).status, 0);
    }
}

TEST(SupervisorScenario, ANumberInTheLockAndALockOfAnotherProcessAreNoSupervisor)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    phone.answer({ "phone", "down" });
    const std::string lock = phone.root() + "/.phone/lock";
    struct stat status { };
    ASSERT_EQ(::stat(lock.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);
    EXPECT_EQ(status.st_size, 0);

    // A bystander whose number stands in the file, and who holds the lock on it.
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const pid_t bystander = ::fork();
    if (bystander == 0) {
        const int file = ::open(lock.c_str(), O_RDWR);
        struct flock whole { };
        whole.l_type = F_WRLCK;
        const std::string number = std::to_string(::getpid());
        const bool held = ::fcntl(file, F_SETLK, &whole) == 0
            && ::write(file, number.data(), number.size()) == static_cast<ssize_t>(number.size());
        ::_exit(held && ::write(ends[1], "h", 1) == 1 && ::pause() == -1 ? 0 : 1);
    }
    char byte = 0;
    ASSERT_EQ(::read(ends[0], &byte, 1), 1);
    EXPECT_EQ(phone.run({ "phone", "down" }).status, 1);
    EXPECT_TRUE(isAlive(bystander));
    EXPECT_EQ(::waitpid(bystander, nullptr, WNOHANG), 0);
    ::kill(bystander, SIGKILL);
    ::waitpid(bystander, nullptr, 0);
}

TEST(SupervisorScenario, WhatDoesntAnswerIsSaidWithinSeconds)
{
    const Phone phone;
    const Json up = phone.answer({ "phone", "up" });
    const int supervisor = up["supervisor"];
    const int springBoard = processNamed(up, "SpringBoard")["pid"];

    ::kill(springBoard, SIGSTOP);
    auto before = Clock::now();
    const Json status = phone.answer({ "phone", "status" });
    EXPECT_EQ(processNamed(status, "SpringBoard")["answers"], false);
    EXPECT_EQ(processNamed(status, "Spotlight")["answers"], true);
    EXPECT_TRUE(status["front"].is_null());
    const Outcome tap = phone.run({ "phone", "tap", "com.example.notes" });
    EXPECT_EQ(tap.status, 1);
    EXPECT_NE(tap.errors.find("SpringBoard doesn't answer"), std::string::npos) << tap.errors;
    // Spotlight, which has SpringBoard open what it finds, doesn't hang with it.
    const Json search = phone.answer({ "phone", "spotlight", "com.example.notes" });
    EXPECT_EQ(search["notes"], Json::array({ "SpringBoard didn't answer" }));
    EXPECT_LT(Clock::now() - before, 20s);
    // A stopped process doesn't hear that it is to end.
    phone.answer({ "phone", "respring" });
    EXPECT_EQ(phone.answer({ "phone", "spotlight", "com.example.notes" })["opened"].size(), 1U);

    const int bus = childNamed(supervisor, "dbus-daemon");
    ASSERT_GT(bus, 0);
    ::kill(bus, SIGSTOP);
    before = Clock::now();
    const Outcome wedged = phone.run({ "phone", "status" });
    EXPECT_EQ(wedged.status, 1);
    EXPECT_NE(wedged.errors.find("is up, but its bus doesn't answer"), std::string::npos) << wedged.errors;
    EXPECT_LT(Clock::now() - before, 10s);
    ::kill(bus, SIGCONT);
    EXPECT_TRUE(holdsWithin(10s, [&] { return allAnswer(phone); }));
}

TEST(SupervisorScenario, AProcessThatCrashesThreeTimesComesUpWithoutLibraries)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    for (int crash = 1; crash <= 3; ++crash) {
        const int victim = phone.pid("Spotlight");
        ::kill(victim, SIGABRT);
        ASSERT_TRUE(holdsWithin(10s, [&] {
            const Json process = processNamed(phone.answer({ "phone", "status" }), "Spotlight");
            return process["pid"] != victim && process["answers"] == true;
        }));
        EXPECT_EQ(processNamed(phone.answer({ "phone", "status" }), "Spotlight")["injected"].empty(), crash == 3);
    }
    const std::string library = "/Library/MobileSubstrate/DynamicLibraries/AppLedger.dylib";
    const Json process = processNamed(phone.answer({ "phone", "status" }), "Spotlight");
    EXPECT_EQ(process["withoutLibraries"], true);
    EXPECT_EQ(process["lastLoaded"], library);
    EXPECT_EQ(process["lastSignal"], SIGABRT);
    EXPECT_NE(phone.run({ "phone", "status" })
                  .output.find("without third-party libraries; the last that it loaded was " + library),
        std::string::npos);
    EXPECT_NE(logOf(phone).find("died of signal 6 (Aborted) with " + library), std::string::npos);

    phone.answer({ "phone", "kill", "Spotlight" });
    EXPECT_FALSE(processNamed(phone.answer({ "phone", "status" }), "Spotlight")["injected"].empty());
}

TEST(SupervisorScenario, AShortageIsWaitedOutWithOneLineInTheLog)
{
    const Phone phone;
    const Json up = phone.answer({ "phone", "up" });
    const int supervisor = up["supervisor"];
    rlimit before {};
    ASSERT_EQ(::prlimit(supervisor, RLIMIT_NOFILE, nullptr, &before), 0);
    const rlimit none { 3, before.rlim_max };
    ASSERT_EQ(::prlimit(supervisor, RLIMIT_NOFILE, &none, nullptr), 0);
    for (const char* const process : { "SpringBoard", "appstored" })
        ::kill(processNamed(up, process)["pid"], SIGKILL);
    const auto lines = [&phone] {
        const std::string log = logOf(phone);
        std::size_t count = 0;
        for (std::size_t at = log.find("can't start SpringBoard"); at != std::string::npos;
             at = log.find("can't start SpringBoard", at + 1))
            ++count;
        return count;
    };
    ASSERT_TRUE(holdsWithin(5s, [&] { return lines() > 0; }));
    EXPECT_FALSE(holdsWithin(1s, [&] { return lines() > 1 || !isAlive(supervisor); }));
    ASSERT_EQ(::prlimit(supervisor, RLIMIT_NOFILE, &before, nullptr), 0);
    EXPECT_TRUE(holdsWithin(15s, [&] { return allAnswer(phone); }));
    EXPECT_NE(logOf(phone).find("SpringBoard has started again"), std::string::npos);
}

TEST(SupervisorScenario, APhoneWhoseFolderIsTakenAwayEnds)
{
    const Phone phone;
    const Json up = phone.answer({ "phone", "up" });
    std::filesystem::remove_all(phone.root());
    const int supervisor = up["supervisor"];
    const int springBoard = processNamed(up, "SpringBoard")["pid"];
    EXPECT_TRUE(holdsWithin(10s, [&] { return !isAlive(supervisor) && !isAlive(springBoard); }));
}

TEST(SupervisorScenario, AnEndingPhoneLeavesTheBusOfItsSuccessorAlone)
{
    const Phone phone;
    const Json up = phone.answer({ "phone", "up" });
    const int supervisor = up["supervisor"];
    // It ends when its folder has gone, which it finds out when the next phone is up there.
    ::kill(supervisor, SIGSTOP);
    std::filesystem::remove_all(phone.root());
    phone.answer({ "phone", "up" });
    ::kill(supervisor, SIGCONT);
    EXPECT_TRUE(holdsWithin(10s, [&] { return !isAlive(supervisor); }));
    EXPECT_TRUE(allAnswer(phone));
}

TEST(SupervisorScenario, WhatALibraryHasStartedHoldsNobodyUp)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    phone.answer({ "phone", "down" });
    const std::string folder = phone.root() + "/Library/MobileSubstrate/DynamicLibraries/";
    std::filesystem::copy_file(LIBRARY_WITH_HELPER, folder + "WithHelper.dylib");
    std::filesystem::copy_file(LIBRARY_WITH_HELPER, folder + "WithoutFilter.dylib");
    std::ofstream(folder + "WithHelper.plist") << "{ Filter = { Bundles = ( \"com.apple.Spotlight\" ); }; }";
    const Json up = phone.answer({ "phone", "up" });
    EXPECT_EQ(processNamed(up, "Spotlight")["injected"].size(), 2U);
    EXPECT_EQ(processNamed(up, "SpringBoard")["injected"].size(), 1U);
    EXPECT_NE(logOf(phone).find("WithoutFilter.dylib is passed over"), std::string::npos) << logOf(phone);
    const auto before = Clock::now();
    phone.answer({ "phone", "kill", "Spotlight" });
    EXPECT_TRUE(allAnswer(phone));
    EXPECT_LT(Clock::now() - before, 10s);
}

TEST(SupervisorScenario, UpHandsNothingOn)
{
    const Phone phone;
    // What the caller has open, and isn't closed by exec, as a shell's descriptors aren't.
    const std::string path = phone.root() + "/held";
    const int held = ::open(path.c_str(), O_RDWR | O_CREAT, 0600);
    ASSERT_GE(held, 0);
    // runProgram() reads the command's output to its end: it would wait for the phone's, had the phone kept it.
    const Json up = phone.answer({ "phone", "up" });
    ::close(held);
    std::vector<int> processes { up["supervisor"].get<int>(), childNamed(up["supervisor"], "dbus-daemon") };
    for (const Json& process : up["processes"])
        processes.push_back(process["pid"]);
    for (const int process : processes)
        for (const auto& entry : std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/fd")) {
            std::error_code gone;
            EXPECT_NE(std::filesystem::read_symlink(entry.path(), gone), path) << process;
        }
}

TEST(SupervisorScenario, ARootWithoutANameIsRefusedBeforeAnythingIsMade)
{
    const Outcome outcome = runProgram({ APPLEDGER_COMMAND, "--root", "", "phone", "up" });
    EXPECT_EQ(outcome.status, 2);
    EXPECT_NE(outcome.errors.find("--root"), std::string::npos) << outcome.errors;
}

/// From a seed; APPLEDGER_STORM_SECONDS makes it longer than the few rounds that every run has.
TEST(SupervisorScenario, ComesBackFromAnyStormOrEndsWhenItIsTold)
{
    const Phone phone;
    const char* const seconds = std::getenv("APPLEDGER_STORM_SECONDS");
    const auto end = Clock::now() + std::chrono::seconds(seconds ? std::atoi(seconds) : 0);
    std::mt19937 random(20261);
    int rounds = 0;
    int downs = 0;
    for (; rounds < 8 || Clock::now() < end; ++rounds) {
        if (phone.run({ "phone", "status" }).status != 0) {
            ASSERT_EQ(phone.run({ "phone", "up" }).status, 0) << "round " << rounds;
        }
        const Json up = phone.answer({ "phone", "status" });
        const int supervisor = up["supervisor"];
        const int victim = up["processes"][random() % up["processes"].size()]["pid"];
        const int bus = childNamed(supervisor, "dbus-daemon");
        if (victim <= 0 || bus <= 0)
            continue;
        const unsigned kind = random() % 8;
        SCOPED_TRACE("round " + std::to_string(rounds) + ", kind " + std::to_string(kind));
        rlimit limits {};
        ASSERT_EQ(::prlimit(supervisor, RLIMIT_NOFILE, nullptr, &limits), 0);
        const rlimit few { 3 + random() % 12, limits.rlim_max };
        switch (kind) {
        case 0:
            ::kill(victim, SIGKILL);
            break;
        case 1:
            ::kill(victim, SIGABRT);
            break;
        case 2:
            ::kill(victim, SIGSTOP);
            phone.run({ "phone", "status" });
            ::kill(victim, random() % 2 ? SIGCONT : SIGKILL);
            break;
        case 3:
            ::kill(bus, SIGKILL);
            break;
        case 4:
            ::kill(bus, SIGSTOP);
            phone.run({ "phone", "tap", "com.example.notes" });
            ::kill(bus, random() % 2 ? SIGCONT : SIGKILL);
            break;
        case 5:
            ASSERT_EQ(::prlimit(supervisor, RLIMIT_NOFILE, &few, nullptr), 0);
            ::kill(victim, SIGKILL);
            if (random() % 2)
                ::kill(bus, SIGKILL);
            phone.run({ "phone", "status" });
            ASSERT_EQ(::prlimit(supervisor, RLIMIT_NOFILE, &limits, nullptr), 0);
            break;
        case 6:
            ::kill(random() % 2 ? bus : victim, SIGSTOP);
            break;
        default:
            ::kill(supervisor, SIGKILL);
            break;
        }
        if (kind < 6) {
            EXPECT_TRUE(holdsWithin(30s, [&] { return allAnswer(phone); })) << logOf(phone);
            continue;
        }
        const auto before = Clock::now();
        const int status = phone.run({ "phone", "down" }).status;
        // One that was killed may be there yet when it is looked for, or not.
        if (kind == 6) {
            EXPECT_EQ(status, 0);
        }
        EXPECT_LT(Clock::now() - before, 10s);
        EXPECT_TRUE(holdsWithin(2s, [&] { return !isAlive(supervisor) && !isAlive(victim); }));
        ++downs;
    }
    std::printf("%d rounds, %d of them ended by down\n", rounds, downs);
}

} // namespace scenario
