#include "launch/redirect_rules.h"

#include "support/temporary_device.h"

#include <gtest/gtest.h>

namespace appledger {

using namespace platform;

namespace {

struct RuleSetUnderTest {
    const char* name;
    Published<RuleSet>& set;
};

const RuleSetUnderTest sets[] {
    { "others", gForbiddenLaunchSources },
    { "launched", gForbiddenLaunchDestinations },
    { "store", gForbiddenLaunchSourcesForAppStore },
    { "safari", gForbiddenLaunchSourcesForSafariServices },
    { "lenient", gUseLenientModeSources },
    { "handled", gUseHandledSimulationSources },
    { "allowed", gCustomAllowedMappings },
    { "forbidden", gCustomForbiddenMappings },
};

class RedirectRules : public testing::Test {
protected:
    void load(support::TemporaryDevice::Pairs pairs)
    {
        device_.writeDomain(pairs);
        ReloadRedirectPrefs();
    }

    /// The sets that hold the rule: "others lenient ".
    static std::string holding(std::string_view rule)
    {
        std::string names;
        for (const auto& [name, set] : sets)
            if (set.load()->contains(rule))
                names.append(name).append(" ");
        return names;
    }

    static std::size_t rules()
    {
        std::size_t count = 0;
        for (const auto& row : sets)
            count += row.set.load()->size();
        return count;
    }

private:
    const support::TemporaryDevice device_;
};

TEST_F(RedirectRules, PutEachPrefixIntoItsOwnSet)
{
    const struct {
        std::string key;
        id value;
        std::string rule;
        std::string set;
    } cases[] = {
        { "IsBlockedFromLaunchingOthers/a.b", boolean(true), "a.b", "others " },
        { "IsBlockedFromBeingLaunched/a.b", boolean(true), "a.b", "launched " },
        { "IsBlockedFromLaunchingAppStore/a.b", boolean(true), "a.b", "store " },
        { "IsBlockedFromLaunchingSafari/a.b", boolean(true), "a.b", "safari " },
        { "ShouldTeardownAutomatically/a.b", boolean(true), "a.b", "lenient " },
        { "ShouldSimulateSuccess/a.b", boolean(true), "a.b", "handled " },
        { "CustomBypassedApplications/a.b", array({ "c.d" }), "c.d->a.b", "allowed " },
        { "CustomBlockedApplications/a.b", array({ "c.d" }), "a.b->c.d", "forbidden " },
        { "IsBlockedFromLaunchingOthers/a.b", number(1), "a.b", "others " },
        { "IsBlockedFromLaunchingOthers/a.b", string("YES"), "a.b", "others " },
        { "IsBlockedFromLaunchingOthers/", boolean(true), "", "others " },
        { "IsBlockedFromLaunchingOthers/a/b", boolean(true), "a/b", "others " },
        { "CustomBypassedApplications/", array({ "c.d" }), "c.d->", "allowed " },
        { "CustomBlockedApplications/a.b", array({ "" }), "a.b->", "forbidden " },
        { "CustomBlockedApplications/a.b", array({ number(7) }), "a.b->7", "forbidden " },
    };
    for (const auto& [key, value, rule, set] : cases) {
        load({ { key, value } });
        EXPECT_EQ(holding(rule), set) << key << " = " << describe(value);
        EXPECT_EQ(rules(), 1U) << key << " = " << describe(value);
    }
}

TEST_F(RedirectRules, AreNotMadeOfFalseFlagsOtherTypesAndOtherKeys)
{
    load({ { "IsBlockedFromLaunchingOthers/a", boolean(false) }, { "IsBlockedFromBeingLaunched/a", number(0) },
        { "ShouldSimulateSuccess/a", string("NO") }, { "ShouldTeardownAutomatically/a", array({ "a" }) },
        { "IsBlockedFromLaunchingSafari/a", dictionary({}) }, { "CustomBypassedApplications/a", boolean(true) },
        { "CustomBlockedApplications/a", string("b") }, { "CustomBlockedApplications/b", dictionary({}) },
        { "CustomBlockedApplications/c", emptyArray() }, { "ShouldSimulateSuccess", boolean(true) },
        { "shouldSimulateSuccess/a", boolean(true) }, { "xShouldSimulateSuccess/a", boolean(true) } });
    EXPECT_EQ(rules(), 0U);
}

TEST_F(RedirectRules, ReplaceAllFormerRules)
{
    EXPECT_FALSE(gForbiddenLaunchSources.load()) << "before the first reload";
    load({ { "IsBlockedFromLaunchingOthers/a", boolean(true) }, { "ShouldSimulateSuccess/a", boolean(true) },
        { "IsBlockedFromLaunchingOthers/b", boolean(true) }, { "CustomBlockedApplications/a", array({ "b", "c" }) },
        { "CustomBypassedApplications/a", array({ "b", "c" }) } });
    EXPECT_EQ(holding("a"), "others handled ");
    EXPECT_EQ(holding("b"), "others ");
    EXPECT_EQ(holding("a->c"), "forbidden ");
    EXPECT_EQ(holding("c->a"), "allowed ");
    EXPECT_EQ(rules(), 7U);
    load({ { "IsBlockedFromLaunchingOthers/b", boolean(true) } });
    EXPECT_EQ(holding("b"), "others ");
    EXPECT_EQ(rules(), 1U);
}

} // namespace

} // namespace appledger
