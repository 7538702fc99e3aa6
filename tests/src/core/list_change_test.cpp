#include "core/list_change.h"

#include "core/preference_domain.h"
#include "support/temporary_device.h"

#include <gtest/gtest.h>

namespace appledger {

namespace {

using namespace platform;

TEST(ListChange, IsMadeInOrderAndOfListsAlone)
{
    const id list = array({ string("a"), number(1), string("b"), string("a") });
    const struct {
        id list;
        ListChange change;
        std::string_view identifier;
        std::string_view expected;
    } cases[] {
        { list, ListChange::Add, "a", R"(["a", 1, "b", "a"] on)" },
        { list, ListChange::Add, "c", R"(["a", 1, "b", "a", "c"] on)" },
        { list, ListChange::Remove, "a", R"([1, "b"] off)" },
        { list, ListChange::Remove, "c", R"(["a", 1, "b", "a"] off)" },
        { list, ListChange::Toggle, "b", R"(["a", 1, "a"] off)" },
        { list, ListChange::Toggle, "1", R"(["a", 1, "b", "a", "1"] on)" },
        { nil, ListChange::Toggle, "a", R"(["a"] on)" },
        { nil, ListChange::Remove, "a", R"([] off)" },
        { string("a"), ListChange::Add, "a", "none" },
        { dictionary({ { "a", number(1) } }), ListChange::Remove, "a", "none" },
    };
    for (const auto& [present, change, identifier, expected] : cases) {
        const auto changed = changedList(present, change, identifier);
        EXPECT_EQ(changed ? describe(changed->list) + (changed->isListed ? " on" : " off") : "none", expected);
    }
}

TEST(PreferenceChange, ReplacesNoValueOfAnotherType)
{
    const support::TemporaryDevice device;
    device.writeDomain({ { "list", string("a") }, { "flag", array({ "a" }) }, { "text", string("yes") } });
    const std::string before = device.get(support::TemporaryDevice::domainFile);
    EXPECT_NE(changePreferenceList("list", ListChange::Add, "a").outcome.problem, "");
    EXPECT_NE(changePreferenceFlag("flag", ListChange::Toggle).outcome.problem, "");
    EXPECT_EQ(device.get(support::TemporaryDevice::domainFile), before);

    const PreferenceChange flag = changePreferenceFlag("text", ListChange::Toggle);
    EXPECT_EQ(flag.outcome.problem, "");
    EXPECT_FALSE(flag.isOn);
    EXPECT_TRUE(changePreferenceFlag("new", ListChange::Toggle).isOn);
    EXPECT_TRUE(changePreferenceList("newList", ListChange::Toggle, "a").isOn);
    EXPECT_EQ(describe(dictionaryWithContentsOfFile(support::TemporaryDevice::domainFile)),
        R"({"flag": ["a"], "list": "a", "new": true, "newList": ["a"], "text": false})");
}

} // namespace
} // namespace appledger
