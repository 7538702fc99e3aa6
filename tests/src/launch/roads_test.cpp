#include "core/hook_group.h"
#include "support/phone_fixture.h"

#include "phone/springboard/workspace/transitions.h"
#include "platform/foundation/block.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace platform;
using support::Phone;
using support::Policies;

namespace {

const std::string notes = "com.example.notes";
const std::string mail = "com.example.mail";

/// What stops a launch leaves on each road: the haptic, and what a request was told.
struct RoadRow {
    std::string name;
    std::string method;
    std::string stopped;
    std::string prompted;
};

const std::string prompt = "prompt SpringBoard: Authenticate to open this app.";
const std::string prompted = "haptic impact | " + prompt;

const std::vector<RoadRow> roads {
    { "tap", "SBIconView _handleTap", "haptic impact", prompted },
    { "quick-action", "SBIconController iconView:didSelectApplicationShortcutItem:", "", prompt },
    { "switcher", "SBFluidSwitcherViewController didSelectContainer:", "haptic impact", prompted },
    { "switcher-modifiers", "SBFluidSwitcherViewController didSelectContainer:modifierFlags:", "haptic impact",
        prompted },
    { "service", "FBSOpenApplicationService openApplication:withOptions:completion:", "", prompt },
    { "service-port", "FBSOpenApplicationService openApplication:withOptions:clientPort:completion:", "", prompt },
    { "workspace-execute", "SBMainWorkspace _executeTransitionRequest:options:validator:voluntarily:", "haptic impact",
        prompted },
    { "workspace-validate", "SBMainWorkspace _canExecuteTransitionRequest:forExecution:",
        "declined com.example.notes: Blocked by AppLedger",
        prompt + " | declined com.example.notes: Blocked for Authentication" },
};

bool isMissing(const RoadRow& road)
{
    const std::size_t space = road.method.find(' ');
    return !class_respondsToSelector(
        objc_getClass(road.method.substr(0, space)), sel_registerName(road.method.substr(space + 1)));
}

enum class Outcome { Opens, Stops, Prompts };

struct PolicyRow {
    const char* what;
    Policies policies;
    Outcome outcome;
};

const std::vector<PolicyRow> policyRows {
    { "neither", {}, Outcome::Opens },
    { "others", { { mail }, { mail }, { mail } }, Outcome::Opens },
    { "blocked", { .blocked = { mail, notes } }, Outcome::Stops },
    { "hidden", { .hidden = { notes } }, Outcome::Stops },
    { "protected", { .requireAuth = { mail, notes } }, Outcome::Prompts },
    { "protected, another authenticated", { .requireAuth = { notes }, .authenticated = mail }, Outcome::Prompts },
    { "protected and blocked", { .requireAuth = { notes }, .blocked = { notes } }, Outcome::Prompts },
    { "protected, authenticated", { .requireAuth = { notes }, .authenticated = notes }, Outcome::Opens },
    { "protected and blocked, authenticated",
        { .requireAuth = { notes }, .blocked = { notes }, .authenticated = notes }, Outcome::Stops },
    { "protected and hidden, authenticated", { .requireAuth = { notes }, .hidden = { notes }, .authenticated = notes },
        Outcome::Stops },
    { "blocked in another case", { .blocked = { "com.example.Notes" } }, Outcome::Opens },
};

/// The version of the system.
class SpringBoardRoads : public testing::TestWithParam<const char*> {
protected:
    SpringBoardRoads()
        : phone_("SpringBoard", GetParam())
    {
        phone_.with({ notes, mail });
    }

