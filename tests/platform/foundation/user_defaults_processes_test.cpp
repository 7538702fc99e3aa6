#include "platform/foundation/device_root.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/user_defaults.h"
#include "platform/foundation/values.h"

#include <atomic>
#include <csignal>
#include <functional>
#include <random>
#include <set>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace platform {
namespace {

constexpr std::string_view suite = "com.example.settings";
constexpr std::string_view file = "/var/mobile/Library/Preferences/com.example.settings.plist";

/// Runs the work in a process of its own, which ends with status 0 when the work says that all went well.
pid_t spawn(const std::function<bool()>& work)
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(work() ? 0 : 1);
    return child;
}

int statusOf(pid_t child)
{
    int status = -1;
    ::waitpid(child, &status, 0);
    return status;
}

bool writeKeys(const std::string& prefix, int count)
{
    const auto defaults = NSUserDefaults::suite(suite);
    for (int index = 0; index < count; ++index) {
        defaults->setInteger(index, prefix + std::to_string(index));
        if (!defaults->synchronize())
            return false;
    }
    return true;
}

std::size_t countInFile()
{
    const auto pairs = asDictionary(dictionaryWithContentsOfFile(file));
    return pairs ? pairs->size() : 0;
}

TEST(UserDefaultsAmongProcesses, WritersOfDifferentKeysLoseNothing)
{
    const DeviceRoot device;
    std::vector<pid_t> children;
    for (const char* const prefix : { "a", "b", "c" })
        children.push_back(spawn([prefix] { return writeKeys(prefix, 60); }));
    EXPECT_TRUE(writeKeys("d", 60));
    for (const pid_t child : children)
        EXPECT_EQ(statusOf(child), 0);
    EXPECT_EQ(countInFile(), 240U);
    EXPECT_EQ(asDictionary(NSUserDefaults::suite(suite)->dictionaryRepresentation())->size(), 240U);
}

TEST(UserDefaultsAmongProcesses, WritersOfOneListLoseNothingAndBringNothingBack)
{
    const DeviceRoot device;
    constexpr int count = 40;
    const auto change = [](const std::string& item, bool isWanted) {
        return NSUserDefaults::suite(suite)
            ->change("list",
                [&](const id& present) {
                    std::vector<id> items;
                    for (const id& each : itemsOf(present))
                        if (!isEqual(each, string(item)))
                            items.push_back(each);
                    if (isWanted)
                        items.push_back(string(item));
                    return array(std::move(items));
                })
            .isDone();
    };
    std::vector<pid_t> children;
    for (const char* const prefix : { "a", "b", "c", "d" })
        children.push_back(spawn([&] {
            bool isDone = true;
            for (int index = 0; index < count; ++index)
                isDone = change(prefix + std::to_string(index), true)
                    && (index % 2 == 1 || change(prefix + std::to_string(index), false)) && isDone;
            return isDone;
        }));
    std::set<std::string> expected;
    for (const char* const prefix : { "a", "b", "c", "d" })
        for (int index = 1; index < count; index += 2)
            expected.insert(prefix + std::to_string(index));
    for (const pid_t child : children)
        EXPECT_EQ(statusOf(child), 0);
    std::set<std::string> listed;
    const id stored = pairsOf(dictionaryWithContentsOfFile(file))["list"];
    for (const id& item : itemsOf(stored))
        listed.insert(asString(item)->text());
    EXPECT_EQ(listed, expected);
    EXPECT_EQ(itemsOf(stored).size(), expected.size());
}

TEST(UserDefaultsAmongProcesses, AWriterKilledAtAnyInstantLosesNothingThatItHadPublished)
{
    const DeviceRoot device;
    std::mt19937 random(3);
    std::set<std::string> published;
    for (int round = 0; round < 25; ++round) {
        int reports[2];
        ASSERT_EQ(::pipe(reports), 0);
        const std::string prefix = "round" + std::to_string(round) + "-";
        const pid_t child = spawn([&] {
            const auto defaults = NSUserDefaults::suite(suite);
            for (int index = 0;; ++index) {
                // Longer than a page, so that a write has a middle.
                defaults->setObject(string(std::string(6000, 'x')), prefix + std::to_string(index));
                if (!defaults->synchronize() || ::write(reports[1], "", 1) != 1)
                    return false;
            }
        });
        ::close(reports[1]);
        char report = 0;
        int count = 0;
        for (const int wanted = 1 + static_cast<int>(random() % 4); count < wanted; ++count)
            ASSERT_EQ(::read(reports[0], &report, 1), 1);
        for (auto spins = random() % 200'000; spins > 0; --spins)
            std::atomic_signal_fence(std::memory_order_seq_cst);
        ::kill(child, SIGKILL);
        EXPECT_EQ(statusOf(child), SIGKILL);
        while (::read(reports[0], &report, 1) == 1)
            ++count;
        ::close(reports[0]);
        for (int index = 0; index < count; ++index)
            published.insert(prefix + std::to_string(index));

        const auto pairs = asDictionary(dictionaryWithContentsOfFile(file));
        ASSERT_TRUE(pairs) << "round " << round;
        for (const std::string& key : published)
            ASSERT_TRUE((*pairs)[key]) << key << " after round " << round;
    }
    EXPECT_TRUE(writeKeys("last", 1));
    EXPECT_EQ(directoryEntries("/var/mobile/Library/Preferences").size(), 2U);
}

TEST(UserDefaultsAmongThreads, ReadersSeeWholeValuesAndWritersLoseNothing)
{
    const DeviceRoot device;
    std::atomic<bool> done { false };
    std::vector<std::thread> threads;
    std::atomic<int> changes { 0 };
    const auto defaults = NSUserDefaults::suite(suite);
    const auto observer = defaults->addObserver("shared", [&](const id&) { ++changes; });
    for (int writer = 0; writer < 2; ++writer)
        threads.emplace_back([writer] {
            const auto own = NSUserDefaults::suite(suite);
            for (int index = 0; index < 30; ++index) {
                own->setInteger(index, (writer == 0 ? "a" : "b") + std::to_string(index));
                own->setObject(array({ "x", "y" }), "shared");
                if (index % 3 == 0)
                    own->removeObject("shared");
                EXPECT_TRUE(own->synchronize());
            }
        });
    threads.emplace_back([&] {
        while (!done) {
            const id value = NSUserDefaults::suite(suite)->objectForKey("shared");
            EXPECT_TRUE(!value || asArray(value)->size() == 2);
            const id copied = CFPreferencesCopyAppValue("shared", suite);
            EXPECT_TRUE(!copied || asArray(copied)->contains("y"));
        }
    });
    threads[0].join();
    threads[1].join();
    done = true;
    threads[2].join();
    defaults->removeObserver(observer);
    EXPECT_GT(changes, 0);
    defaults->removeObject("shared");
    EXPECT_TRUE(defaults->synchronize());
    EXPECT_EQ(countInFile(), 60U);
}

} // namespace
} // namespace platform
