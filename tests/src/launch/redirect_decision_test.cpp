#include "launch/redirect_decision.h"

#include "platform/foundation/values.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace appledger {

using namespace platform;

namespace {

constexpr std::string_view openLabel = "OpenApplication(d)ForRequester(s)";
const std::string uuid = "00000000-1111-2222-3333-444444444444";

/// "source -> destination", or the step at which it passes.
std::string text(const RedirectParties& parties)
{
    if (parties.passes)
        return std::string(name(*parties.passes));
    return rulePair(parties.source.value_or("?"), parties.destination.value_or("?"));
}

/// "Decline "No Redirect" by forbidden-source KEY"; the simulation's key in brackets.
std::string text(const RedirectVerdict& verdict)
{
    const char* const outcomes[] { "Pass", "Decline", "Background" };
    std::string text = outcomes[static_cast<int>(verdict.outcome)];
    if (!verdict.reason().empty())
        text.append(" \"").append(verdict.reason()).append("\"");
    text.append(" by ").append(name(verdict.step));
    if (const std::string key = verdict.key(); !key.empty())
        text.append(" ").append(key);
    if (verdict.isSimulated)
        text.append(" [").append(verdict.simulationKey()).append("]");
    return text;
}

Transition fromTo(std::string_view source, std::string_view destination)
{
    return { .eventLabel = openLabel, .sourceEntity = SourceEntity { source }, .destination = destination };
}

using Pairs = std::vector<std::pair<std::string_view, id>>;

struct World {
    Pairs preferences {};
    std::vector<std::string_view> hidden {};
    LaunchStamps launches {};
    double now = 0;

