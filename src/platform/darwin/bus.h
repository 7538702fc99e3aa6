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

/// Answers one request; the reply goes back when `reply` is called, once, on the main thread, now or later.
using BusReply = std::function<void(std::string_view reply)>;
using BusHandler = std::function<void(std::string_view request, BusReply reply)>;

struct BusOutcome {
    enum class Status { Replied, NoSuchPeer, TimedOut, Disconnected };
    Status status = Status::Disconnected;
    std::string reply;
};

/// Connects this process to the bus at `address` ("unix:path=…"), takes the name `peerName` on it when one
/// is given (letters and digits; it takes over from a peer that still holds it), and starts to receive
/// Darwin notifications: those posted from now on are delivered once the run loop runs. `lost` is called
/// on the main thread when the connection ends. False when it can't be made. Main thread, once.
bool connectBus(const std::string& address, std::string_view peerName, std::function<void()> lost);

/// Closes the connection; posts are then heard in this process alone. Main thread.
void disconnectBus();
bool busIsConnected() noexcept;

/// What answers requests that other peers send to this one. Requests and replies are UTF-8 text.
void setBusHandler(BusHandler handler);

/// Sends a request and calls `done` on the main thread with what came of it. Main thread.
void requestFromPeer(std::string_view peerName, std::string_view request, std::chrono::milliseconds limit,
    std::function<void(const BusOutcome&)> done);

/// The same, and waits for it. Meanwhile the run loop doesn't run.
BusOutcome requestFromPeerAndWait(std::string_view peerName, std::string_view request, std::chrono::milliseconds limit);

/// Waits until everything that this process has posted has been handed to the bus, at most for `limit`.
bool flushBus(std::chrono::milliseconds limit);

} // namespace platform
