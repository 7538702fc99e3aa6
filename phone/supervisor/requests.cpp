#include "phone/control/answers.h"
#include "phone/supervisor/supervisor.h"
#include "platform/dispatch/queue.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <memory>

namespace phone {

using namespace platform;
using namespace std::chrono_literals;

namespace {

/// The processes' own answers, gathered as they come in.
struct GatheredStatus {
    Json status;
    BusReply reply;
    std::size_t missing;
};

} // namespace

void Supervisor::answer(std::string_view request, BusReply reply)
{
    const Json parsed = Json::parse(request, nullptr, false);
    const std::string verb = parsed.is_object() ? text(parsed, "verb") : "";
    if (verb == "status")
        answerStatus(std::move(reply));
    else if (verb == "kill")
        restart(text(parsed, "process"), SIGKILL, std::move(reply));
    else if (verb == "respring")
        restart("SpringBoard", SIGTERM, std::move(reply));
    else if (verb == "down") {
        downReplies_.push_back(std::move(reply));
        stopRunLoop();
    } else if (verb == "ping")
        send(reply, { { "ok", true } });
    else
        send(reply, failure("the supervisor doesn't know that request"));
}

void Supervisor::answerStatus(BusReply reply)
{
    auto gathered = std::make_shared<GatheredStatus>();
    gathered->status = { { "ok", true }, { "root", options_.root }, { "ios", options_.version.text() },
        { "stock", options_.stock }, { "front", Json() }, { "device", Json() }, { "prompts", Json::array() },
        { "supervisor", processIdentifier() }, { "processes", Json::array() } };
    gathered->reply = std::move(reply);
    gathered->missing = processes_.size();
    for (std::size_t index = 0; index < processes_.size(); ++index) {
        const Process& process = processes_[index];
        gathered->status["processes"].push_back({ { "name", process.name }, { "running", process.ready },
            { "pid", process.child.pid }, { "answers", false }, { "restarts", std::max(0, process.starts - 1) },
            { "injected", Json::array() }, { "crashes", process.crashes },
            { "lastSignal", process.lastSignal == 0 ? Json() : Json(process.lastSignal) },
            { "lastLoaded", process.lastLoaded.empty() ? Json() : Json(process.lastLoaded) },
            { "withoutLibraries", process.comesUpWithoutLibraries() } });
        requestFromPeer(process.name, R"({"verb":"status"})", 2s, [gathered, index](const BusOutcome& outcome) {
            const Json own = Json::parse(outcome.reply, nullptr, false);
            if (own.is_object()) {
                gathered->status["processes"][index]["answers"] = true;
                gathered->status["processes"][index]["injected"] = own.value("injected", Json::array());
                for (const char* const key : { "front", "device" })
                    if (own.contains(key))
                        gathered->status[key] = own[key];
                if (own.value("prompt", Json()).is_object())
                    gathered->status["prompts"].push_back(own["prompt"]);
            }
            if (--gathered->missing == 0)
                send(gathered->reply, gathered->status);
        });
    }
}

void Supervisor::answerDown(const std::vector<std::string>& killed)
{
    for (const BusReply& reply : std::exchange(downReplies_, {}))
        send(reply, { { "ok", true }, { "killed", killed } });
}

void Supervisor::answerRestart(const Process& process, std::chrono::milliseconds took, const BusReply& reply)
{
    send(reply, { { "ok", true }, { "pid", process.child.pid }, { "milliseconds", took.count() } });
}

void Supervisor::restart(const std::string& name, int signal, BusReply reply)
{
    Process* const process = find(name);
    if (!process) {
        std::string known;
        for (const Process& other : processes_)
            known += (known.empty() ? "" : ", ") + other.name;
        send(reply, failure("the phone has no process " + name + "; it has " + known));
        return;
    }
    process->waiting.push_back(std::move(reply));
    process->killed = Clock::now();
    process->forgetCrashes();
    if (process->child.pid <= 0)
        return;
    // One that is stopped doesn't hear.
    dispatch_after(timeToEnd, dispatch_get_main_queue(), [process, pid = process->child.pid] {
        if (process->child.pid == pid && ::kill(pid, SIGKILL) != 0)
            std::fprintf(stderr, "supervisor: %s can't be killed: %s\n", process->name.c_str(), std::strerror(errno));
    });
    process->endIsAskedFor = ::kill(process->child.pid, signal) == 0;
    if (!process->endIsAskedFor && errno != ESRCH)
        std::fprintf(stderr, "supervisor: %s can't be signalled: %s\n", name.c_str(), std::strerror(errno));
}

} // namespace phone
