#include "support/phone_fixture.h"

#include "launch/launch_stamps.h"
#include "phone/springboard/workspace/app_to_app.h"
#include "phone/springboard/workspace/transitions.h"
#include "platform/dispatch/clock.h"
#include "platform/runtime/message.h"

#include <gtest/gtest.h>

using namespace platform;
using namespace std::chrono_literals;
using phone::AppToAppAction;
using phone::AppToAppAnswer;
using phone::AppToAppTransition;
using support::Phone;

namespace {

const std::string notes = "com.example.notes";
const std::string mail = "com.example.mail";
const std::string chat = "com.example.chat";

AppToAppTransition fromTo(const std::string& source, const std::string& destination)
{
    return { .destination = destination,
        .label = "OpenApplication(" + destination + ")ForRequester(" + source + ")",
        .source = AppToAppTransition::Source { source, AppToAppAction::OpenUrl },
        .requesterName = source,
        .requesterBundleIdentifier = source };
}

class Redirect : public testing::Test {
protected:
    Redirect() { holdClock(); }

    Phone& start(const char* version, support::TemporaryDevice::Pairs preferences)
    {
        phone_.emplace("SpringBoard", version);
        phone_->device.writeDomain(preferences);
        return phone_->with({ notes, mail, chat, "com.apple.mobilesafari" }).inject().start();
    }

    /// The journal of the transition.
    std::string open(const AppToAppTransition& transition)
    {
        phone::takeJournal();
        answer_ = phone::openFromApplication(transition);
        return phone_->journal();
    }

