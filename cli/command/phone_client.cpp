#include "cli/command/phone_client.h"

#include "platform/darwin/bus.h"

#include <chrono>
#include <nlohmann/json.hpp>

namespace cli {

using namespace platform;
using Json = nlohmann::json;

bool connectToPhone(const phone::PhoneDirectory& directory)
{
    return busIsConnected() || (directory.supervisorProcess() != 0 && connectBus(directory.busAddress(), {}, [] {}));
}

Json askPhone(std::string_view peer, const Json& request)
{
    constexpr auto limit = std::chrono::seconds { 10 };
    const BusOutcome outcome
        = requestFromPeerAndWait(peer, request.dump(-1, ' ', false, Json::error_handler_t::replace), limit);
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

Json askPhone(const phone::PhoneDirectory& directory, std::string_view peer, const Json& request)
{
    if (!connectToPhone(directory))
        return { { "ok", false }, { "error", "the phone at " + directory.root() + " isn't up" } };
    return askPhone(peer, request);
}

} // namespace cli