    std::string decide(const Transition& transition) const
    {
        std::vector<std::pair<id, id>> pairs;
        for (const auto& [key, value] : preferences)
            pairs.emplace_back(string(key), value);
        const RedirectRuleSets sets(dictionary(std::move(pairs)));
        return text(decideRedirect(transition, { sets.rules(), IdentifierList(hidden), &launches }, now));
    }
};

id yes()
{
    return boolean(true);
}

TEST(RedirectParties, ComeFromTheEntityTheSceneOrTheProcess)
{
    const std::string scene = "sceneID:front-default";
    const std::string thirtySix = std::string(36, 'x');
    const struct {
        const char* what;
        Transition transition;
        std::string parties;
    } cases[] = {
        { "another kind of request", { .isMainWorkspaceRequest = false, .destination = "d" }, "not-a-transition" },
        { "no label", { .sourceEntity = SourceEntity { "s" }, .destination = "d" }, "s->d" },
        { "an unknown label", { .eventLabel = "Lock", .sourceEntity = SourceEntity { "s" }, .destination = "d" },
            "other-label" },
        { "half a label", { .eventLabel = "OpenApplication(d)", .requesterBundleIdentifier = "p", .destination = "d" },
            "other-label" },
        { "the other half", { .eventLabel = "ForRequester(s)", .requesterBundleIdentifier = "p", .destination = "d" },
            "other-label" },
        { "both in any order",
            { .eventLabel = "ForRequester OpenApplication", .requesterBundleIdentifier = "p", .destination = "d" },
            "p->d" },
        { "a URL", { .sourceEntity = SourceEntity { "s", SourceAction::OpenUrl }, .destination = "d" }, "s->d" },
        { "another action", { .sourceEntity = SourceEntity { "s", SourceAction::Other }, .destination = "d" },
            "other-action" },
        { "an entity without an application",
            { .sourceEntity = SourceEntity {},
                .requesterName = "lsd",
                .requesterBundleIdentifier = "p",
                .previousScene = scene,
                .destination = "d" },
            "p->d" },
        { "an entity before the requester's name",
            { .sourceEntity = SourceEntity { "s" }, .requesterName = "configd", .destination = "d" }, "s->d" },
        { "an entity before the breadcrumb",
            { .eventLabel = "ActivateFromBreadcrumb",
                .sourceEntity = SourceEntity { "s" },
                .previousScene = scene,
                .destination = "d" },
            "s->d" },
        { "a process",
            { .requesterName = "p",
                .requesterBundleIdentifier = "p.bundle",
                .previousScene = scene,
                .destination = "d" },
            "p.bundle->d" },
        { "lsd",
            { .requesterName = "lsd", .requesterBundleIdentifier = "p", .previousScene = scene, .destination = "d" },
            "front->d" },
        { "a breadcrumb",
            { .eventLabel = "x ActivateFromBreadcrumb y",
                .requesterBundleIdentifier = "p",
                .previousScene = scene,
                .destination = "d" },
            "front->d" },
        { "a breadcrumb without a scene",
            { .eventLabel = "ActivateFromBreadcrumb", .requesterBundleIdentifier = "p", .destination = "d" }, "p->d" },
        { "lsd with an empty scene",
            { .requesterName = "lsd",
                .requesterBundleIdentifier = "p",
                .previousScene = "sceneID:-default",
                .destination = "d" },
            "p->d" },
        { "configd", { .requesterName = "configd", .requesterBundleIdentifier = "p", .destination = "d" },
            "com.apple.configd->d" },
        { "configd without an identifier", { .requesterName = "configd", .destination = "d" }, "com.apple.configd->d" },
        { "configd that asks for itself", { .requesterName = "configd", .destination = "com.apple.configd" },
            "same-application" },
        { "configd's own identifier is looked at first",
            { .requesterName = "configd", .requesterBundleIdentifier = "d", .destination = "d" }, "same-application" },
        { "the same application", fromTo("d", "d"), "same-application" },
        { "no source", { .destination = "d" }, "unknown-application" },
        { "no destination", { .sourceEntity = SourceEntity { "s" } }, "unknown-application" },
        { "nothing", {}, "unknown-application" },
    };
    for (const auto& [what, transition, parties] : cases)
        EXPECT_EQ(text(redirectParties(transition)), parties) << what;

    const struct {
        std::string scene;
        std::string source;
    } scenes[] = {
        { "sceneID:com.example.notes-default", "com.example.notes" },
        { "com.example.notes-default", "com.example.notes" },
        { "sceneID:com.example.notes-" + uuid, "com.example.notes" },
        { "sceneID:com.example.notes-default-default", "com.example.notes-default" },
        { "sceneID:com.example.notes", "com.example.notes" },
        { "sceneID:sceneID:a", "sceneID:a" },
        { "xsceneID:a-default", "xsceneID:a" },
        { thirtySix + "x", thirtySix + "x" }, // 37 characters stay
        { "sceneID:" + thirtySix + "x", thirtySix + "x" },
        { "y" + thirtySix + "x", "y" }, // of 38 one is left
        { "sceneID:y" + thirtySix + "x", "y" },
    };
    for (const auto& [previous, source] : scenes)
        EXPECT_EQ(text(redirectParties({ .requesterName = "lsd", .previousScene = previous, .destination = "d" })),
            source + "->d")
            << previous;
}

TEST(RedirectDecision, TakesEachRuleByItsKey)
{
    const id listsS = array({ "s" });
    const id listsD = array({ "other", "d" });
    const struct {
        Pairs preferences;
        std::string_view source;
        std::string_view destination;
        std::string verdict;
    } cases[] = {
        { {}, "s", "d", "Pass by default" },
        { { { "IsBlockedFromLaunchingOthers/s", yes() } }, "s", "d",
            "Decline \"No Redirect\" by forbidden-source IsBlockedFromLaunchingOthers/s" },
        { { { "IsBlockedFromLaunchingOthers/s", boolean(false) } }, "s", "d", "Pass by default" },
        { { { "IsBlockedFromLaunchingOthers/d", yes() } }, "s", "d", "Pass by default" },
        { { { "IsBlockedFromBeingLaunched/d", yes() } }, "s", "d",
            "Decline \"No Redirect\" by forbidden-destination IsBlockedFromBeingLaunched/d" },
        { { { "IsBlockedFromBeingLaunched/s", yes() } }, "s", "d", "Pass by default" },
        { { { "IsBlockedFromBeingLaunched/d", yes() } }, "com.apple.Preferences", "d",
            "Pass by system-source IsBlockedFromBeingLaunched/d" },
        { { { "IsBlockedFromBeingLaunched/d", yes() } }, "com.apple", "d",
            "Decline \"No Redirect\" by forbidden-destination IsBlockedFromBeingLaunched/d" },
        { { { "IsBlockedFromBeingLaunched/d", yes() } }, "com.apple.mobilesafari", "d",
            "Decline \"No Redirect\" by forbidden-destination IsBlockedFromBeingLaunched/d" },
        { { { "IsBlockedFromBeingLaunched/d", yes() } }, "com.apple.SafariViewService", "d",
            "Decline \"No Redirect\" by forbidden-destination IsBlockedFromBeingLaunched/d" },
        { { { "IsBlockedFromLaunchingAppStore/s", yes() } }, "s", "com.apple.AppStore",
            "Decline \"No Redirect\" by app-store IsBlockedFromLaunchingAppStore/s" },
        { { { "IsBlockedFromLaunchingAppStore/s", yes() } }, "s", "com.apple.ios.StoreKitUIService",
            "Decline \"No Redirect\" by app-store IsBlockedFromLaunchingAppStore/s" },
        { { { "IsBlockedFromLaunchingAppStore/s", yes() } }, "s", "com.apple.mobilesafari", "Pass by default" },
        { { { "IsBlockedFromLaunchingSafari/s", yes() } }, "s", "com.apple.mobilesafari",
            "Decline \"No Redirect\" by safari IsBlockedFromLaunchingSafari/s" },
        { { { "IsBlockedFromLaunchingSafari/s", yes() } }, "s", "com.apple.SafariViewService",
            "Decline \"No Redirect\" by safari IsBlockedFromLaunchingSafari/s" },
        { { { "IsBlockedFromLaunchingSafari/s", yes() } }, "s", "com.apple.AppStore", "Pass by default" },
        // The one key names the source and lists destinations, the other the reverse.
        { { { "CustomBlockedApplications/s", listsD } }, "s", "d",
            "Decline \"No Redirect\" by forbidden-pair CustomBlockedApplications/s" },
        { { { "CustomBlockedApplications/d", listsS } }, "s", "d", "Pass by default" },
        { { { "CustomBlockedApplications/s", listsD }, { "CustomBypassedApplications/d", listsS } }, "s", "d",
            "Pass by allowed-pair CustomBypassedApplications/d" },
        { { { "CustomBlockedApplications/s", listsD }, { "CustomBypassedApplications/s", listsD } }, "s", "d",
            "Decline \"No Redirect\" by forbidden-pair CustomBlockedApplications/s" },
    };
    for (const auto& [preferences, source, destination, verdict] : cases)
        EXPECT_EQ((World { preferences }.decide(fromTo(source, destination))), verdict)
            << preferences.size() << " " << source << " " << destination;
}

TEST(RedirectDecision, TakesItsStepsInOrder)
{
    // Every rule there is speaks about s and d. Each line takes away the one that decided before.
    World world { {
                      { "ShouldTeardownAutomatically/s", yes() },
                      { "CustomBypassedApplications/d", array({ "s" }) },
                      { "IsBlockedFromLaunchingOthers/s", yes() },
                      { "IsBlockedFromBeingLaunched/d", yes() },
                      { "CustomBlockedApplications/s", array({ "d" }) },
                  },
        { "d" }, LaunchStamps().with("s", 100), 200 };
    const auto next = [&world] {
        world.preferences.erase(world.preferences.begin());
        return world.decide(fromTo("s", "d"));
    };
    EXPECT_EQ(world.decide(fromTo("s", "d")), "Decline \"No Redirect\" by hidden ALHiddenApps");
    world.hidden = { "s" };
    EXPECT_EQ(world.decide(fromTo("s", "d")), "Decline \"No Redirect\" by hidden ALHiddenApps");
    world.hidden = { "other" };
    EXPECT_EQ(world.decide(fromTo("s", "d")), "Pass by paused ShouldTeardownAutomatically/s");
    EXPECT_EQ(next(), "Pass by allowed-pair CustomBypassedApplications/d");
    EXPECT_EQ(next(), "Decline \"No Redirect\" by forbidden-source IsBlockedFromLaunchingOthers/s");
    EXPECT_EQ(next(), "Decline \"No Redirect\" by forbidden-destination IsBlockedFromBeingLaunched/d");
    EXPECT_EQ(next(), "Decline \"No Redirect\" by forbidden-pair CustomBlockedApplications/s");
    EXPECT_EQ(next(), "Pass by default");

    // A system source passes at once: the rules behind that step aren't asked.
    const World store { {
        { "IsBlockedFromBeingLaunched/com.apple.AppStore", yes() },
        { "IsBlockedFromLaunchingAppStore/com.apple.camera", yes() },
        { "CustomBlockedApplications/com.apple.camera", array({ "com.apple.AppStore" }) },
    } };
    EXPECT_EQ(store.decide(fromTo("com.apple.camera", "com.apple.AppStore")),
        "Pass by system-source IsBlockedFromBeingLaunched/com.apple.AppStore");
    EXPECT_EQ(store.decide({ .requesterName = "configd", .destination = "com.apple.AppStore" }),
        "Pass by system-source IsBlockedFromBeingLaunched/com.apple.AppStore");
}

TEST(RedirectDecision, PausesMoreThanTenSecondsAfterTheSourcesOwnLaunch)
{
    const Pairs forbidden { { "IsBlockedFromLaunchingOthers/s", yes() } };
    const Pairs lenient { { "IsBlockedFromLaunchingOthers/s", yes() }, { "ShouldTeardownAutomatically/s", yes() } };
    const LaunchStamps launched = LaunchStamps().with("s", 100).with("d", 0);
    const struct {
        Pairs preferences;
        LaunchStamps launches;
        double now;
        bool passes;
    } cases[] = {
        { lenient, launched, 109, false },
        { lenient, launched, 110, false },
        { lenient, launched, 110.001, true },
        { lenient, launched, 90, false },
        { lenient, launched, 89.9, true }, // a stamp of the future counts as far away as well
        { lenient, LaunchStamps().with("d", 0), 1000, false }, // the destination's launch says nothing
        { lenient, LaunchStamps(), 1000, false },
        { forbidden, launched, 1000, false },
    };
    for (const auto& [preferences, launches, now, passes] : cases)
        EXPECT_EQ((World { preferences, {}, launches, now }.decide(fromTo("s", "d")).starts_with("Pass")), passes)
            << now;
}

TEST(RedirectDecision, SimulatesSuccessAsTheDestinationAllows)
{
    const struct {
        std::string_view destination;
        std::string verdict;
    } cases[] = {
        { "d", "Background" },
        { "com.apple.mobilesafari", "Background" },
        { "com.apple.AppStore", "Background" },
        { "com.apple.SafariViewService", "Pass" },
        { "com.apple.ios.StoreKitUIService", "Decline \"No Redirect (Handled)\"" },
    };
    const World simulated { { { "IsBlockedFromLaunchingOthers/s", yes() }, { "ShouldSimulateSuccess/s", yes() } } };
    const World otherSimulated { { { "IsBlockedFromLaunchingOthers/s", yes() },
        { "ShouldSimulateSuccess/d", yes() } } };
    for (const auto& [destination, verdict] : cases) {
        EXPECT_EQ(simulated.decide(fromTo("s", destination)),
            verdict + " by forbidden-source IsBlockedFromLaunchingOthers/s [ShouldSimulateSuccess/s]");
        EXPECT_EQ(otherSimulated.decide(fromTo("s", destination)),
            "Decline \"No Redirect\" by forbidden-source IsBlockedFromLaunchingOthers/s");
    }
    World hidden { { { "ShouldSimulateSuccess/s", yes() } }, { "d" } };
    EXPECT_EQ(hidden.decide(fromTo("s", "d")), "Background by hidden ALHiddenApps [ShouldSimulateSuccess/s]");
    hidden.hidden = {};
    EXPECT_EQ(hidden.decide(fromTo("s", "d")), "Pass by default") << "only a refusal is simulated";
}

TEST(RedirectDecision, KnowsPairsOfAnyLength)
{
    for (const std::size_t length : { 0UL, 1UL, 254UL, 255UL, 256UL, 5000UL }) {
        const std::string source(length, 's');
        const std::string destination(length, 'd');
        const std::string key = "CustomBlockedApplications/" + source;
        const World world { { { key, array({ destination }) } } };
        EXPECT_EQ(world.decide(fromTo(source, destination)),
            length == 0 ? "Pass by same-application" : "Decline \"No Redirect\" by forbidden-pair " + key);
        EXPECT_EQ(world.decide(fromTo(source, destination + "d")), "Pass by default") << length;
    }
}

TEST(RedirectDecision, PassesEverythingWithoutRules)
{
    EXPECT_EQ(text(decideRedirect(fromTo("s", "d"), {}, 0)), "Pass by default");
}

} // namespace

} // namespace appledger
