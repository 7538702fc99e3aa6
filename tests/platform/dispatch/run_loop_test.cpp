#include "platform/dispatch/run_loop.h"

#include "platform/dispatch/clock.h"
#include "platform/dispatch/queue.h"

#include <gtest/gtest.h>

#include <memory>
#include <semaphore>
#include <stdexcept>
#include <string>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

using namespace platform;
using namespace std::chrono_literals;

namespace {

struct SocketPair {
    SocketPair() { EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0, ends), 0); }
    ~SocketPair()
    {
        close(ends[0]);
        if (ends[1] >= 0)
            close(ends[1]);
    }
    void write(std::string_view text) const
    {
        EXPECT_EQ(::write(ends[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
    std::string read() const
    {
        char buffer[64];
        const ssize_t count = ::read(ends[0], buffer, sizeof buffer);
        return count > 0 ? std::string(buffer, static_cast<std::size_t>(count)) : count == 0 ? "(end)" : "(nothing)";
    }
    void closeWriter() { close(std::exchange(ends[1], -1)); }

    int ends[2] = { -1, -1 };
};

TEST(RunLoop, CallsASourceForEachArrivalAndAtTheEndAndNotAfterItsRemoval)
{
    SocketPair pair;
    std::string journal;
    const RunLoopSource source = addRunLoopSource(pair.ends[0], [&] {
        journal += pair.read() + ' ';
        if (journal.ends_with("(end) "))
            removeRunLoopSource(source);
    });
    EXPECT_FALSE(runUntilIdle());
    pair.write("one");
    EXPECT_TRUE(runUntilIdle());
    pair.write("two");
    runUntilIdle();
    pair.closeWriter();
    runUntilIdle();
    EXPECT_EQ(journal, "one two (end) ");
    EXPECT_FALSE(runUntilIdle());
}

TEST(RunLoop, ASourceMayRemoveAnotherThatIsReadyToo)
{
    SocketPair first;
    SocketPair second;
    int calls = 0;
    RunLoopSource sources[2];
    sources[0] = addRunLoopSource(first.ends[0], [&] {
        ++calls;
        removeRunLoopSource(sources[0]);
        removeRunLoopSource(sources[1]);
    });
    sources[1] = addRunLoopSource(second.ends[0], [&] {
        ++calls;
        removeRunLoopSource(sources[0]);
        removeRunLoopSource(sources[1]);
    });
    first.write("x");
    second.write("x");
    runUntilIdle();
    EXPECT_EQ(calls, 1);
}

TEST(RunLoop, ASourceThatRunsTheLoopIsNotEnteredAgain)
{
    SocketPair pair;
    std::string journal;
    const RunLoopSource source = addRunLoopSource(pair.ends[0], [&] {
        dispatch_async(dispatch_get_main_queue(), [&] { journal += "main "; });
        runUntilIdle();
        journal += pair.read();
    });
    pair.write("x");
    runUntilIdle();
    EXPECT_EQ(journal, "main x");
    removeRunLoopSource(source);
}

TEST(RunLoop, ASourceIsNotCalledForWhatALoopInsideAnotherHasRead)
{
    SocketPair pairs[2];
    std::string journal;
    RunLoopSource sources[2];
    for (const int index : { 0, 1 })
        sources[index] = addRunLoopSource(pairs[index].ends[0], [&, index] {
            journal += pairs[index].read() + ' ';
            runUntilIdle();
        });
    pairs[0].write("first");
    pairs[1].write("second");
    runUntilIdle();
    EXPECT_EQ(journal, "first second ");
    for (const RunLoopSource source : sources)
        removeRunLoopSource(source);
}

TEST(RunLoop, StopsAfterTheWorkAtHandAndKeepsTheRest)
{
    std::string journal;
    const dispatch_queue_t main = dispatch_get_main_queue();
    dispatch_async(main, [&] {
        journal += "first ";
        stopRunLoop();
        journal += "goes on ";
    });
    dispatch_async(main, [&] {
        journal += "second ";
        stopRunLoop();
    });
    runRunLoop();
    EXPECT_EQ(journal, "first goes on ");
    stopRunLoop();
    runRunLoop();
    EXPECT_EQ(journal, "first goes on ");
    runRunLoop();
    EXPECT_EQ(journal, "first goes on second ");

    // A stop is for runRunLoop() alone.
    stopRunLoop();
    dispatch_async(main, [&] { journal += "third"; });
    EXPECT_TRUE(runUntilIdle());
    EXPECT_EQ(journal, "first goes on second third");
}

TEST(RunLoop, SleepsUntilAThreadOrATimeWakesIt)
{
    std::string journal;
    std::jthread thread;
    const double start = CACurrentMediaTime();
    dispatch_after(20ms, dispatch_get_main_queue(), [&] {
        journal += "delayed ";
        thread = std::jthread([&] {
            dispatch_after(1ms, dispatch_get_main_queue(), [&] {
                journal += "delayed by a thread ";
                thread = std::jthread(stopRunLoop);
            });
        });
    });
    runRunLoop();
    EXPECT_EQ(journal, "delayed delayed by a thread ");
    EXPECT_GE(CACurrentMediaTime() - start, 0.021);
}

TEST(RunLoop, MissesNoWorkThatAThreadQueuesAsItFallsAsleep)
{
    constexpr int rounds = 20'000;
    int ran = 0;
    std::binary_semaphore next(1);
    std::jthread thread([&] {
        for (int round = 0; round < rounds; ++round) {
            next.acquire();
            dispatch_async(dispatch_get_main_queue(), [&] {
                if (++ran == rounds)
                    stopRunLoop();
                next.release();
            });
        }
    });
    runRunLoop();
    EXPECT_EQ(ran, rounds);
}

TEST(RunLoop, WaitsForAConditionOrItsLimit)
{
    holdClock();
    int runs = 0;
    std::function<void()> again = [&] {
        ++runs;
        dispatch_async(dispatch_get_main_queue(), again);
    };
    dispatch_async(dispatch_get_main_queue(), again);
    EXPECT_TRUE(runUntil([&] { return runs == 3; }, std::chrono::milliseconds::max()));
    EXPECT_EQ(runs, 3);
    EXPECT_FALSE(runUntil([] { return false; }, 10ms));
}

TEST(RunLoop, LetsGoOfWhatWorkHeldBeforeTheNextWork)
{
    // As the last reference goes, the object queues work: the queue isn't locked then.
    std::string journal;
    const auto atEnd
        = [&](int*) { dispatch_async(dispatch_get_main_queue(), [&] { journal += "queued at the end "; }); };
    static int object = 0;
    dispatch_async(dispatch_get_main_queue(), [&, held = std::shared_ptr<int>(&object, atEnd)] { journal += "work "; });
    runUntilIdle();
    EXPECT_EQ(journal, "work queued at the end ");
}

TEST(RunLoopDeathTest, AnExceptionThatLeavesWorkEndsTheProcess)
{
    EXPECT_DEATH(
        {
            dispatch_async(dispatch_get_main_queue(), [] { throw std::runtime_error("left the work"); });
            try {
                runUntilIdle();
            } catch (const std::runtime_error&) {
            }
        },
        "left the work");
}

} // namespace
