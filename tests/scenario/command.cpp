#include "scenario/command.h"

#include "scenario/json_vocabulary.h"

#include <array>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace scenario {

namespace {

/// Reads both pipes to their ends, so that a program that says much on either doesn't wait.
void readAll(int output, int errors, Outcome& outcome)
{
    std::array<pollfd, 2> pipes { pollfd { output, POLLIN, 0 }, pollfd { errors, POLLIN, 0 } };
    while (pipes[0].fd >= 0 || pipes[1].fd >= 0) {
        ::poll(pipes.data(), pipes.size(), -1);
        for (pollfd& pipe : pipes) {
            if (pipe.fd < 0 || pipe.revents == 0)
                continue;
            char buffer[4096];
            const ssize_t count = ::read(pipe.fd, buffer, sizeof buffer);
            if (count > 0)
                (pipe.fd == output ? outcome.output : outcome.errors).append(buffer, static_cast<std::size_t>(count));
            else
                pipe.fd = -1;
        }
    }
}

} // namespace

Outcome runProgram(std::vector<std::string> arguments)
{
    std::vector<char*> pointers;
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    int output[2];
    int errors[2];
    if (::pipe2(output, O_CLOEXEC) != 0 || ::pipe2(errors, O_CLOEXEC) != 0)
        return {};
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::dup2(output[1], STDOUT_FILENO);
        ::dup2(errors[1], STDERR_FILENO);
        ::execv(pointers.front(), pointers.data());
        ::_exit(127);
    }
    ::close(output[1]);
    ::close(errors[1]);
    Outcome outcome;
    readAll(output[0], errors[0], outcome);
    ::close(output[0]);
    ::close(errors[0]);
    int status = 0;
    ::waitpid(pid, &status, 0);
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return outcome;
}

Phone::Phone()
{
    char folder[] = "/tmp/appledger-phone.XXXXXX";
    root_ = ::mkdtemp(folder);
}

Phone::~Phone()
{
    run({ "phone", "down" });
    std::error_code ignored;
    std::filesystem::remove_all(root_, ignored);
}

Outcome Phone::run(std::vector<std::string> words) const
{
    words.insert(words.begin(), { APPLEDGER_COMMAND, "--root", root_ });
    return runProgram(std::move(words));
}

Json Phone::answer(std::vector<std::string> words, int status) const
{
    std::string said;
    for (const std::string& word : words)
        said += " " + word.substr(0, 60);
    words.emplace_back("--json");
    const Outcome outcome = run(std::move(words));
    EXPECT_EQ(outcome.status, status) << said << "\n" << outcome.errors;
    Json object = Json::parse(outcome.output, nullptr, false);
    EXPECT_TRUE(object.is_object()) << said << "\n" << outcome.output;
    EXPECT_EQ(problemOfAnswer(object, status), "") << said << "\n" << outcome.output.substr(0, 2000);
    return object.is_object() ? object : Json::object();
}

std::string Phone::preferenceFile() const
{
    return root_ + "/var/mobile/Library/Preferences/com.merrowlane.appledger.plist";
}

int Phone::pid(const std::string& process) const
{
    const Json status = answer({ "phone", "status" });
    for (const Json& known : status["processes"])
        if (known["name"] == process)
            return known["pid"];
    return -1;
}

} // namespace scenario