    std::optional<Phone> phone_;
    AppToAppAnswer answer_;
};

const auto forbiddenNotes = std::pair { "IsBlockedFromLaunchingOthers/com.example.notes", boolean(true) };
const auto simulatedNotes = std::pair { "ShouldSimulateSuccess/com.example.notes", boolean(true) };
const std::string declined = "declined com.example.mail: No Redirect";

TEST_F(Redirect, PassesOnAStockPhoneAndIsDeclinedWithTheHooks)
{
    Phone stock("SpringBoard", "16.0");
    stock.device.writeDomain({ forbiddenNotes });
    stock.with({ notes, mail }).start();
    EXPECT_TRUE(phone::openFromApplication(fromTo(notes, mail)).executed);
    EXPECT_EQ(stock.journal(), "opened com.example.mail");

    stock.inject();
    phone::openFromApplication(fromTo(notes, mail));
    EXPECT_EQ(stock.journal(), declined);
    EXPECT_EQ(stock.heldUpAt(), "SBMainWorkspace _canExecuteTransitionRequest:forExecution:");
    EXPECT_TRUE(phone::openFromApplication(fromTo(mail, notes)).executed);
}

TEST_F(Redirect, ReadsWhatTheRequestHolds)
{
    start("16.0", { forbiddenNotes });
    const AppToAppTransition plain = fromTo(notes, mail);
    const auto with = [&plain](auto change) {
        AppToAppTransition changed = plain;
        change(changed);
        return changed;
    };
    const auto noEntity = [](AppToAppTransition& transition) { transition.source.reset(); };
    const struct {
        const char* what;
        AppToAppTransition transition;
        bool isDeclined;
    } cases[] = {
        { "a URL", plain, true },
        { "no action", with([](auto& t) { t.source->action = AppToAppAction::None; }), true },
        { "another action", with([](auto& t) { t.source->action = AppToAppAction::ContinueActivity; }), false },
        { "no label", with([](auto& t) { t.label.reset(); }), true },
        { "another label", with([](auto& t) { t.label = "LaunchFromIcon"; }), false },
        { "the process alone", with(noEntity), true },
        { "the scene's application first", with([](auto& t) { t.requesterBundleIdentifier = chat; }), true },
        { "a scene of no application", with([](auto& t) { t.source->bundleIdentifier.reset(); }), true },
        { "another process alone", with([&](auto& t) {
             noEntity(t);
             t.requesterBundleIdentifier = chat;
         }),
            false },
        { "lsd, with the source in front", with([&](auto& t) {
             noEntity(t);
             t.requesterName = "lsd";
             t.requesterBundleIdentifier = "";
             t.previousScene = "sceneID:" + notes + "-default";
         }),
            true },
        { "lsd, with another in front", with([&](auto& t) {
             noEntity(t);
             t.requesterName = "lsd";
             t.previousScene = "sceneID:" + chat + "-default";
         }),
            false },
        { "a breadcrumb", with([&](auto& t) {
             noEntity(t);
             t.label = "ActivateFromBreadcrumb";
             t.requesterBundleIdentifier = "com.apple.springboard";
             t.previousScene = notes + "-00000000-1111-2222-3333-444444444444";
         }),
            true },
    };
    for (const auto& [what, transition, isDeclined] : cases)
        EXPECT_EQ(open(transition), isDeclined ? declined : "opened com.example.mail") << what;

    ASSERT_EQ(phone_->enter("tap", { notes }), "opened com.example.notes");
    AppToAppTransition crumb = fromTo(notes, mail);
    crumb.source.reset();
    crumb.label = "ActivateFromBreadcrumb";
    crumb.requesterBundleIdentifier = "com.apple.springboard";
    EXPECT_EQ(open(crumb), declined) << "the application in front is the source";
}

TEST_F(Redirect, ReportsARefusalAsHandledWhereItIsSimulated)
{
    start("16.0", { forbiddenNotes, simulatedNotes });
    EXPECT_EQ(open(fromTo(notes, mail)), "opened in background com.example.mail");
    EXPECT_TRUE(answer_.executed);
    EXPECT_TRUE(answer_.wentToBackground);
    EXPECT_EQ(phone::frontmostApplication(), "");
    EXPECT_EQ(open(fromTo(notes, "com.apple.SafariViewService")), "opened com.apple.SafariViewService");
    EXPECT_FALSE(answer_.wentToBackground);
    EXPECT_EQ(open(fromTo(notes, "com.apple.ios.StoreKitUIService")),
        "declined com.apple.ios.StoreKitUIService: No Redirect (Handled)");
}

// Version 14 has no method before the validation that the launch hooks replace.
TEST_F(Redirect, DecidesBeforeTheLaunchHooksAndPassesOnToThem)
{
    const id listsMail = array({ "com.example.mail" });
    start("14.0", { forbiddenNotes, { "ALBlockedLaunchApps", listsMail }, { "ALRequireAuthApps", listsMail } });
    EXPECT_EQ(open(fromTo(notes, mail)), declined) << "no prompt: the launch hooks weren't asked";
    EXPECT_EQ(open(fromTo(chat, mail)),
        "prompt SpringBoard: Authenticate to open this app. | declined com.example.mail: Blocked for Authentication");

    phone_->device.writeDomain({ forbiddenNotes, simulatedNotes, { "ALBlockedLaunchApps", listsMail } });
    CFNotificationCenterPostNotification("com.orbelix.appledger.redirect_saved");
    CFNotificationCenterPostNotification("com.orbelix.appledger.requireauth_changed");
    runUntilIdle();
    EXPECT_EQ(open(fromTo(notes, mail)), "declined com.example.mail: Blocked by AppLedger");
    EXPECT_TRUE(answer_.wentToBackground) << "the simulation comes before the launch hooks' refusal";
}

TEST_F(Redirect, RereadsItsRulesWhenTheyAreSaved)
{
    start("16.0", {});
    EXPECT_EQ(open(fromTo(notes, mail)), "opened com.example.mail");
    phone_->device.writeDomain({ forbiddenNotes });
    EXPECT_EQ(open(fromTo(notes, mail)), "opened com.example.mail") << "not before it is told";
    CFNotificationCenterPostNotification("com.orbelix.appledger.redirect_saved");
    runUntilIdle();
    EXPECT_EQ(open(fromTo(notes, mail)), declined);
}

TEST_F(Redirect, HiddenApplicationsNeitherOpenNorAreOpened)
{
    start("14.0", { { "ALHiddenApps", array({ "com.example.chat" }) } });
    EXPECT_EQ(open(fromTo(chat, mail)), declined);
    EXPECT_EQ(open(fromTo(mail, chat)), "declined com.example.chat: No Redirect");
    EXPECT_EQ(open(fromTo(notes, mail)), "opened com.example.mail");
}

TEST_F(Redirect, PausesTenSecondsAfterTheSourceWasLaunched)
{
    start("16.0", { forbiddenNotes, { "ShouldTeardownAutomatically/com.example.notes", boolean(true) } });
    advanceClock(1h);
    EXPECT_EQ(open(fromTo(notes, mail)), declined) << "a source that wasn't launched";
    ASSERT_EQ(phone_->enter("tap", { notes }), "opened com.example.notes");
    advanceClock(9s);
    EXPECT_EQ(open(fromTo(notes, mail)), declined);
    advanceClock(1001ms);
    EXPECT_EQ(open(fromTo(notes, mail)), "opened com.example.mail");
    ASSERT_EQ(phone_->enter("tap", { notes }), "opened com.example.notes");
    EXPECT_EQ(open(fromTo(notes, mail)), declined) << "launched again";
}

TEST_F(Redirect, NotesTheLaunchesThatWereCarriedOut)
{
    start("16.0", { forbiddenNotes });
    const auto stampOf = [](const std::string& identifier) -> std::optional<double> {
        const ReadSection section;
        const auto* const stamps = appledger::gLastTransitionStamps.load();
        return stamps ? stamps->of(identifier) : std::nullopt;
    };
    EXPECT_EQ(open(fromTo(notes, mail)), declined);
    EXPECT_EQ(stampOf(mail), std::nullopt);
    advanceClock(3s);
    open(fromTo(chat, mail));
    EXPECT_EQ(stampOf(mail), CACurrentMediaTime());
    EXPECT_EQ(stampOf(chat), std::nullopt);
    const double first = CACurrentMediaTime();
    advanceClock(2s);
    open(fromTo(notes, mail));
    EXPECT_EQ(stampOf(mail), first) << "a declined one leaves the former stamp";
}

/// A request of the workspace's that isn't one of the main workspace's, and one with a label of another kind.
TEST_F(Redirect, LeavesRequestsAloneThatItDoesNotUnderstand)
{
    start("16.0", { forbiddenNotes });
    const id workspace = send<"sharedInstance">(id(classNamed<"SBMainWorkspace">()));
    const auto application = [](const std::string& identifier) {
        return send<"applicationWithBundleIdentifier:">(
            send<"sharedInstance">(id(classNamed<"SBApplicationController">())), string(identifier));
    };
    const auto makeRequest = [&] {
        return phone::makeTransitionRequest({ .applications = { application(mail) },
            .label = std::nullopt,
            .sourceEntity = phone::makeSceneEntity(application(notes)) });
    };
    const auto canExecute = [&workspace](const id& request) {
        return send<"_canExecuteTransitionRequest:forExecution:", bool>(workspace, request, true);
    };
    EXPECT_FALSE(canExecute(makeRequest()));

    const id numbered = makeRequest();
    send<"setEventLabel:", void>(numbered, number(2));
    EXPECT_TRUE(canExecute(numbered));

    const id other = send<"new">(id(classNamed<"SBWorkspaceTransitionRequest">()));
    for (const auto& [get, set] : { std::pair { "toApplicationSceneEntities", "setToApplicationSceneEntities:" },
             std::pair { "fromApplicationSceneEntities", "setFromApplicationSceneEntities:" },
             std::pair { "applicationContext", "setApplicationContext:" } })
        sendSelector<void>(other, sel_registerName(set), sendSelector(makeRequest(), sel_registerName(get)));
    EXPECT_TRUE(canExecute(other));
    EXPECT_TRUE((send<"_executeTransitionRequest:options:validator:", bool>(workspace, other, nil, nil)));
    const ReadSection section;
    EXPECT_EQ(appledger::gLastTransitionStamps.load(), nullptr);

    EXPECT_FALSE(canExecute(send<"new">(id(classNamed<"SBMainWorkspaceTransitionRequest">())))) << "the stock answer";
}

} // namespace
