#include "launch/launch_decision.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace appledger {

namespace {

using Texts = std::vector<std::string_view>;

/// "Prompt a by ALRequireAuthApps: Blocked for Authentication"; "Open" alone.
std::string text(const LaunchVerdict& verdict)
{
    const char* const outcomes[] { "Open", "Stop", "Prompt" };
    std::string text = outcomes[static_cast<int>(verdict.outcome)];
    if (!verdict.identifier.empty() || !verdict.key.empty() || !verdict.reason().empty())
        text.append(" ")
            .append(verdict.identifier)
            .append(" by ")
            .append(verdict.key)
            .append(": ")
            .append(verdict.reason());
    return text;
}

std::string prompt(std::string_view identifier)
{
    return "Prompt " + std::string(identifier) + " by ALRequireAuthApps: Blocked for Authentication";
}
std::string stop(std::string_view identifier, std::string_view key = "ALBlockedLaunchApps")
{
    return "Stop " + std::string(identifier) + " by " + std::string(key) + ": Blocked by AppLedger";
}

struct Lists {
    Texts requireAuth {};
    Texts blocked {};
    Texts hidden {};
    std::optional<std::string_view> bypass {};

    LaunchLists lists() const
    {
        return { IdentifierList(requireAuth), IdentifierList(blocked), IdentifierList(hidden), bypass };
    }
};

TEST(LaunchDecision, AsksForAuthenticationBeforeItStops)
{
    const struct {
        Lists lists;
        std::string verdict;
    } cases[] = {
        { {}, "Open" },
        { { .requireAuth = { "b" }, .blocked = { "b" }, .hidden = { "b" } }, "Open" },
        { { .blocked = { "b", "a" } }, stop("a") },
        { { .hidden = { "a" } }, stop("a", "ALHiddenApps") },
        { { .blocked = { "a" }, .hidden = { "a" } }, stop("a") },
        { { .requireAuth = { "a" } }, prompt("a") },
        { { .requireAuth = { "b", "a" }, .bypass = "b" }, prompt("a") },
        { { .requireAuth = { "a" }, .bypass = "" }, prompt("a") },
        { { .requireAuth = { "a" }, .bypass = "a" }, "Open" },
        { { .requireAuth = { "a" }, .bypass = "A" }, prompt("a") },
        { { .requireAuth = { "a" }, .blocked = { "a" }, .hidden = { "a" } }, prompt("a") },
        { { .requireAuth = { "a" }, .blocked = { "a" }, .bypass = "a" }, stop("a") },
        { { .requireAuth = { "a" }, .hidden = { "a" }, .bypass = "a" }, stop("a", "ALHiddenApps") },
        { { .blocked = { "a" }, .bypass = "a" }, stop("a") },
        { { .requireAuth = { "A" }, .blocked = { "a " }, .hidden = { "aa" } }, "Open" },
    };
    for (const auto& [lists, verdict] : cases)
        EXPECT_EQ(text(decideLaunch("a", lists.lists())), verdict) << "case " << (&lists - &cases[0].lists);
}

TEST(LaunchDecision, InTheSwitcherTakesTheFirstProtectedApplicationOfTheCard)
{
    const struct {
        const char* what;
        Texts card;
        Lists lists;
        std::string verdict;
    } cases[] = {
        { "none listed", { "a", "b" }, { { "c" }, { "d" }, { "e" } }, "Open" },
        { "an empty card", {}, { { "a" }, { "a" }, { "a" } }, "Open" },
        { "the list's order, not the card's", { "a", "b" }, { .requireAuth = { "c", "b", "a" } }, prompt("b") },
        { "blocked beside protected", { "a", "b" }, { .requireAuth = { "b" }, .blocked = { "a" } }, prompt("b") },
        { "blocked and protected", { "a" }, { .requireAuth = { "a" }, .blocked = { "a" }, .hidden = { "a" } },
            prompt("a") },
        { "the authenticated one is passed over", { "a", "b" }, { .requireAuth = { "a", "b" }, .bypass = "a" },
            prompt("b") },
        { "authenticated", { "a", "b" }, { .requireAuth = { "a" }, .bypass = "a" }, "Open" },
        { "authenticated and blocked", { "a" }, { .requireAuth = { "a" }, .blocked = { "a" }, .bypass = "a" },
            stop("a") },
        { "blocked before hidden", { "a", "b" }, { .blocked = { "c", "b" }, .hidden = { "a" } }, stop("b") },
        { "hidden", { "a", "b" }, { .blocked = { "c" }, .hidden = { "d", "a", "b" } }, stop("a", "ALHiddenApps") },
    };
    for (const auto& row : cases) {
        const auto holds
            = [&](std::string_view identifier) { return std::ranges::find(row.card, identifier) != row.card.end(); };
        EXPECT_EQ(text(decideSwitcherLaunch(holds, row.lists.lists())), row.verdict) << row.what;
    }
}

TEST(LaunchRoads, DifferInListHapticAndReason)
{
    using enum BlockedListSource;
    const struct {
        LaunchRoad road;
        std::string method;
        BlockedListSource blockedList;
        bool hasHaptic;
        bool givesReason;
    } expected[] = {
        { LaunchRoad::HomeScreenTap, "SBIconView _handleTap", Cache, true, false },
        { LaunchRoad::WorkspaceExecute,
            "SBMainWorkspace _executeTransitionRequest:options:validator:voluntarily:", Cache, true, false },
        { LaunchRoad::WorkspaceValidate,
            "SBMainWorkspace _canExecuteTransitionRequest:forExecution:", FreshSynchronized, false, true },
        { LaunchRoad::QuickAction, "SBIconController iconView:didSelectApplicationShortcutItem:", Fresh, false, false },
        { LaunchRoad::OpenServiceWithPort,
            "FBSOpenApplicationService openApplication:withOptions:clientPort:completion:", Fresh, false, false },
        { LaunchRoad::OpenService, "FBSOpenApplicationService openApplication:withOptions:completion:", Fresh, false,
            false },
        { LaunchRoad::Switcher, "SBFluidSwitcherViewController didSelectContainer:", Cache, true, false },
        { LaunchRoad::SwitcherWithModifiers, "SBFluidSwitcherViewController didSelectContainer:modifierFlags:", Cache,
            true, false },
        { LaunchRoad::SpotlightOpenServiceWithPort,
            "FBSOpenApplicationService openApplication:withOptions:clientPort:completion:", Cache, false, false },
        { LaunchRoad::SpotlightOpenService, "FBSOpenApplicationService openApplication:withOptions:completion:", Cache,
            false, false },
        { LaunchRoad::SpotlightWorkspace, "LSApplicationWorkspace openApplicationWithBundleID:", Cache, false, false },
    };
    ASSERT_EQ(launchRoads().size(), std::size(expected));
    for (const auto& [road, method, blockedList, hasHaptic, givesReason] : expected) {
        const LaunchRoadTraits& present = traits(road);
        EXPECT_EQ(present.road, road) << method;
        EXPECT_EQ(std::string(present.className).append(" ").append(present.selector), method);
        EXPECT_EQ(present.blockedList, blockedList) << method;
        EXPECT_EQ(present.hasHaptic, hasHaptic) << method;
        EXPECT_EQ(present.givesReason, givesReason) << method;
    }
}

} // namespace

} // namespace appledger
