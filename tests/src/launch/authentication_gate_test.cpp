#include "launch/authentication_gate.h"

#include "phone/localauthentication/prompts.h"
#include "platform/dispatch/clock.h"
#include "platform/foundation/block.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/hook.h"
#include "platform/runtime/message.h"
#include "support/phone_fixture.h"

#include <gtest/gtest.h>

using namespace platform;
using namespace std::chrono_literals;
using phone::PromptAnswer;
using support::Policies;

namespace {

const std::string notes = "com.example.notes";
const std::string mail = "com.example.mail";

const std::string prompted = "haptic impact | prompt SpringBoard: Authenticate to open this app.";

int endedContexts = 0;
Original<void()> original_dealloc;

void LAContext_dealloc(const id& self, SEL cmd)
{
    ++endedContexts;
    original_dealloc(self, cmd);
}

/// SpringBoard with two applications, and the clock held.
class Gate {
public:
    explicit Gate(const Policies& policies, std::vector<std::string> absentClasses = {})
        : phone_("SpringBoard", "16.0", std::move(absentClasses))
    {
        holdClock();
        phone_.with({ notes, mail }).wanting(policies).inject().start();
        MSHookMessageEx(objc_getClass("LAContext"), sel_registerName("dealloc"),
            reinterpret_cast<IMP>(&LAContext_dealloc), &original_dealloc.implementation);
    }

    std::string tap(const std::string& application) { return phone_.enter("tap", { application }); }
    std::string selectCard(const std::vector<std::string>& card) { return phone_.enter("switcher", card); }

    /// What comes of the answer at once.
    std::string answer(PromptAnswer answer)
    {
        EXPECT_TRUE(phone::answerPrompt(answer));
        return advance(0s);
    }

    /// What happens meanwhile.
    std::string advance(std::chrono::duration<long double> time)
    {
        advanceClock(std::chrono::round<std::chrono::nanoseconds>(time));
        return phone_.journal();
    }

    /// The prompt, its answer and the launch that follows, in 0.3 seconds.
    void authenticate(const std::string& application)
    {
        EXPECT_EQ(tap(application), prompted);
        EXPECT_EQ(answer(PromptAnswer::Authenticated), "");
        EXPECT_EQ(advance(300ms), "opened " + application);
    }

private:
    support::Phone phone_;
};

} // namespace

TEST(AuthenticationGate, AsksForTheOwnerWithThePasscodeAsFallBack)
{
    Gate gate({ .requireAuth = { notes } });
    EXPECT_FALSE(phone::promptThatIsUp());
    EXPECT_EQ(gate.tap(mail), "opened com.example.mail");
    gate.advance(10s);
    EXPECT_EQ(gate.tap(notes), prompted);
    const auto prompt = phone::promptThatIsUp();
    ASSERT_TRUE(prompt);
    EXPECT_EQ(prompt->policy, 2);
    EXPECT_EQ(prompt->fallbackTitle, "Enter Password");
    EXPECT_EQ(prompt->asked, clockNow());
    EXPECT_EQ(gate.advance(1h), "");
    EXPECT_TRUE(phone::promptThatIsUp()) << "the context is kept as long as nobody answers";
    appledger::ALPromptAuthAndLaunchApp("");
    EXPECT_EQ(gate.advance(0s), "") << "there is nothing to open";
}

TEST(AuthenticationGate, OpensTheApplicationAfterAMomentAndNoSooner)
{
    Gate gate({ .requireAuth = { notes } });
    EXPECT_EQ(gate.tap(notes), prompted);
    EXPECT_EQ(gate.answer(PromptAnswer::Authenticated), "");
    ASSERT_TRUE(appledger::g_authBypassAppId.load());
    EXPECT_EQ(*appledger::g_authBypassAppId.load(), notes);
    EXPECT_EQ(gate.advance(300ms - 1ns), "");
    EXPECT_EQ(endedContexts, 0) << "kept until the launch";
    EXPECT_EQ(gate.advance(1ns), "opened com.example.notes");
    EXPECT_EQ(endedContexts, 1);
    EXPECT_FALSE(phone::promptThatIsUp());
}

TEST(AuthenticationGate, GraceLastsFiveSecondsAndThenPromptsAgain)
{
    Gate gate({ .requireAuth = { notes } });
    gate.authenticate(notes); // 0.3 s
    gate.advance(4.6s);
    EXPECT_EQ(gate.tap(notes), "opened com.example.notes");
    gate.advance(100ms - 1ns);
    EXPECT_EQ(gate.tap(notes), "opened com.example.notes") << "at the last nanosecond";
    gate.advance(1ns);
    EXPECT_EQ(gate.tap(notes), prompted) << "at 5.0 s, though it has run all the time";
    gate.authenticate(notes);
    gate.advance(4.6s);
    EXPECT_EQ(gate.tap(notes), "opened com.example.notes");
    gate.advance(200ms);
    EXPECT_EQ(gate.tap(notes), prompted) << "at 5.1 s";
}

