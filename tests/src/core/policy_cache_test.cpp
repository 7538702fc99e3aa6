#include "core/policy_cache.h"

#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <string>
#include <thread>

namespace appledger {

using namespace platform;

namespace {

std::string listed(const PolicyCache& cache)
{
    std::string text;
    const auto reading = cache.read();
    for (const std::string_view identifier : reading.list()) {
        EXPECT_TRUE(reading.contains(identifier));
        EXPECT_TRUE(reading.list().contains(identifier));
        text.append(identifier).append(" ");
    }
    return text;
}

TEST(PolicyCache, ListsTheStringsOfAnArrayInItsOrderAndNothingElse)
{
    const struct {
        const char* what;
        id value;
        std::string listed;
    } cases[] = {
        { "nil", nil, "" },
        { "empty", emptyArray(), "" },
        { "order and repetition kept", array({ "z", "a", "z", "m" }), "z a z m " },
        { "mixed items", array({ number(1), string("b"), array({ "inner" }), string("a"), boolean(true) }), "b a " },
        { "a mutable array", mutableArray({ string("b"), string("a") }), "b a " },
        { "a string", string("b a"), "" },
        { "a set", set({ string("a") }), "" },
        { "a dictionary", dictionary({ { "a", boolean(true) } }), "" },
        { "a number", number(7), "" },
        { "data", data("a"), "" },
    };
    static PolicyCache cache;
    EXPECT_EQ(listed(cache), "") << "never assigned";
    EXPECT_FALSE(cache.value());
    for (const auto& [what, value, expected] : cases) {
        cache.assign(value);
        EXPECT_EQ(listed(cache), expected) << what;
        EXPECT_EQ(cache.contains("a"), expected.find("a ") != std::string::npos) << what;
        EXPECT_FALSE(cache.contains("inner") || cache.contains("1") || cache.contains("") || cache.contains("a "))
            << what;
        EXPECT_EQ(cache.value().get(), value.get()) << what;
    }
}

TEST(PolicyCache, AReadingStaysAsItWasTaken)
{
    static PolicyCache cache;
    cache.assign(array({ "old" }));
    {
        const auto reading = cache.read();
        cache.assign(array({ "new", "newer" }));
        cache.assign(nil);
        EXPECT_TRUE(reading.contains("old"));
        EXPECT_FALSE(reading.contains("new"));
        EXPECT_EQ(*reading.list().begin(), "old");
    }
    EXPECT_EQ(listed(cache), "");
}

TEST(PolicyCache, ReadersInThreadsSeeWholeVersionsInOrderWhileAnotherAssigns)
{
    static PolicyCache cache;
    constexpr int versions = 2000;
    const auto assign = [](int version) {
        const std::string text = std::to_string(version);
        cache.assign(array({ "first" + text, "second" + text }));
    };
    assign(0);
    std::atomic<bool> ended { false };
    std::atomic<int> faults { 0 };
    std::vector<std::jthread> readers;
    for (int reader = 0; reader < 3; ++reader)
        readers.emplace_back([&] {
            int last = 0;
            while (!ended) {
                const auto reading = cache.read();
                const auto list = reading.list();
                const std::string version((*list.begin()).substr(5));
                if (list.size() != 2 || !reading.contains("second" + version) || std::stoi(version) < last)
                    ++faults;
                last = std::stoi(version);
            }
        });
    for (int version = 1; version <= versions; ++version)
        assign(version);
    ended = true;
    readers.clear();
    EXPECT_EQ(faults, 0);
    EXPECT_EQ(listed(cache), "first2000 second2000 ");
}

TEST(StringSet, HoldsExactlyWhatItWasGivenAtEveryLength)
{
    std::set<std::string> inside;
    std::set<std::string> outside;
    for (std::size_t length = 0; length <= 33; ++length) {
        const std::string text(length, 'a');
        inside.insert(text);
        for (std::size_t position = 0; position < length; ++position) {
            std::string changed = text;
            changed[position] = position % 3 == 0 ? '\0' : 'b';
            (position % 2 == 0 ? inside : outside).insert(changed);
        }
    }
    for (int number = 0; number < 3000; ++number)
        (number % 3 == 0 ? outside : inside).insert("com.example.application" + std::to_string(number));

    std::vector<std::string_view> items(inside.begin(), inside.end());
    items.insert(items.end(), inside.begin(), inside.end());
    const StringSet texts(items);
    EXPECT_EQ(texts.size(), inside.size());
    for (const std::string& text : inside)
        EXPECT_TRUE(texts.contains(text)) << text;
    for (const std::string& text : outside)
        EXPECT_FALSE(texts.contains(text)) << text;
}

TEST(StringSet, TakesNoStringForAnotherOfTheSameHash)
{
    // So many pairs that some have the same 32 bits of hash.
    constexpr std::size_t insideCount = 100'000;
    std::vector<std::string> texts;
    for (std::size_t number = 0; number < 5 * insideCount; ++number)
        texts.push_back("com.example." + std::to_string(number));
    const StringSet inside({ texts.begin(), texts.begin() + insideCount });
    EXPECT_EQ(inside.size(), insideCount);
    for (std::size_t index = 0; index < texts.size(); ++index)
        ASSERT_EQ(inside.contains(texts[index]), index < insideCount) << texts[index];
}

TEST(StringSet, KnowsTheEmptyStringAndTheEmptySet)
{
    EXPECT_FALSE(StringSet().contains(""));
    EXPECT_FALSE(StringSet(std::vector<std::string_view> {}).contains(""));
    const StringSet empty({ std::string_view() });
    EXPECT_TRUE(empty.contains(""));
    EXPECT_FALSE(empty.contains(std::string_view("\0", 1)));
}

} // namespace

} // namespace appledger
