#include "phone/supervisor/phone_directory.h"
#include "platform/darwin/bus.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <nlohmann/json.hpp>
#include <random>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

/// Usage: request_storm ROOT [CLIENTS] [SECONDS] [SEED]
///
/// Clients at once, each with a connection of its own, put mixed questions to the SpringBoard of the phone at ROOT,
/// which is up and whose policies block com.example.bank and nothing else. Each answer is compared with what a model
/// says of that question alone. Prints the answers by verb and the time that they took, and SpringBoard's memory before
/// and after. Exit status 1 when an answer was another question's.

namespace {

using Json = nlohmann::json;
using Clock = std::chrono::steady_clock;

constexpr const char* blocked = "com.example.bank";
constexpr const char* applications[] { "com.example.chat", "com.example.game", "com.example.mail", "com.example.maps",
    "com.example.music", "com.example.news", "com.example.notes", "com.example.shop", "com.example.video", blocked };

struct Question {
    const char* verb;
    Json request;
    std::function<bool(const Json& answer)> isAnsweredBy;
};

Json only(const std::string& identifier)
{
    return Json::array({ identifier });
}

/// Whether every entry of the journal that names an application names this one.
bool speaksOnlyOf(const Json& answer, const std::string& identifier)
{
    return std::ranges::all_of(answer["journal"], [&identifier](const Json& entry) {
        const std::string subject = entry.value("subject", "");
        return !subject.starts_with("com.") || subject == identifier;
    });
}

Question nextQuestion(std::mt19937& random)
{
    const std::string identifier = applications[random() % std::size(applications)];
    const double level = static_cast<double>(random() % 101) / 100;
    switch (random() % 8) {
    case 0:
    case 1:
        return { "open", { { "road", "tap" }, { "applications", only(identifier) } }, [identifier](const Json& answer) {
                    return identifier == blocked
                        ? answer["opened"].empty() && answer["haptics"] == Json::array({ "impact" })
                        : answer["opened"] == only(identifier) && answer["front"] == identifier
                            && speaksOnlyOf(answer, identifier);
                } };
    case 2:
        return { "home", Json::object(), [](const Json& answer) { return answer["front"] == ""; } };
    case 3:
        return {
            "push", { { "application", identifier }, { "title", "storm" }, { "road", "bulletin" }, { "sound", true } },
            [identifier](const Json& answer) { return answer["published"] == true && speaksOnlyOf(answer, identifier); }
        };
    case 4:
        return { "volume", { { "level", level } },
            [level](const Json& answer) { return std::abs(answer["device"]["volume"].get<double>() - level) < 0.01; } };
    case 5:
        return { "brightness", { { "level", level } }, [level](const Json& answer) {
                    return std::abs(answer["device"]["brightness"].get<double>() - level) < 0.01;
                } };
    case 6:
        return { "icons", Json::object(), [](const Json& answer) { return answer["icons"].size() >= 20; } };
    default:
        return { "transition", { { "transition", { { "destination", identifier }, { "requester", Json::object() } } } },
            [identifier](const Json& answer) {
                const bool opened = answer["opened"] == only(identifier);
                return (identifier == blocked) != opened && speaksOnlyOf(answer, identifier);
            } };
    }
}

/// One line for each answer into the pipe: verb, milliseconds, 1 when it was the right one.
int runClient(const std::string& address, Clock::time_point end, unsigned seed, std::FILE* results)
{
    if (!platform::connectBus(address, {}, [] {}))
        return 1;
    std::mt19937 random(seed);
    while (Clock::now() < end) {
        Question question = nextQuestion(random);
        question.request["verb"] = question.verb;
        const auto before = Clock::now();
        const platform::BusOutcome outcome
            = platform::requestFromPeerAndWait("SpringBoard", question.request.dump(), std::chrono::seconds { 30 });
        const std::chrono::duration<double, std::milli> took = Clock::now() - before;
        const Json answer = Json::parse(outcome.reply, nullptr, false);
        const bool isRight = answer.is_object() && answer.value("ok", false) && question.isAnsweredBy(answer);
        if (!isRight)
            std::fprintf(stderr, "%s %s\n  %s\n", question.verb, question.request.dump().c_str(),
                outcome.reply.substr(0, 600).c_str());
        std::fprintf(results, "%s %.3f %d\n", question.verb, took.count(), isRight ? 1 : 0);
    }
    return std::fflush(results) == 0 ? 0 : 1;
}

long residentKilobytes(int process)
{
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string word; status >> word;)
        if (long size = 0; word == "VmRSS:" && status >> size)
            return size;
    return 0;
}

