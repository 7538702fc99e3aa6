#include "cli/command/phone_client.h"

#include "platform/darwin/bus.h"

#include "platform/dispatch/run_loop.h"

#include <chrono>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

namespace cli {

using namespace platform;
using namespace std::chrono_literals;
using Json = nlohmann::json;

bool connectToPhone(const phone::PhoneDirectory& directory)
{
    return busIsConnected() || (directory.supervisorProcess() != 0 && connectBus(directory.busAddress(), {}, [] {}));
}

namespace {

/// How long an answer is waited for, and what is done meanwhile.
struct Patience {
    std::chrono::seconds limit { 60 };
    std::function<void(std::chrono::seconds waited)> whileWaiting {};
};

/// Has the peer answer, or say within seconds that it can't be had: one that doesn't answer in three is asked whether
/// it is there, and where it is, it has its time, and is asked again now and then.
BusOutcome outcomeOf(std::string_view peer, const std::string& request, const Patience& patience)
{
    constexpr auto firstLook = 3s;
    constexpr auto signOfLife = 2s;
    const auto answered = std::make_shared<std::optional<BusOutcome>>();
    requestFromPeer(peer, request, patience.limit, [answered](const BusOutcome& outcome) { *answered = outcome; });
    const auto isThere = [&answered] { return answered->has_value(); };
    const auto start = std::chrono::steady_clock::now();
    const auto waited = [&start] {
        return std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - start);
    };
    const auto wait = [&](std::chrono::seconds time) {
        for (const auto end = waited() + time; !isThere() && waited() < end;) {
            runUntil(isThere, 1s);
            if (!isThere() && patience.whileWaiting)
                patience.whileWaiting(waited());
        }
    };
    wait(firstLook);
    while (!isThere() && waited() <= patience.limit) {
        const auto alive = std::make_shared<std::optional<BusOutcome>>();
        requestFromPeer(
            peer, R"({"verb":"ping"})", signOfLife, [alive](const BusOutcome& outcome) { *alive = outcome; });
        runUntil([&] { return isThere() || alive->has_value(); }, signOfLife + 1s);
        if (!isThere() && (!*alive || (*alive)->status != BusOutcome::Status::Replied))
            break;
        wait(10s);
    }
    return answered->value_or(BusOutcome { BusOutcome::Status::TimedOut, {} });
}

Json ask(std::string_view peer, const Json& request, const Patience& patience)
{
    const BusOutcome outcome = outcomeOf(peer, request.dump(-1, ' ', false, Json::error_handler_t::replace), patience);
    const auto failed = [&peer](std::string_view what) {
        return Json { { "ok", false }, { "error", std::string(peer) + std::string(what) } };
    };
    switch (outcome.status) {
    case BusOutcome::Status::NoSuchPeer:
        return failed(" isn't running");
    case BusOutcome::Status::TimedOut:
        return failed(" doesn't answer");
    case BusOutcome::Status::Disconnected:
        return failed(" can't be reached: the phone's bus is gone");
    case BusOutcome::Status::Replied:
        break;
    }
    Json answer = Json::parse(outcome.reply, nullptr, false);
    return answer.is_object() ? answer : failed(" gave an answer that can't be read");
}

using Enrich = std::function<void(Json& answer)>;

ExitStatus tell(
    Json answer, std::string_view peer, const std::function<std::string(const Json& answer)>& describe,
    const Enrich& enrich = [](Json&) {})
{
    if (!answer.value("ok", false))
        return refuse(answer.value("error", "no answer"));
    std::string text;
    try {
        enrich(answer);
        text = describe(answer);
    } catch (const Json::exception&) { // of what a phone of another build has sent
        return refuse(std::string(peer) + " gave an answer that can't be read");
    }
    say(text, answer);
    return ExitStatus::Done;
}

} // namespace

Json askPhone(std::string_view peer, const Json& request)
{
    return ask(peer, request, {});
}

std::string whyNotConnected(const phone::PhoneDirectory& directory)
{
    if (std::string problem = directory.problem(); !problem.empty())
        return problem;
    const std::string phone = "the phone at " + directory.root();
    return directory.supervisorProcess() == 0 ? phone + " isn't up" : phone + " is up, but its bus doesn't answer";
}

Json askPhone(const phone::PhoneDirectory& directory, std::string_view peer, const Json& request)
{
    if (!connectToPhone(directory))
        return { { "ok", false }, { "error", whyNotConnected(directory) } };
    return askPhone(peer, request);
}

ExitStatus tellAnswer(const phone::PhoneDirectory& directory, std::string_view peer, const Json& request,
    const std::function<std::string(const Json& answer)>& describe)
{
    return tell(askPhone(directory, peer, request), peer, describe);
}

ExitStatus tellAnswer(const phone::PhoneDirectory& directory, std::string_view peer, const Json& request,
    const std::function<void(Json& answer)>& enrich, const std::function<std::string(const Json& answer)>& describe)
{
    return tell(askPhone(directory, peer, request), peer, describe, enrich);
}

ExitStatus tellLongWork(const phone::PhoneDirectory& directory, std::string_view peer, const Json& request,
    std::string_view what, const std::function<std::string(const Json& answer)>& describe)
{
    if (!connectToPhone(directory))
        return refuse(whyNotConnected(directory));
    const Json answer
        = ask(peer, request, { 24h, [what](std::chrono::seconds waited) {
                                  tellProgress(std::string(what) + "… " + std::to_string(waited.count()) + " s");
                              } });
    tellProgress({});
    return tell(answer, peer, describe);
}

} // namespace cli
