#include "platform/darwin/notify.h"

#include "platform/dispatch/queue.h"
#include "platform/dispatch/run_loop.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <utility>

using namespace platform;

namespace {

std::string journal;
int calls = 0;

template <char Name> void note()
{
    journal += Name;
}

void count()
{
    ++calls;
}

void observe(CFNotificationCallback callback, std::string_view name)
{
    CFNotificationCenterAddObserver(callback, name, CFNotificationSuspensionBehavior::DeliverImmediately);
}

std::string delivered()
{
    runUntilIdle();
    return std::exchange(journal, {});
}

TEST(DarwinNotifications, ReachEachObserverOnceInTheOrderOfPostsAndObservers)
{
    observe(note<'a'>, "a");
    observe(note<'b'>, "b");
    observe(note<'A'>, "a");
    for (const std::string_view name : { "b", "a", "nobody's", "b" })
        CFNotificationCenterPostNotification(name);
    EXPECT_EQ(journal, "") << "no callback runs in the post";
    EXPECT_EQ(delivered(), "baAb");
    EXPECT_EQ(delivered(), "");
}

TEST(DarwinNotifications, KeepTheirPlaceAmongTheWorkOfTheMainQueue)
{
    observe(note<'n'>, "n");
    dispatch_async(dispatch_get_main_queue(), note<'1'>);
    CFNotificationCenterPostNotification("n");
    dispatch_async(dispatch_get_main_queue(), note<'2'>);
    EXPECT_EQ(delivered(), "1n2");
}

TEST(DarwinNotifications, ArePostedAndObservedFromCallbacks)
{
    observe(
        [] {
            journal += 'f';
            observe(note<'s'>, "second");
            CFNotificationCenterPostNotification("second");
            journal += 'g';
        },
        "first");
    CFNotificationCenterPostNotification("first");
    EXPECT_EQ(delivered(), "fgs");
}

TEST(DarwinNotifications, ReachOnlyObserversThatWereThereBefore)
{
    CFNotificationCenterPostNotification("a");
    observe(note<'a'>, "a");
    EXPECT_EQ(delivered(), "");
    CFNotificationCenterPostNotification("a");
    EXPECT_EQ(delivered(), "a");
}

TEST(DarwinNotifications, AreNotPostedUnderNamesThatAreNotText)
{
    const std::string longest(1024, 'x');
    const struct {
        std::string name;
        bool posted;
    } cases[] = {
        { "com.appledger.forcerefresh", true },
        { "", true },
        { longest, true },
        { longest + 'x', false },
        { std::string("nul\0inside", 10), false },
        { "caf\xC3\xA9", true },
        { "\xF0\x9F\x93\xB1", true },
        { "\xEF\xBF\xBD", true },
        { "cut \xC3", false },
        { "cut \xF0\x9F\x93", false },
        { "bare continuation \x80", false },
        { "overlong \xC0\xAF", false },
        { "overlong \xE0\x80\xAF", false },
        { "overlong \xF0\x80\x80\xAF", false },
        { "surrogate \xED\xA0\x80", false },
        { "too far \xF4\x90\x80\x80", false },
        { "latin-1 \xE9t\xE9", false },
    };
    for (const auto& [name, posted] : cases) {
        observe(count, name);
        CFNotificationCenterPostNotification(name);
        runUntilIdle();
        EXPECT_EQ(std::exchange(calls, 0), posted ? 1 : 0) << name;
    }
}

TEST(DarwinNotifications, ArePostedFromAnyThreadAndHeardOnTheMainOne)
{
    static const std::thread::id mainThread = std::this_thread::get_id();
    observe(
        [] {
            ++calls;
            EXPECT_EQ(std::this_thread::get_id(), mainThread);
        },
        "a");
    std::atomic<int> ended { 0 };
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < 3; ++thread)
        threads.emplace_back([&] {
            for (int post = 0; post < 200; ++post) {
                CFNotificationCenterPostNotification("a");
                observe(count, "b");
            }
            ++ended;
        });
    EXPECT_TRUE(runUntil([&] { return ended == 3; }, std::chrono::seconds(60)));
    runUntilIdle();
    EXPECT_EQ(calls, 600);
    EXPECT_EQ(darwinObservers().size(), 601U);
}

TEST(DarwinNotifications, TellTheirObserversInTheOrderOfAddition)
{
    observe(note<'b'>, "b");
    CFNotificationCenterAddObserver(note<'a'>, "a", CFNotificationSuspensionBehavior::Coalesce);
    const std::vector<DarwinObserver> observers = darwinObservers();
    ASSERT_EQ(observers.size(), 2U);
    EXPECT_EQ(observers[0].name, "b");
    EXPECT_EQ(observers[0].suspensionBehavior, CFNotificationSuspensionBehavior::DeliverImmediately);
    EXPECT_EQ(observers[1].name, "a");
    EXPECT_EQ(observers[1].callback, note<'a'>);
    EXPECT_EQ(observers[1].suspensionBehavior, CFNotificationSuspensionBehavior::Coalesce);
}

} // namespace