int springBoardOf(const std::string& address)
{
    // In a process of its own, since a connection can't be handed to the clients.
    int ends[2];
    if (::pipe(ends) != 0)
        return 0;
    if (::fork() == 0) {
        int process = 0;
        if (platform::connectBus(address, {}, [] {})) {
            const auto outcome
                = platform::requestFromPeerAndWait("SpringBoard", R"({"verb":"status"})", std::chrono::seconds { 5 });
            process = Json::parse(outcome.reply, nullptr, false).value("pid", 0);
        }
        ::_exit(::write(ends[1], &process, sizeof process) == sizeof process ? 0 : 1);
    }
    int process = 0;
    if (::read(ends[0], &process, sizeof process) != sizeof process)
        process = 0;
    ::wait(nullptr);
    return process;
}

} // namespace

int main(int argumentCount, char** arguments)
{
    if (argumentCount < 2) {
        std::fprintf(stderr, "usage: request_storm ROOT [CLIENTS] [SECONDS] [SEED]\n");
        return 2;
    }
    const auto number
        = [&](int index, int otherwise) { return argumentCount > index ? std::atoi(arguments[index]) : otherwise; };
    const int clients = number(2, 100);
    const Clock::time_point end = Clock::now() + std::chrono::seconds { number(3, 60) };
    const unsigned seed = static_cast<unsigned>(number(4, 1));
    const std::string address = phone::PhoneDirectory(arguments[1]).busAddress();
    const int springBoard = springBoardOf(address);
    if (springBoard == 0) {
        std::fprintf(stderr, "request_storm: no SpringBoard answers at %s\n", arguments[1]);
        return 1;
    }
    const long before = residentKilobytes(springBoard);
    std::FILE* const results = std::tmpfile();
    if (!results)
        return 1;
    for (int client = 0; client < clients; ++client)
        if (::fork() == 0) {
            char path[64];
            std::snprintf(path, sizeof path, "/proc/self/fd/%d", ::fileno(results));
            std::FILE* const own = std::fopen(path, "a");
            // A line is one write, so that the clients' lines don't mix.
            ::_exit(own && std::setvbuf(own, nullptr, _IOLBF, BUFSIZ) == 0
                    ? runClient(address, end, seed * 1000 + static_cast<unsigned>(client), own)
                    : 1);
        }
    int failed = 0;
    for (int status = 0; ::wait(&status) > 0;)
        failed += status != 0;

    std::map<std::string, std::vector<double>> times;
    std::map<std::string, int> wrong;
    std::rewind(results);
    char verb[32];
    double took = 0;
    for (int right = 0; std::fscanf(results, "%31s %lf %d", verb, &took, &right) == 3;) {
        times[verb].push_back(took);
        wrong[verb] += right == 0;
    }
    int wrongInAll = failed;
    for (auto& [name, list] : times) {
        std::ranges::sort(list);
        std::printf("%-12s %7zu answers, %d wrong; median %.1f ms, 99 of 100 under %.1f ms\n", name.c_str(),
            list.size(), wrong[name], list[list.size() / 2], list[list.size() * 99 / 100]);
        wrongInAll += wrong[name];
    }
    std::printf("SpringBoard: %ld kB resident before, %ld kB after; %d clients failed\n", before,
        residentKilobytes(springBoard), failed);
    return wrongInAll == 0 && !times.empty() ? 0 : 1;
}