TEST(AuthenticationGate, LetsOneApplicationPassAtATime)
{
    Gate gate({ .requireAuth = { notes, mail } });
    gate.authenticate(notes); // its time is over at 5 s
    gate.advance(700ms);
    gate.authenticate(mail); // asked at 1 s: its time is over at 6 s
    EXPECT_EQ(gate.tap(notes), prompted) << "replaced at once";
    gate.advance(4.2s);
    EXPECT_EQ(gate.tap(mail), "opened com.example.mail") << "at 5.5 s: the first time's end leaves it alone";
    gate.advance(600ms);
    EXPECT_EQ(gate.tap(mail), prompted) << "at 6.1 s";
}

// The end of a time compares names and nothing else.
TEST(AuthenticationGate, TheEndOfAnEarlierTimeEndsALaterOneOfTheSameApplication)
{
    Gate gate({ .requireAuth = { notes, mail } });
    gate.authenticate(notes);
    gate.authenticate(mail);
    gate.authenticate(notes); // at 0.6 s
    gate.advance(4.0s);
    EXPECT_EQ(gate.tap(notes), "opened com.example.notes") << "at 4.9 s";
    gate.advance(200ms);
    EXPECT_EQ(gate.tap(notes), prompted) << "at 5.1 s, and not at 5.6 s";
}

TEST(AuthenticationGate, FailureOpensNothingAndTakesNothingBack)
{
    Gate gate({ .requireAuth = { notes, mail } });
    gate.authenticate(notes);
    for (const PromptAnswer answer : { PromptAnswer::Failed, PromptAnswer::Cancelled }) {
        endedContexts = 0;
        EXPECT_EQ(gate.tap(mail), prompted);
        EXPECT_EQ(gate.answer(answer), "");
        EXPECT_EQ(endedContexts, 1);
        EXPECT_EQ(gate.advance(2s), "");
        EXPECT_EQ(gate.tap(notes), "opened com.example.notes");
    }
    EXPECT_EQ(gate.advance(10s), "");
    EXPECT_EQ(gate.tap(mail), prompted);
}

namespace {

/// Whether the application is on the hidden list instead of the blocked one.
class AuthenticationGateBlocks : public testing::TestWithParam<bool> { };

} // namespace

TEST_P(AuthenticationGateBlocks, AfterSuccessWhatIsBlockedOrHidden)
{
    Gate gate(GetParam() ? Policies { .requireAuth = { notes }, .hidden = { notes } }
                         : Policies { .requireAuth = { notes }, .blocked = { notes } });
    EXPECT_EQ(gate.tap(notes), prompted);
    EXPECT_EQ(gate.answer(PromptAnswer::Authenticated), "");
    EXPECT_EQ(gate.advance(4.9s), "");
    EXPECT_EQ(gate.tap(notes), "haptic impact") << "stopped, without a prompt";
    EXPECT_EQ(gate.advance(200ms), "");
    EXPECT_EQ(gate.tap(notes), prompted);
}

INSTANTIATE_TEST_SUITE_P(Lists, AuthenticationGateBlocks, testing::Bool());

TEST(AuthenticationGate, ACardOfTheSwitcherPromptsForItsFirstProtectedApplication)
{
    Gate gate({ .requireAuth = { mail, notes }, .blocked = { notes } });
    EXPECT_EQ(gate.selectCard({ notes, mail }), prompted);
    gate.answer(PromptAnswer::Authenticated);
    EXPECT_EQ(gate.advance(300ms), "opened com.example.mail");
    EXPECT_EQ(gate.selectCard({ notes, mail }), prompted) << "for the other one now";
    gate.answer(PromptAnswer::Authenticated);
    EXPECT_EQ(gate.advance(300ms), "") << "which is blocked";
    EXPECT_EQ(gate.selectCard({ notes }), "haptic impact");
}

TEST(AuthenticationGate, ALaterPromptReplacesTheOneThatIsUp)
{
    Gate gate({ .requireAuth = { notes, mail } });
    EXPECT_EQ(gate.tap(notes), prompted);
    EXPECT_EQ(gate.tap(mail), prompted);
    EXPECT_EQ(endedContexts, 1);
    gate.answer(PromptAnswer::Authenticated);
    EXPECT_EQ(gate.advance(10s), "opened com.example.mail");
    EXPECT_FALSE(phone::answerPrompt(PromptAnswer::Authenticated)) << "nothing is left of the first";
    EXPECT_EQ(endedContexts, 2);
}