    Phone phone_;
};

TEST_P(SpringBoardRoads, AllOpenOnAStockPhoneWhateverTheListsSay)
{
    phone_.wanting({ { notes }, { notes }, { notes } }).start();
    for (const RoadRow& road : roads) {
        if (isMissing(road))
            continue;
        EXPECT_EQ(phone_.enter(road.name, { notes }), "opened com.example.notes") << road.name;
        EXPECT_EQ(phone_.heldUpAt(), "") << road.name;
        EXPECT_EQ(phone::frontmostApplication(), notes) << road.name;
        phone::pressHome();
    }
}

TEST_P(SpringBoardRoads, StopWhatThePoliciesStopAndNothingElse)
{
    phone_.inject().start();
    int entered = 0;
    for (const PolicyRow& row : policyRows) {
        phone_.wanting(row.policies).notify();
        for (const RoadRow& road : roads) {
            if (isMissing(road))
                continue;
            ++entered;
            const std::string expected = row.outcome == Outcome::Opens ? "opened com.example.notes"
                : row.outcome == Outcome::Stops                        ? road.stopped
                                                                       : road.prompted;
            EXPECT_EQ(phone_.enter(road.name, { notes }), expected) << road.name << ", " << row.what;
            EXPECT_EQ(phone_.heldUpAt(), row.outcome == Outcome::Opens ? "" : road.method)
                << road.name << ", " << row.what;
            EXPECT_EQ(phone::frontmostApplication(), row.outcome == Outcome::Opens ? notes : "")
                << road.name << ", " << row.what;
            phone::pressHome();
        }
    }
    EXPECT_EQ(entered, (parseSystemVersion(GetParam())->major < 15 ? 6 : 8) * static_cast<int>(policyRows.size()));
}

INSTANTIATE_TEST_SUITE_P(Versions, SpringBoardRoads, testing::Values("12.4", "14.0", "15.0", "17.2"),
    [](const auto& parameter) { return "iOS" + std::string(parameter.param).substr(0, 2); });

class SpringBoardRoad : public testing::Test {
protected:
    Phone& injected(const Policies& policies = {})
    {
        return phone_.with({ notes, mail }).wanting(policies).inject().start();
    }

    static id workspace() { return send<"sharedInstance">(id(objc_getClass("SBMainWorkspace"))); }
    static id service() { return send<"sharedInstance">(id(objc_getClass("FBSOpenApplicationService"))); }
    static id controller() { return send<"sharedInstance">(id(objc_getClass("SBIconController"))); }

    static id requestFor(const std::string& identifier)
    {
        const id applications = send<"sharedInstance">(id(objc_getClass("SBApplicationController")));
        return phone::makeTransitionRequest(
            { .applications = { send<"applicationWithBundleIdentifier:">(applications, string(identifier)) },
                .label = "test" });
    }

    static id make(const ClassDefinition& definition) { return send<"new">(id(registerClass(definition))); }

