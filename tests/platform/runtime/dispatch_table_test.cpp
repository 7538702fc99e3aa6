#include "platform/runtime/dispatch_table.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace platform;

namespace {

IMP codeOf(std::size_t number)
{
    return reinterpret_cast<IMP>(number + 1);
}

/// Whether the table answers the first `count` selectors, each with its own code, and none of the others.
testing::AssertionResult answersFirst(const DispatchTable& table, const std::vector<SEL>& selectors, std::size_t count)
{
    for (std::size_t i = 0; i < selectors.size(); ++i)
        if (table.implementation(selectors[i], selectors[i]->hash) != (i < count ? codeOf(i) : nullptr)
            || (table.types(selectors[i]) != nullptr) != (i < count))
            return testing::AssertionFailure() << selectors[i]->name << " of " << count;
    return testing::AssertionSuccess();
}

TEST(DispatchTable, LosesNothingHoweverMethodsCrowd)
{
    std::vector<SEL> selectors;
    for (int i = 0; i < 400; ++i)
        selectors.push_back(sel_registerName("method" + std::to_string(i) + ":"));

    std::unique_ptr<DispatchTable> table = DispatchTable::make(16);
    for (std::size_t count = 0; count < selectors.size(); ++count) {
        while (!table->set(selectors[count], codeOf(count), "v@:@")) {
            ASSERT_TRUE(answersFirst(*table, selectors, count)) << "a refusal changes nothing";
            table = table->copy(2 * table->capacity());
        }
        ASSERT_TRUE(answersFirst(*table, selectors, count + 1));
        ASSERT_LE(2 * (count + 1), table->capacity()) << "a search must end at an empty entry";
        // In another order the same methods may crowd where they didn't: a copy grows by itself.
        ASSERT_TRUE(answersFirst(*table->copy(table->capacity()), selectors, count + 1));
        ASSERT_TRUE(answersFirst(*table->copy(16), selectors, count + 1));
    }
    EXPECT_LE(table->capacity(), 2 * 16 * selectors.size());
}

TEST(DispatchTable, ReplacesInPlaceEvenWhenItIsFull)
{
    std::vector<SEL> selectors;
    const std::unique_ptr<DispatchTable> table = DispatchTable::make(16);
    for (int i = 0;; ++i) {
        const SEL selector = sel_registerName("method" + std::to_string(i));
        if (!table->set(selector, codeOf(0), "v@:"))
            break;
        selectors.push_back(selector);
    }
    ASSERT_FALSE(selectors.empty());
    for (const SEL selector : selectors) {
        EXPECT_TRUE(table->set(selector, codeOf(7), "q@:"));
        EXPECT_EQ(table->implementation(selector, selector->hash), codeOf(7));
        EXPECT_STREQ(table->types(selector), "q@:");
    }
}

} // namespace
