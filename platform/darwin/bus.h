#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

/// The device's bus: a private message-bus daemon on a socket, over which processes post Darwin
/// notifications and answer each other's requests. One connection a process, served by the main run loop.

namespace platform {

/// Answers one request; the reply goes back when `reply` is called, once, on the main thread, now or later,
/// behind what this process has posted until then. When every copy of `reply` is gone uncalled, the peer
/// that asked gets NoSuchPeer.
using BusReply = std::function<void(std::string_view reply)>;
using BusHandler = std::function<void(std::string_view request, BusReply reply)>;

struct BusOutcome {
    enum class Status {
        Replied,
        NoSuchPeer, ///< no such name, nobody there who answers, or the peer ended before it answered
        TimedOut,
        Disconnected, ///< this process has no connection, or lost it meanwhile
    };
    Status status = Status::Disconnected;
    std::string reply;
};

/// Connects this process to the bus at `address` ("unix:path=…"), takes the name `peerName` on it when one
/// is given (letters and digits, a letter first; it takes over from a peer that still holds it), and starts
/// to receive Darwin notifications: those posted from now on are delivered once the run loop runs, and all
/// processes hear all posts in one and the same order. `lost` is called on the main thread when the
/// connection ends by itself; then, and after disconnectBus(), the process may connect again. False when it
/// can't be made within seconds or is there already. Main thread.
bool connectBus(const std::string& address, std::string_view peerName, std::function<void()> lost);

/// Hands over what was posted, waiting for it a second at most, and closes the connection; later posts are
/// heard in this process alone. Main thread.
void disconnectBus();
bool busIsConnected() noexcept;

/// What answers requests that other peers send to this one, on the main queue in their order, each behind
/// the notifications that came before it. Requests and replies are any bytes, up to 60 MB. Set it
/// before connecting: a request that nothing can answer gets NoSuchPeer. Main thread.
void setBusHandler(BusHandler handler);

/// Sends a request, behind what this process has posted until then, and calls `done` on the main thread
/// with what came of it. The limit is in the machine's time, even when the clock is held. A request that
/// can't be sent (the name isn't one, or it is too large) gives NoSuchPeer. Main thread.
void requestFromPeer(std::string_view peerName, std::string_view request, std::chrono::milliseconds limit,
    std::function<void(const BusOutcome&)> done);

/// The same, and waits for it. Meanwhile the run loop doesn't run, so a process can't ask itself: NoSuchPeer.
BusOutcome requestFromPeerAndWait(std::string_view peerName, std::string_view request, std::chrono::milliseconds limit);

/// Waits until everything that this process has posted has been handed to the bus, at most for `limit`;
/// what has been posted by then also waits for this process's own run loop. False when the time is over or
/// there is no connection. Main thread.
bool flushBus(std::chrono::milliseconds limit);

} // namespace platform
