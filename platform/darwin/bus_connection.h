#pragma once

#include "platform/darwin/bus.h"
#include "platform/darwin/bus_pump.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

struct sd_bus;
struct sd_bus_message;

namespace platform::detail {

/// One connection to the bus daemon, in this system's words: notifications and requests. What comes in is
/// handed on while messages are being handled, so a receiver queues its work and returns. Main thread.
class BusConnection {
public:
    enum class Poster { ThisProcess, AnotherProcess };

    struct Receiver {
        std::function<void(std::string name, Poster poster)> posted;
        std::function<void(std::string request, BusReply reply)> requested;
        std::function<void()> served; ///< there may be room for what couldn't be sent
        std::function<void()> ended;
    };

    /// Null when the connection, the name or the subscription can't be had.
    static std::shared_ptr<BusConnection> open(
        const std::string& address, std::string_view peerName, Receiver receiver);

    /// Calls what still waits for a reply with Disconnected, from the main queue.
    ~BusConnection();
    BusConnection(const BusConnection&) = delete;
    BusConnection& operator=(const BusConnection&) = delete;

    /// True when the post was sent or queued for sending. It comes back to this process's receiver too.
    bool post(std::string_view name);

    void request(std::string_view peerName, std::string_view request, std::chrono::milliseconds limit,
        std::function<void(const BusOutcome&)> done);
    BusOutcome requestAndWait(std::string_view peerName, std::string_view request, std::chrono::milliseconds limit);

    /// Sends what is queued and waits until the daemon has answered behind it; by then this process's own
    /// posts have come back.
    bool roundTrip(std::chrono::milliseconds limit);

    /// Handles what has come in by now.
    void handleReceived() { pump_->handleReceived(); }

private:
    class Call;
    struct Callbacks;

    struct Waiting {
        BusConnection& connection;
        std::chrono::steady_clock::time_point deadline;
        std::function<void(const BusOutcome&)> done;
    };

    explicit BusConnection(Receiver receiver);

    bool start(const std::string& address, std::string_view peerName);
    const Receiver receiver_;
    sd_bus* bus_ = nullptr;
    std::string ownName_;
    std::shared_ptr<BusPump> pump_;
    std::map<const Waiting*, std::unique_ptr<Waiting>> waiting_;
    /// Lives as long as the connection: replies that are given later look whether there is still one.
    const std::shared_ptr<BusConnection*> present_ = std::make_shared<BusConnection*>(this);
};

} // namespace platform::detail
