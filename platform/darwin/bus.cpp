#include "platform/darwin/bus.h"

#include "platform/darwin/bus_connection.h"
#include "platform/darwin/notification_delivery.h"
#include "platform/dispatch/activity.h"
#include "platform/dispatch/queue.h"

#include <deque>
#include <mutex>
#include <thread>
#include <utility>

namespace platform {

namespace {

using detail::BusConnection;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

struct Post {
    std::string name;
    detail::PostNumber number;
};

struct Bus {
    std::mutex mutex; ///< guards the next three; the rest belongs to the main thread
    bool connected = false;
    std::thread::id mainThread;
    std::deque<Post> unsent;

    std::shared_ptr<BusConnection> connection;
    std::deque<Post> unheard; ///< sent, and not yet come back
    std::function<void()> lost;
    BusHandler handler;
};

Bus& bus()
{
    static auto* const shared = new Bus;
    return *shared;
}

void sendPosts()
{
    const std::shared_ptr<BusConnection> connection = bus().connection;
    if (!connection)
        return;
    std::unique_lock lock(bus().mutex);
    while (!bus().unsent.empty()) {
        Post post = std::move(bus().unsent.front());
        bus().unsent.pop_front();
        lock.unlock();
        const bool sent = connection->post(post.name);
        lock.lock();
        if (!sent) {
            bus().unsent.push_front(std::move(post));
            return;
        }
        bus().unheard.push_back(std::move(post));
    }
}

void hearPost(std::string name, BusConnection::Poster poster)
{
    if (poster == BusConnection::Poster::AnotherProcess || bus().unheard.empty()) {
        detail::deliverNotification(std::move(name), detail::nextPostNumber());
        return;
    }
    Post post = std::move(bus().unheard.front());
    bus().unheard.pop_front();
    detail::deliverNotification(std::move(post.name), post.number);
}

void answerRequest(std::string request, BusReply reply)
{
    // Behind the notifications that came before it, which wait on the main queue.
    dispatch_async(dispatch_get_main_queue(), [request = std::move(request), reply = std::move(reply)] {
        const BusHandler handler = bus().handler;
        if (!handler)
            return;
        handler(request, [reply](std::string_view text) {
            // What the answer took to work out was posted before it, and is to be heard before it.
            sendPosts();
            reply(text);
        });
    });
}

/// Lets go of the connection; what it hasn't brought back is heard in this process all the same.
void endConnection()
{
    std::deque<Post> remaining = std::exchange(bus().unheard, {});
    {
        const std::lock_guard lock(bus().mutex);
        bus().connected = false;
        for (Post& post : std::exchange(bus().unsent, {}))
            remaining.push_back(std::move(post));
    }
    for (Post& post : remaining)
        detail::deliverNotification(std::move(post.name), post.number);
    bus().connection.reset();
}

void loseConnection()
{
    const std::function<void()> lost = std::exchange(bus().lost, {});
    endConnection();
    if (lost)
        lost();
}

} // namespace

bool detail::postOnBus(const std::string& name, PostNumber number)
{
    bool onMainThread = false;
    bool first = false;
    {
        const std::lock_guard lock(bus().mutex);
        if (!bus().connected)
            return false;
        onMainThread = bus().mainThread == std::this_thread::get_id();
        first = bus().unsent.empty();
        bus().unsent.push_back({ name, number });
    }
    if (onMainThread)
        sendPosts();
    else if (first)
        dispatch_async(dispatch_get_main_queue(), sendPosts);
    return true;
}

bool connectBus(const std::string& address, std::string_view peerName, std::function<void()> lost)
{
    if (bus().connection)
        return false;
    bus().connection = BusConnection::open(address, peerName, { hearPost, answerRequest, sendPosts, loseConnection });
    if (!bus().connection)
        return false;
    bus().lost = std::move(lost);
    const std::lock_guard lock(bus().mutex);
    bus().connected = true;
    bus().mainThread = std::this_thread::get_id();
    return true;
}

void disconnectBus()
{
    constexpr milliseconds patience(1000);
    if (!bus().connection)
        return;
    flushBus(patience);
    bus().connection->handleReceived();
    bus().lost = {};
    endConnection();
}

bool busIsConnected() noexcept
{
    const std::lock_guard lock(bus().mutex);
    return bus().connected;
}

void setBusHandler(BusHandler handler)
{
    bus().handler = std::move(handler);
}

void requestFromPeer(std::string_view peerName, std::string_view request, milliseconds limit,
    std::function<void(const BusOutcome&)> done)
{
    if (!bus().connection) {
        dispatch_async(dispatch_get_main_queue(), [done = std::move(done)] { done({}); });
        return;
    }
    sendPosts();
    bus().connection->request(
        peerName, request, limit, [activity = currentActivity(), done = std::move(done)](const BusOutcome& outcome) {
            const ActivityScope scope(activity);
            done(outcome);
        });
}

BusOutcome requestFromPeerAndWait(std::string_view peerName, std::string_view request, milliseconds limit)
{
    if (!bus().connection)
        return {};
    sendPosts();
    return bus().connection->requestAndWait(peerName, request, limit);
}

bool flushBus(milliseconds limit)
{
    const steady_clock::time_point start = steady_clock::now();
    while (bus().connection) {
        sendPosts();
        const milliseconds remaining = limit - std::chrono::duration_cast<milliseconds>(steady_clock::now() - start);
        if (!bus().connection->roundTrip(remaining))
            return false;
        const std::lock_guard lock(bus().mutex);
        if (bus().unsent.empty())
            return true;
    }
    return false;
}

} // namespace platform