    Phone phone_ { "SpringBoard", "16.0" };
};

TEST_F(SpringBoardRoad, TakesTheBlockedListFromTheCacheOrFreshFromTheDomain)
{
    const std::string haptic = "haptic impact";
    const std::string execute = "SBMainWorkspace _executeTransitionRequest:options:validator:voluntarily:";
    const std::string validate = "SBMainWorkspace _canExecuteTransitionRequest:forExecution:";
    const std::string declined = "declined com.example.notes: Blocked by AppLedger";
    const struct {
        std::string road;
        std::string whenOnlyTheDomainBlocks;
        std::string heldUpThere;
        std::string whenOnlyTheCacheBlocks;
        std::string heldUpThen;
    } cases[] = {
        { "tap", declined, validate, haptic, "SBIconView _handleTap" },
        { "quick-action", "", "SBIconController iconView:didSelectApplicationShortcutItem:", haptic, execute },
        { "switcher", declined, validate, haptic, "SBFluidSwitcherViewController didSelectContainer:" },
        { "switcher-modifiers", declined, validate, haptic,
            "SBFluidSwitcherViewController didSelectContainer:modifierFlags:" },
        { "service", "", "FBSOpenApplicationService openApplication:withOptions:completion:", haptic, execute },
        { "service-port", "", "FBSOpenApplicationService openApplication:withOptions:clientPort:completion:", haptic,
            execute },
        { "workspace-execute", declined, validate, haptic, execute },
        { "workspace-validate", declined, validate, "opened com.example.notes", "" },
    };
    injected().wanting({ .blocked = { notes } });
    for (const auto& row : cases) {
        EXPECT_EQ(phone_.enter(row.road, { notes }), row.whenOnlyTheDomainBlocks) << row.road;
        EXPECT_EQ(phone_.heldUpAt(), row.heldUpThere) << row.road;
    }
    phone_.notify().wanting({});
    for (const auto& row : cases) {
        EXPECT_EQ(phone_.enter(row.road, { notes }), row.whenOnlyTheCacheBlocks) << row.road;
        EXPECT_EQ(phone_.heldUpAt(), row.heldUpThen) << row.road;
    }
}

TEST_F(SpringBoardRoad, TakesHiddenAndProtectedApplicationsFromTheCacheAlone)
{
    injected().wanting({ .requireAuth = { notes }, .hidden = { mail } });
    for (const RoadRow& road : roads)
        for (const std::string& identifier : { notes, mail })
            EXPECT_EQ(phone_.enter(road.name, { identifier }), "opened " + identifier) << road.name;
}

TEST_F(SpringBoardRoad, OfTheServiceCallsNoCompletionWhenItStops)
{
    injected({ .blocked = { notes } });
    std::string completions;
    const id completion = block([&](const id& failure) { completions += failure ? "error " : "done "; });
    const auto open = [&](const id& identifier) {
        send<"openApplication:withOptions:completion:", void>(service(), identifier, nil, completion);
        send<"openApplication:withOptions:clientPort:completion:", void>(service(), identifier, nil, 0U, completion);
        return phone_.journal() + " " + std::exchange(completions, {});
    };
    EXPECT_EQ(open(string(notes)), " ");
    EXPECT_EQ(open(string(mail)), "opened com.example.mail | opened com.example.mail done done ");
    for (const id& identifier : { number(7), array({ std::string_view(notes) }), nil })
        EXPECT_EQ(open(identifier), " error error ") << "the stock answer to " << describe(identifier);
}

TEST_F(SpringBoardRoad, OfTheWorkspaceAnswersFalseWhenItStops)
{
    injected({ .requireAuth = { mail }, .blocked = { notes } });
    for (const std::string& identifier : { notes, mail }) {
        EXPECT_FALSE(
            (send<"_canExecuteTransitionRequest:forExecution:", bool>(workspace(), requestFor(identifier), false)));
        EXPECT_FALSE((send<"_executeTransitionRequest:options:validator:voluntarily:", bool>(
            workspace(), requestFor(identifier), nil, nil, true)));
    }
    phone_.wanting({}).notify();
    const id request = requestFor(notes);
    EXPECT_TRUE((send<"_canExecuteTransitionRequest:forExecution:", bool>(workspace(), request, false)));
    EXPECT_FALSE(send<"declineReason">(request));
    EXPECT_TRUE(
        (send<"_executeTransitionRequest:options:validator:voluntarily:", bool>(workspace(), request, nil, nil, true)));
}

struct TellsOfItsReason
    : appledger::Hook<TellsOfItsReason, "SBWorkspaceTransitionRequest", "declineWithReason:", void(id)> {
    static void replacement(const id& self, SEL cmd, const id& reason)
    {
        phone::journal(phone::JournalEvent::Note, describe(reason));
        original(self, cmd, reason);
    }
};
constexpr appledger::HookRow reasonRows[] { TellsOfItsReason::row() };

TEST_F(SpringBoardRoad, TellsTheRequestWhyBeforeItAsksTheOwner)
{
    injected({ .requireAuth = { notes } });
    appledger::installHookGroup({ "TellsOfItsReason", reasonRows });
    phone_.journal();
    EXPECT_FALSE((send<"_canExecuteTransitionRequest:forExecution:", bool>(workspace(), requestFor(notes), true)));
    EXPECT_EQ(phone_.journal(), R"(note "Blocked for Authentication" | )" + prompt);
}

// Icons of other shapes than the system's own.
struct IdentifierAnswers {
    static id blocked(const id&, SEL) { return string(notes); }
    static id open(const id&, SEL) { return string(mail); }
    static id aNumber(const id&, SEL) { return number(7); }
    static id nothing(const id&, SEL) { return nil; }
};
using Answers = IdentifierAnswers;

constexpr MethodDefinition firstOnly[] { method<"applicationBundleID", Answers::blocked>() };
constexpr MethodDefinition secondOnly[] { method<"applicationBundleIdentifier", Answers::blocked>() };
constexpr MethodDefinition firstOpen[] { method<"applicationBundleID", Answers::open>(),
    method<"applicationBundleIdentifier", Answers::blocked>() };
constexpr MethodDefinition firstNil[] { method<"applicationBundleID", Answers::nothing>(),
    method<"applicationBundleIdentifier", Answers::blocked>() };
constexpr MethodDefinition firstNumber[] { method<"applicationBundleID", Answers::aNumber>() };

TEST_F(SpringBoardRoad, PassesIconsThatTellNoIdentifier)
{
    injected({ .blocked = { notes } });
    static const struct {
        ClassDefinition icon;
        bool tapStopped;
        bool quickActionStopped;
    } cases[] = {
        { { .name = "FirstOnlyIcon", .methods = firstOnly }, true, true },
        { { .name = "SecondOnlyIcon", .methods = secondOnly }, true, false },
        { { .name = "FirstOpenIcon", .methods = firstOpen }, false, false },
        { { .name = "FirstNilIcon", .methods = firstNil }, false, false },
        { { .name = "FirstNumberIcon", .methods = firstNumber }, false, false },
        { { .name = "SilentIcon" }, false, false },
    };
    const auto ran = [](std::string_view method) {
        const auto entries = phone::takeJournal();
        return std::ranges::any_of(entries, [&](const phone::JournalEntry& entry) {
            return entry.event == phone::JournalEvent::Ran && entry.subject == method;
        });
    };
    for (const auto& [icon, tapStopped, quickActionStopped] : cases) {
        const id view = send<"new">(id(objc_getClass("SBIconView")));
        send<"setIcon:", void>(view, make(icon));
        send<"_handleTap", void>(view);
        EXPECT_EQ(ran("SBIconView _handleTap"), !tapStopped) << icon.name;
        send<"iconView:didSelectApplicationShortcutItem:", void>(controller(), view, nil);
        EXPECT_EQ(ran("SBIconController iconView:didSelectApplicationShortcutItem:"), !quickActionStopped) << icon.name;
    }
    send<"_handleTap", void>(send<"new">(id(objc_getClass("SBIconView"))));
    EXPECT_TRUE(ran("SBIconView _handleTap")) << "a view without an icon";
    send<"iconView:didSelectApplicationShortcutItem:", void>(controller(), nil, nil);
    EXPECT_TRUE(ran("SBIconController iconView:didSelectApplicationShortcutItem:")) << "no view";
}

TEST_F(SpringBoardRoad, OfTheSwitcherLooksAtEveryApplicationOfTheCard)
{
    injected();
    const struct {
        std::vector<std::string> card;
        Policies policies;
        std::string journal;
    } cases[] = {
        { { mail, notes }, {}, "opened com.example.mail | opened com.example.notes" },
        { { mail, notes }, { .blocked = { notes } }, "haptic impact" },
        { { mail, notes }, { .hidden = { notes } }, "haptic impact" },
        { { mail, notes }, { .requireAuth = { "com.example.other", notes } }, prompted },
        { { mail, notes }, { .requireAuth = { notes }, .blocked = { mail } }, prompted },
        { { mail, notes }, { .requireAuth = { notes, mail }, .authenticated = notes }, prompted },
        { { mail, notes }, { .requireAuth = { notes }, .authenticated = notes },
            "opened com.example.mail | opened com.example.notes" },
        { { mail }, { { notes }, { notes }, { notes } }, "opened com.example.mail" },
    };
    for (const auto& [card, policies, journal] : cases) {
        phone_.wanting(policies).notify();
        for (const char* const road : { "switcher", "switcher-modifiers" })
            EXPECT_EQ(phone_.enter(road, card), journal) << road << ", case " << (&policies - &cases[0].policies);
    }
}

id silentLayout(const id&, SEL)
{
    return send<"new">(id(objc_getClass("SilentLayout")));
}
constexpr MethodDefinition silentLayoutMethods[] { method<"appLayout", silentLayout>() };
const ClassDefinition SilentLayout_class { .name = "SilentLayout" };
const ClassDefinition OpaqueContainer_class { .name = "OpaqueContainer", .methods = silentLayoutMethods };

TEST_F(SpringBoardRoad, OfTheSwitcherPassesCardsThatDontTellTheirApplications)
{
    injected({ .blocked = { notes } });
    registerClass(SilentLayout_class);
    const id container = make(OpaqueContainer_class);
    const id switcher = send<"new">(id(objc_getClass("SBFluidSwitcherViewController")));
    send<"didSelectContainer:", void>(switcher, container);
    send<"didSelectContainer:modifierFlags:", void>(switcher, container, NSInteger { 0 });
    send<"didSelectContainer:", void>(switcher, nil);
    EXPECT_EQ(phone::takeJournal().size(), 3U) << "the system's own method ran each time";
}

id blockedEntities(const id&, SEL)
{
    const id applications = send<"sharedInstance">(id(objc_getClass("SBApplicationController")));
    const id entity = send<"new">(id(objc_getClass("SBDeviceApplicationSceneEntity")));
    send<"setApplication:", void>(entity, send<"applicationWithBundleIdentifier:">(applications, string(notes)));
    return set({ entity });
}
constexpr MethodDefinition bareRequest[] { method<"toApplicationSceneEntities", blockedEntities>() };
const ClassDefinition OtherRequest_class { .name = "OtherRequest", .methods = bareRequest };
const ClassDefinition BareTransitionRequest_class { .name = "SBWorkspaceTransitionRequest", .methods = bareRequest };

TEST_F(SpringBoardRoad, JudgesOnlyTransitionRequests)
{
    injected({ .blocked = { notes } });
    const id other = make(OtherRequest_class);
    EXPECT_TRUE((send<"_canExecuteTransitionRequest:forExecution:", bool>(workspace(), other, true)));
    const id base = send<"new">(id(objc_getClass("SBWorkspaceTransitionRequest")));
    send<"setToApplicationSceneEntities:", void>(base, blockedEntities(nil, nullptr));
    EXPECT_FALSE((send<"_canExecuteTransitionRequest:forExecution:", bool>(workspace(), base, true)));
    EXPECT_EQ(describe(send<"declineReason">(base)), R"("Blocked by AppLedger")");
    send<"setToApplicationSceneEntities:", void>(base, nil);
    EXPECT_FALSE((send<"_canExecuteTransitionRequest:forExecution:", bool>(workspace(), base, true)))
        << "the system's own answer";
}

TEST(SpringBoardRoadOfOtherShape, RefusesARequestThatTakesNoReason)
{
    Phone phone("SpringBoard", "16.0", { "SBWorkspaceTransitionRequest", "SBMainWorkspaceTransitionRequest" });
    const id cls = registerClass(BareTransitionRequest_class);
    phone.with({ notes }).wanting({ .blocked = { notes } }).inject().start();
    const id workspace = send<"sharedInstance">(id(objc_getClass("SBMainWorkspace")));
    const auto validate
        = [&] { return send<"_canExecuteTransitionRequest:forExecution:", bool>(workspace, send<"new">(cls), true); };
    EXPECT_FALSE(validate());
    phone.wanting({ .requireAuth = { notes } }).notify();
    EXPECT_FALSE(validate());
    phone.wanting({}).notify();
    EXPECT_TRUE(validate());
}

// What stands beneath the library's replacements, to see what reaches it.
std::string received;

std::string textOf(const id& value)
{
    return describe(value) + " ";
}
template <class T> std::string textOf(const T& value)
{
    return std::to_string(value) + " ";
}

template <class R, class... A> R receive(const id&, SEL, A... arguments)
{
    received = (std::string() + ... + textOf(arguments));
    if constexpr (std::is_same_v<R, bool>)
        return true;
}

template <class R, class... A> void standBeneath(std::string_view className, std::string_view selector)
{
    IMP former = nullptr;
    MSHookMessageEx(objc_getClass(className), sel_registerName(selector),
        reinterpret_cast<IMP>(static_cast<R (*)(const id&, SEL, A...)>(&receive<R, A...>)), &former);
    EXPECT_TRUE(former) << selector;
}

TEST_F(SpringBoardRoad, HandsTheReplacedMethodItsArguments)
{
    using Object = const id&;
    standBeneath<bool, Object, Object, Object, bool>(
        "SBMainWorkspace", "_executeTransitionRequest:options:validator:voluntarily:");
    standBeneath<bool, Object, bool>("SBMainWorkspace", "_canExecuteTransitionRequest:forExecution:");
    standBeneath<void, Object, Object>("SBIconController", "iconView:didSelectApplicationShortcutItem:");
    standBeneath<void, Object, Object, unsigned, Object>(
        "FBSOpenApplicationService", "openApplication:withOptions:clientPort:completion:");
    standBeneath<void, Object, Object, Object>("FBSOpenApplicationService", "openApplication:withOptions:completion:");
    standBeneath<void, Object>("SBFluidSwitcherViewController", "didSelectContainer:");
    standBeneath<void, Object, NSInteger>("SBFluidSwitcherViewController", "didSelectContainer:modifierFlags:");
    injected();
    const id one = string("1");
    const id two = string("2");
    const id three = string("3");
    const id switcher = send<"new">(id(objc_getClass("SBFluidSwitcherViewController")));

    for (const bool flag : { true, false }) {
        EXPECT_TRUE((send<"_executeTransitionRequest:options:validator:voluntarily:", bool>(
            workspace(), one, two, three, flag)));
        EXPECT_EQ(received, std::string(R"("1" "2" "3" )") + (flag ? "1 " : "0 "));
        EXPECT_TRUE((send<"_canExecuteTransitionRequest:forExecution:", bool>(workspace(), one, flag)));
        EXPECT_EQ(received, std::string(R"("1" )") + (flag ? "1 " : "0 "));
    }
    send<"iconView:didSelectApplicationShortcutItem:", void>(controller(), one, two);
    EXPECT_EQ(received, R"("1" "2" )");
    send<"openApplication:withOptions:clientPort:completion:", void>(service(), one, two, 7U, three);
    EXPECT_EQ(received, R"("1" "2" 7 "3" )");
    send<"openApplication:withOptions:completion:", void>(service(), one, two, three);
    EXPECT_EQ(received, R"("1" "2" "3" )");
    send<"didSelectContainer:", void>(switcher, one);
    EXPECT_EQ(received, R"("1" )");
    send<"didSelectContainer:modifierFlags:", void>(switcher, one, NSInteger { 1 } << 40);
    EXPECT_EQ(received, R"("1" 1099511627776 )");
}

} // namespace
