#include "platform/darwin/bus.h"
#include "platform/darwin/device.h"
#include "platform/darwin/notify.h"
#include "platform/dispatch/clock.h"
#include "platform/dispatch/queue.h"
#include "platform/dispatch/run_loop.h"

#include <gtest/gtest.h>

#include <csignal>
#include <thread>
#include <vector>

using namespace platform;
using namespace platform::test;
using namespace std::chrono_literals;

namespace {

using Status = BusOutcome::Status;

constexpr auto patience = 60s;

std::string journal;

void observe(CFNotificationCallback callback, std::string_view name)
{
    CFNotificationCenterAddObserver(callback, name, CFNotificationSuspensionBehavior::DeliverImmediately);
}

/// A post that isn't this thread's to send.
void postFromAnotherThread(std::string_view name)
{
    std::thread([name] { CFNotificationCenterPostNotification(name); }).join();
}

/// A process of the device with that name on the bus, which answers until it is killed.
class Peer : public Process {
public:
    Peer(const BusDaemon& daemon, std::string_view name, const BusHandler& handler)
        : Process([&](const Say& say) {
            setBusHandler(handler);
            observe([] { journal += "heard "; }, "note");
            EXPECT_TRUE(connectBus(daemon.address(), name, [] {}));
            say("ready");
            runRunLoop();
            return 0;
        })
    {
        EXPECT_EQ(line(), "ready");
    }
};

void echo(std::string_view request, const BusReply& reply)
{
    reply("echo " + std::string(request));
}

std::string text(const BusOutcome& outcome)
{
    switch (outcome.status) {
    case Status::Replied:
        return outcome.reply;
    case Status::NoSuchPeer:
        return "(no such peer)";
    case Status::TimedOut:
        return "(timed out)";
    case Status::Disconnected:
        return "(disconnected)";
    }
    return {};
}

/// What comes of a request, asked both ways, which have to agree.
std::string ask(std::string_view peer, std::string_view request, std::chrono::milliseconds limit = patience)
{
    const std::string waited = text(requestFromPeerAndWait(peer, request, limit));
    std::optional<std::string> called;
    requestFromPeer(peer, request, limit, [&](const BusOutcome& outcome) { called = text(outcome); });
    EXPECT_EQ(called, std::nullopt) << "not before the call returns";
    runUntil([&] { return called.has_value(); }, patience);
    EXPECT_EQ(called, waited);
    return waited;
}

void connect(const BusDaemon& daemon, std::string_view name = {})
{
    ASSERT_TRUE(connectBus(daemon.address(), name, [] {}));
}

TEST(BusRequests, CarryBytesOfAnyKindAndSize)
{
    const BusDaemon daemon;
    const Peer peer(daemon, "SpringBoard", echo);
    connect(daemon);
    const std::string large(std::size_t { 1 } << 20, 'x');
    for (const std::string& request : { std::string("tap"), std::string(), std::string("nul\0inside", 10),
             std::string("Caf\xC3\xA9 \xEF\xBF\xBF"), std::string("latin-1 \xE9t\xE9"), large })
        EXPECT_EQ(ask("SpringBoard", request), "echo " + request);
}

TEST(BusRequests, ThatNobodyCanAnswerSaySoAtOnce)
{
    const BusDaemon daemon;
    const Peer deaf(daemon, "Deaf", nullptr);
    const Peer forgetful(daemon, "Forgetful", [](std::string_view, const BusReply&) {});
    const Peer echoing(daemon, "Echo", echo);
    setBusHandler(echo);
    EXPECT_EQ(ask("Echo", "not connected yet"), "(disconnected)");
    connect(daemon, "Tool");
    for (const std::string_view name : { "Nobody", "Deaf", "Forgetful", "", "not a name", "1st" })
        EXPECT_EQ(ask(name, "hello"), "(no such peer)") << name;
    EXPECT_EQ(text(requestFromPeerAndWait("Tool", "to itself", patience)), "(no such peer)");
    EXPECT_EQ(ask("Echo", "still there"), "echo still there");
    disconnectBus();
    EXPECT_EQ(ask("Echo", "no more"), "(disconnected)");
}

TEST(BusRequests, ToAPeerThatDiesMeanwhileEndWithIt)
{
    const BusDaemon daemon;
    const BusHandler die = [](std::string_view, const BusReply&) { raise(SIGKILL); };
    Peer first(daemon, "First", die);
    Peer second(daemon, "Second", die);
    connect(daemon);
    EXPECT_EQ(text(requestFromPeerAndWait("First", "die", patience)), "(no such peer)");
    EXPECT_EQ(first.wait(), -SIGKILL);
    std::string outcome;
    requestFromPeer("Second", "die", patience, [&](const BusOutcome& result) { outcome = text(result); });
    EXPECT_TRUE(runUntil([&] { return !outcome.empty(); }, patience));
    EXPECT_EQ(outcome, "(no such peer)");
}

TEST(BusRequests, ToAPeerThatKeepsSilentEndWithTheirLimit)
{
    // The clock of the platform stands; the limit is the machine's.
    holdClock();
    const BusDaemon daemon;
    const Peer peer(daemon, "Silent", echo);
    connect(daemon);
    peer.signal(SIGSTOP);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(ask("Silent", "hello", 30ms), "(timed out)");
    EXPECT_GE(std::chrono::steady_clock::now() - start, 60ms);
    EXPECT_EQ(ask("Silent", "hello", 0ms), "(timed out)");
    // The late replies are nobody's; the next one is the right one.
    peer.signal(SIGCONT);
    EXPECT_EQ(ask("Silent", "again"), "echo again");
}

TEST(BusRequests, EndWhenTheBusDies)
{
    BusDaemon daemon;
    const Peer peer(daemon, "Silent", echo);
    std::string events;
    ASSERT_TRUE(connectBus(daemon.address(), {}, [&] { events += "lost "; }));
    peer.signal(SIGSTOP);
    requestFromPeer("Silent", "hello", patience, [&](const BusOutcome& outcome) { events += text(outcome); });
    EXPECT_TRUE(flushBus(patience));
    daemon.end();
    EXPECT_EQ(text(requestFromPeerAndWait("Silent", "hello", patience)), "(disconnected)");
    EXPECT_TRUE(runUntil([&] { return events.size() > 5; }, patience));
    EXPECT_EQ(events, "lost (disconnected)");
}

TEST(BusRequests, GoToThePeerThatTookTheNameLast)
{
    const BusDaemon daemon;
    const auto answer
        = [](std::string_view what) { return [what](std::string_view, const BusReply& reply) { reply(what); }; };
    const Peer former(daemon, "SpringBoard", answer("former"));
    {
        const Peer latter(daemon, "SpringBoard", answer("latter"));
        connect(daemon);
        EXPECT_EQ(ask("SpringBoard", "who?"), "latter");
    }
    EXPECT_EQ(ask("SpringBoard", "who?"), "(no such peer)");
}

TEST(BusRequests, KeepTheirPlaceAmongThePostsOfBothSides)
{
    const BusDaemon daemon;
    const Peer peer(daemon, "SpringBoard", [](std::string_view request, const BusReply& reply) {
        journal += request;
        postFromAnotherThread("posted by peer");
        reply(std::exchange(journal, {}));
    });
    connect(daemon);
    observe([] { journal += "post "; }, "posted by peer");
    postFromAnotherThread("note");
    EXPECT_EQ(text(requestFromPeerAndWait("SpringBoard", "asked", patience)), "heard asked");
    // What came in while it waited is there without another message.
    runUntilIdle();
    EXPECT_EQ(std::exchange(journal, {}), "post ");

    CFNotificationCenterPostNotification("note");
    postFromAnotherThread("note");
    bool done = false;
    requestFromPeer("SpringBoard", "asked", patience, [&](const BusOutcome& outcome) {
        journal += text(outcome);
        done = true;
    });
    runUntil([&] { return done; }, patience);
    EXPECT_EQ(journal, "post heard heard asked");
}

TEST(BusRequests, AreAnsweredLaterAndInAnyOrder)
{
    const BusDaemon daemon;
    const Peer peer(daemon, "SpringBoard",
        [waiting = std::make_shared<std::vector<BusReply>>()](std::string_view request, const BusReply& reply) {
            waiting->push_back(reply);
            if (request != "last")
                return;
            while (!waiting->empty()) {
                waiting->back()("reply " + std::to_string(waiting->size()));
                waiting->pop_back();
            }
        });
    connect(daemon);
    for (const char* request : { "first", "second", "last" })
        requestFromPeer("SpringBoard", request, patience,
            [request](const BusOutcome& outcome) { journal += request + (": " + text(outcome)) + " | "; });
    runUntil([] { return journal.find("first") != std::string::npos; }, patience);
    EXPECT_EQ(journal, "last: reply 3 | second: reply 2 | first: reply 1 | ");
}

TEST(BusRequests, LargerThanTheSocketGoOutInTurns)
{
    const BusDaemon daemon;
    const Peer peer(
        daemon, "Size", [](std::string_view request, const BusReply& reply) { reply(std::to_string(request.size())); });
    connect(daemon);
    daemon.signal(SIGSTOP);
    std::string size;
    requestFromPeer(
        "Size", std::string(18'000'000, 'x'), patience, [&](const BusOutcome& outcome) { size = text(outcome); });
    runUntilIdle();
    daemon.signal(SIGCONT);
    EXPECT_TRUE(runUntil([&] { return !size.empty(); }, patience));
    EXPECT_EQ(size, "18000000");
}

} // namespace
