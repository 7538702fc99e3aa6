#include "platform/darwin/bus.h"
#include "platform/darwin/device.h"
#include "platform/darwin/notify.h"
#include "platform/dispatch/queue.h"
#include "platform/dispatch/run_loop.h"

#include <gtest/gtest.h>

#include <csignal>
#include <thread>

using namespace platform;
using namespace platform::test;
using namespace std::chrono_literals;

namespace {

constexpr auto patience = 60s;

std::string journal;

template <char Name> void note()
{
    journal += Name;
}

/// Observers of "a" to "e", each of which notes its letter.
void observeLetters()
{
    constexpr std::pair<const char*, CFNotificationCallback> observers[]
        = { { "a", note<'a'> }, { "b", note<'b'> }, { "c", note<'c'> }, { "d", note<'d'> }, { "e", note<'e'> } };
    for (const auto& [name, callback] : observers)
        CFNotificationCenterAddObserver(callback, name, CFNotificationSuspensionBehavior::DeliverImmediately);
}

void postLetters(std::string_view letters)
{
    for (const char& letter : letters)
        CFNotificationCenterPostNotification({ &letter, 1 });
}

/// What is heard until a letter 'e', or until nothing more comes.
std::string heardUntilE()
{
    runUntil([] { return journal.ends_with('e'); }, patience);
    return std::exchange(journal, {});
}

/// A letter for each post, in an order without a short period.
std::string manyLetters(unsigned count, unsigned seed)
{
    std::string letters;
    for (unsigned state = seed; letters.size() < count;) {
        state = state * 1103515245 + 12345;
        letters += static_cast<char>('a' + (state >> 16) % 4);
    }
    return letters;
}

bool connect(const BusDaemon& daemon, std::string_view peerName = {})
{
    return connectBus(daemon.address(), peerName, [] {});
}

TEST(BusPosts, ReachThisProcessOnceInOrderWhetherOrNotItIsConnected)
{
    const BusDaemon daemon;
    observeLetters();
    postLetters("ab");
    ASSERT_TRUE(connect(daemon));
    EXPECT_TRUE(busIsConnected());
    EXPECT_FALSE(connect(daemon)) << "it is connected";
    // A name that a process heard unconnected it hears connected too.
    CFNotificationCenterAddObserver(note<'!'>, "\xEF\xBF\xBF", CFNotificationSuspensionBehavior::DeliverImmediately);
    CFNotificationCenterPostNotification("\xEF\xBF\xBF");
    postLetters("cd");
    EXPECT_TRUE(flushBus(patience));
    runUntilIdle();
    EXPECT_EQ(std::exchange(journal, {}), "ab!cd");
    postLetters("ba");
    disconnectBus();
    EXPECT_FALSE(busIsConnected());
    EXPECT_FALSE(flushBus(patience));
    postLetters("d");
    runUntilIdle();
    EXPECT_EQ(std::exchange(journal, {}), "bad");
    ASSERT_TRUE(connect(daemon));
    postLetters("e");
    EXPECT_EQ(heardUntilE(), "e");
}

TEST(BusPosts, OfAThousandKeepTheirOrderInEveryProcess)
{
    const BusDaemon daemon;
    const auto listen = [&](const Process::Say& say) {
        observeLetters();
        EXPECT_TRUE(connect(daemon));
        say("listening");
        say(heardUntilE());
        return 0;
    };
    Process first(listen);
    Process second(listen);
    EXPECT_EQ(first.line(), "listening");
    EXPECT_EQ(second.line(), "listening");
    observeLetters();
    ASSERT_TRUE(connect(daemon));
    const std::string letters = manyLetters(1000, 1) + 'e';
    postLetters(letters);
    EXPECT_EQ(heardUntilE(), letters);
    EXPECT_EQ(first.line(), letters);
    EXPECT_EQ(second.line(), letters);
    EXPECT_EQ(first.wait(), 0);
    EXPECT_EQ(second.wait(), 0);
}

TEST(BusPosts, OfSeveralProcessesAreHeardInOneOrderByAll)
{
    const BusDaemon daemon;
    const auto listenAndPost = [&](unsigned seed) {
        return [&, seed](const Process::Say& say) {
            observeLetters();
            EXPECT_TRUE(connect(daemon));
            say("listening");
            EXPECT_TRUE(runUntil([] { return journal.starts_with('e'); }, patience));
            for (const char letter : manyLetters(300, seed)) {
                postLetters({ &letter, 1 });
                runUntilIdle();
            }
            runUntil([] { return journal.size() == 601; }, patience);
            say(journal);
            return 0;
        };
    };
    Process first(listenAndPost(1));
    Process second(listenAndPost(2));
    EXPECT_EQ(first.line(), "listening");
    EXPECT_EQ(second.line(), "listening");
    ASSERT_TRUE(connect(daemon));
    postLetters("e");
    EXPECT_TRUE(flushBus(patience));
    const std::string heard = first.line();
    EXPECT_EQ(heard.size(), 601U);
    EXPECT_EQ(second.line(), heard);
}

TEST(BusPosts, GoOutFromAnyThreadOfAProcessThatRunsNoLoop)
{
    const BusDaemon daemon;
    Process listener([&](const Process::Say& say) {
        observeLetters();
        EXPECT_TRUE(connect(daemon));
        say("listening");
        say(heardUntilE());
        return 0;
    });
    EXPECT_EQ(listener.line(), "listening");
    Process tool([&](const Process::Say&) {
        EXPECT_TRUE(connect(daemon));
        postLetters("a");
        std::thread([] { postLetters("bc"); }).join();
        postLetters("d");
        EXPECT_TRUE(flushBus(patience));
        std::thread([] { postLetters("e"); }).join();
        disconnectBus();
        return 0;
    });
    EXPECT_EQ(tool.wait(), 0);
    EXPECT_EQ(listener.line(), "abcde");
}

TEST(BusPosts, FromManyThreadsAllArriveAndEachThreadsInOrder)
{
    const BusDaemon daemon;
    observeLetters();
    ASSERT_TRUE(connect(daemon));
    std::atomic<int> ended { 0 };
    std::vector<std::jthread> threads;
    for (const char* letters : { "ab", "cd" })
        threads.emplace_back([&, letters] {
            for (int round = 0; round < 200; ++round)
                postLetters(letters);
            ++ended;
        });
    EXPECT_TRUE(runUntil([&] { return ended == 2 && journal.size() >= 800; }, patience));
    EXPECT_TRUE(flushBus(patience));
    runUntilIdle();
    std::string first;
    std::string second;
    for (const char letter : journal)
        (letter < 'c' ? first : second) += letter;
    for (const auto& [heard, letters] : { std::pair(first, "ab"), std::pair(second, "cd") }) {
        EXPECT_EQ(heard.size(), 400U);
        for (std::size_t index = 0; index < heard.size(); ++index)
            ASSERT_EQ(heard[index], letters[index % 2]) << index;
    }
}

TEST(BusPosts, AreHeardInThisProcessOnceWhenTheBusDies)
{
    BusDaemon daemon;
    observeLetters();
    std::string events;
    ASSERT_TRUE(connectBus(daemon.address(), {}, [&] {
        EXPECT_FALSE(busIsConnected());
        events += "lost";
    }));
    postLetters("a");
    EXPECT_TRUE(flushBus(patience));
    // A daemon that is stopped takes posts and gives nothing back.
    daemon.signal(SIGSTOP);
    postLetters("bc");
    EXPECT_FALSE(flushBus(20ms));
    daemon.end();
    EXPECT_TRUE(runUntil([&] { return !events.empty(); }, patience));
    postLetters("d");
    runUntilIdle();
    EXPECT_EQ(journal, "abcd");
    EXPECT_EQ(events, "lost");

    const BusDaemon next;
    ASSERT_TRUE(connect(next));
    postLetters("e");
    EXPECT_EQ(heardUntilE(), "abcde");
}

TEST(BusPosts, WaitWhileTheBusTakesNoMoreAndGoOutWhenItDoes)
{
    const BusDaemon daemon;
    observeLetters();
    ASSERT_TRUE(connect(daemon));
    daemon.signal(SIGSTOP);
    const std::string letters = manyLetters(5000, 3) + 'e';
    postLetters(letters);
    runUntilIdle();
    EXPECT_EQ(journal, "");
    daemon.signal(SIGCONT);
    EXPECT_EQ(heardUntilE(), letters);
}

TEST(BusConnections, AreRefusedWithoutADaemonAndUnderNamesThatAreNone)
{
    EXPECT_FALSE(connectBus("unix:path=/nonexistent/bus", {}, [] {}));
    EXPECT_FALSE(connectBus("nonsense", {}, [] {}));
    const BusDaemon daemon;
    for (const std::string_view name : { "1st", "two words", "com.example", "dash-ed", "caf\xC3\xA9" })
        EXPECT_FALSE(connect(daemon, name)) << name;
    EXPECT_FALSE(connect(daemon, std::string(300, 'x')));
    EXPECT_FALSE(busIsConnected());
    EXPECT_TRUE(connect(daemon, "SpringBoard"));
}

} // namespace
