#pragma once

#include "platform/dispatch/run_loop.h"

#include <functional>
#include <memory>

struct sd_bus;

namespace platform::detail {

/// Serves a message-bus connection from the run loop: its descriptor, its time limits, and the messages
/// that a waiting call has read and left inside. Main thread.
class BusPump : public std::enable_shared_from_this<BusPump> {
public:
    struct Events {
        std::function<void()> served; ///< after messages were handled or sent
        std::function<void()> ended; ///< the connection is over; the pump may be let go of in the call
    };

    /// Null when the system lacks the descriptors. `bus` stays the caller's and outlives the pump.
    static std::shared_ptr<BusPump> make(sd_bus* bus, Events events);

    ~BusPump();
    BusPump(const BusPump&) = delete;
    BusPump& operator=(const BusPump&) = delete;

    /// To be called after anything was done with the connection: sees to it that the run loop comes back
    /// when there is something to read, to write or to give up.
    void arm();

    /// Handles what has come in by now.
    void handleReceived();

private:
    BusPump(sd_bus* bus, Events events, int pollDescriptor, int timerDescriptor);

    void serve();
    void serveSoon();

    sd_bus* const bus_;
    const Events events_;
    const int pollDescriptor_; ///< readable when the bus, in the direction that it waits for, or the timer is ready
    const int timerDescriptor_;
    RunLoopSource source_ = 0;
    unsigned awaited_ = 0;
    bool timerIsSet_ = false;
    bool servesSoon_ = false;
};

} // namespace platform::detail