// There is one reference for whichever prompt is up, and every answer ends by clearing it.
TEST(AuthenticationGate, AnAnswerTakesDownThePromptThatCameUpBehindIt)
{
    Gate gate({ .requireAuth = { notes, mail } });
    EXPECT_EQ(gate.tap(notes), prompted);
    phone::answerPrompt(PromptAnswer::Failed); // on its way when the next one comes
    EXPECT_EQ(gate.tap(mail), prompted);
    gate.advance(0s);
    EXPECT_FALSE(phone::promptThatIsUp());
    EXPECT_EQ(endedContexts, 2);
}

TEST(AuthenticationGate, StaysShutOnASystemThatCannotAuthenticate)
{
    Gate gate({ .requireAuth = { notes } }, { "LAContext" });
    EXPECT_EQ(gate.tap(notes), "haptic impact");
    EXPECT_EQ(gate.advance(10s), "");
}

namespace {

id keptReply;

void evaluatePolicy(const id&, SEL, NSInteger policy, const id&, const id& reply)
{
    keptReply = reply;
    phone::journal(phone::JournalEvent::Note, "asked by policy " + std::to_string(policy));
}

constexpr MethodDefinition bareContext[] { method<"evaluatePolicy:localizedReason:reply:", &evaluatePolicy>() };
const ClassDefinition BareContext { .name = "LAContext", .methods = bareContext };

} // namespace

TEST(AuthenticationGate, AsksWhereTheFallBackHasNoTitle)
{
    registerClass(BareContext);
    Gate gate({ .requireAuth = { notes } }, { "LAContext" });
    EXPECT_EQ(gate.tap(notes), "haptic impact | note asked by policy 2");
    callBlock(keptReply, true, id(nil));
    EXPECT_FALSE(appledger::g_authBypassAppId.load()) << "the main queue alone writes it";
    EXPECT_EQ(gate.advance(300ms), "opened com.example.notes");
}

namespace {

id sharedInstance(const id&, SEL)
{
    static NSObject* const service = send<"new">(id(objc_getClass("NSObject"))).leak();
    return service;
}

constexpr MethodDefinition muteService[] { classMethod<"sharedInstance", &sharedInstance>() };
const ClassDefinition MuteService { .name = "FBSOpenApplicationService", .methods = muteService };
const ClassDefinition ServiceWithoutInstance { .name = "FBSOpenApplicationService" };
const ClassDefinition WorkspaceWithoutMethods { .name = "LSApplicationWorkspace" };

struct LaunchStepRow {
    const char* what;
    std::vector<std::string> absent;
    std::vector<const ClassDefinition*> inTheirPlace;
    bool opens;
};

std::ostream& operator<<(std::ostream& out, const LaunchStepRow& row)
{
    return out << row.what;
}

const LaunchStepRow launchStepRows[] {
    { "NoService", { "FBSOpenApplicationService" }, {}, true },
    { "NoWorkspace", { "LSApplicationWorkspace" }, {}, true },
    { "Neither", { "FBSOpenApplicationService", "LSApplicationWorkspace" }, {}, false },
    { "AServiceThatDoesNotAnswer", { "FBSOpenApplicationService" }, { &MuteService }, false },
    { "AServiceWithoutInstance", { "FBSOpenApplicationService" }, { &ServiceWithoutInstance }, true },
    { "AWorkspaceThatDoesNotAnswer", { "FBSOpenApplicationService", "LSApplicationWorkspace" },
        { &WorkspaceWithoutMethods }, false },
};

class AuthenticationGateLaunch : public testing::TestWithParam<LaunchStepRow> { };

} // namespace

TEST_P(AuthenticationGateLaunch, TakesTheServiceOrElseTheWorkspace)
{
    for (const ClassDefinition* const definition : GetParam().inTheirPlace)
        registerClass(*definition);
    Gate gate({ .requireAuth = { notes } }, GetParam().absent);
    EXPECT_EQ(gate.tap(notes), prompted);
    gate.answer(PromptAnswer::Authenticated);
    EXPECT_EQ(gate.advance(300ms), GetParam().opens ? "opened com.example.notes" : "");
    EXPECT_EQ(endedContexts, 1) << "the prompt's reference goes in any case";
}

INSTANTIATE_TEST_SUITE_P(Systems, AuthenticationGateLaunch, testing::ValuesIn(launchStepRows),
    [](const auto& row) { return std::string(row.param.what); });
