#include "phone/control/answers.h"
#include "phone/supervisor/supervisor.h"

#include <csignal>
#include <memory>

namespace phone {

using namespace platform;
using namespace std::chrono_literals;

namespace {

void send(const BusReply& reply, const Json& answer)
{
    reply(answer.dump(-1, ' ', false, Json::error_handler_t::replace));
}

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
    else
        send(reply, failure("the supervisor doesn't know that request"));
}

void Supervisor::answerStatus(BusReply reply)
{
    auto gathered = std::make_shared<GatheredStatus>();
    gathered->status = { { "ok", true }, { "root", options_.root }, { "ios", options_.version.text() },
        { "stock", options_.stock }, { "front", "" }, { "device", Json() }, { "prompts", Json::array() },
        { "supervisor", processIdentifier() }, { "processes", Json::array() } };
    gathered->reply = std::move(reply);
    gathered->missing = processes_.size();
    for (std::size_t index = 0; index < processes_.size(); ++index) {
        const Process& process = processes_[index];
        gathered->status["processes"].push_back({ { "name", process.name }, { "running", process.ready },
            { "pid", process.child.pid }, { "restarts", process.starts - 1 }, { "injected", Json::array() } });
        requestFromPeer(process.name, R"({"verb":"status"})", 2s, [gathered, index](const BusOutcome& outcome) {
            const Json own = Json::parse(outcome.reply, nullptr, false);
            if (own.is_object()) {
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
    if (process->child.pid > 0)
        ::kill(process->child.pid, signal);
}

} // namespace phone
