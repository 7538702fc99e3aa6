#include "front_fixture.h"

#include "core/hook_group.h"
#include "core/text.h"
#include "phone/springboard/switcher/switcher.h"
#include "platform/foundation/block.h"
#include "platform/runtime/class_definition.h"

using namespace platform;
using namespace std::chrono_literals;
using support::FrontPhone;
using support::Injection;

namespace {

/// The texts of the toasts that were shown, and for how long.
class FakeToast : public NSObject {
public:
    id initWithTitle(const id& title, const id& subtitle, const id& icon, NSInteger autoHide)
    {
        text_ = asString(title)->text() + " / " + asString(subtitle)->text() + " / " + (icon ? "picture" : "no picture")
            + " / " + std::to_string(autoHide) + " s";
        return this;
    }
    void present() { phone::journal(phone::JournalEvent::Note, "toast " + text_); }

private:
    std::string text_;
};

constexpr MethodDefinition toastMethods[] {
    method<"initWithTitle:subtitle:icon:autoHide:", &FakeToast::initWithTitle>(),
    method<"presentToast", &FakeToast::present>(),
};
const ClassDefinition toastClass {
    .name = "CustomToastView", .allocate = allocate<FakeToast>, .methods = toastMethods
};

using Pairs = support::TemporaryDevice::Pairs;

/// A phone on which "a" and "b" are kept in the foreground, "b" and "c" are locked, and "b" and "d" get their
/// notifications.
class Immortal {
public:
    explicit Immortal(const char* version = "16.0", Injection injection = Injection::Library)
        : phone({}, version, injection)
    {
        set({});
    }

    void set(Pairs more)
    {
        std::vector<std::pair<id, id>> pairs {
            { string("ALImmortalForegroundApps"), array({ "a", "b" }) },
            { string("ALImmortalLockedApps"), array({ "b", "c" }) },
            { string("ALImmortalNotifApps"), array({ "b", "d" }) },
        };
        for (const auto& [key, value] : more)
            pairs.emplace_back(string(key), value);
        phone.device().write(support::TemporaryDevice::domainFile, dictionary(std::move(pairs)));
        CFNotificationCenterPostNotification("com.orbelix.appledger.immortalizer_changed");
        phone.journal();
        phone.journal();
    }

    // Before the library registers its own, which then leaves the name to this one.
    const Class toast = registerClass(toastClass);
    FrontPhone phone;
};

id app(const std::string& identifier)
{
    return FrontPhone::application(identifier);
}

id newObject(const char* name)
{
    return send<"new">(id(objc_getClass(name)));
}

id sceneOf(const std::string& identifier)
{
    return send<"sceneForApplication:">(
        send<"sharedInstance">(id(objc_getClass("SBMainDisplaySceneManager"))), app(identifier));
}

/// What the update says of its direction.
id foregroundAnswers(bool foreground)
{
    const id settings = newObject("FBSMutableSceneSettings");
    send<"setForeground:", void>(settings, foreground);
    return settings;
}

bool yes(const id&, SEL)
{
    return true;
}
bool no(const id&, SEL)
{
    return false;
}

constexpr MethodDefinition goingBackMethods[] { method<"isBackgrounded", yes>() };
constexpr MethodDefinition comingMethods[] { method<"isBackgrounded", no>() };
constexpr MethodDefinition bothMethods[] { method<"isForeground", yes>(), method<"isBackgrounded", yes>() };
const ClassDefinition goingBack { .name = "GoingBack", .methods = goingBackMethods };
const ClassDefinition coming { .name = "Coming", .methods = comingMethods };
const ClassDefinition both { .name = "Both", .methods = bothMethods };

id make(const ClassDefinition& definition)
{
    return send<"new">(id(registerClass(definition)));
}

} // namespace

TEST(Immortalizer, DropsTheUpdateThatTakesAListedSceneAway)
{
    Immortal immortal;
    const struct {
        const char* what;
        const char* application;
        id settings;
        id context;
        std::string journal;
    } cases[] {
        { "away", "a", foregroundAnswers(false), nil, "icon accessory a" },
        { "away, as older systems say it", "a", make(goingBack), nil, "icon accessory a" },
        { "with a transition", "a", foregroundAnswers(false), string("context"), "note completed" },
        { "not listed", "c", foregroundAnswers(false), nil, "note completed" },
        { "to the front", "a", foregroundAnswers(true), nil, "note completed" },
        { "to the front, as older systems say it", "a", make(coming), nil, "note completed" },
        { "the newer answer counts", "a", make(both), nil, "note completed" },
        { "no answer", "a", string("settings"), nil, "note completed" },
    };
    for (const auto& each : cases) {
        send<"updateSettings:withTransitionContext:completion:", void>(sceneOf(each.application), each.settings,
            each.context, block([](const id&) { phone::journal(phone::JournalEvent::Note, "completed"); }));
        EXPECT_EQ(immortal.phone.journal(), each.journal) << each.what;
    }
    immortal.set({ { "ALImmortalEnabled", boolean(false) } });
    phone::bringToFront(app("a"));
    phone::bringToFront(nil);
    EXPECT_EQ(immortal.phone.journal(), "");
    EXPECT_FALSE(phone::isSceneInForeground(app("a")));
}

class ImmortalizerVersions : public testing::TestWithParam<const char*> { };

INSTANTIATE_TEST_SUITE_P(Versions, ImmortalizerVersions, testing::Values("12.4", "13.0", "15.4", "16.0"),
    [](const auto& version) { return "iOS" + std::string(version.param, 2); });

TEST_P(ImmortalizerVersions, KeepsScenesInTheForegroundBesideTheHomeScreen)
{
    Immortal immortal(GetParam());
    for (const char* const identifier : { "a", "c" }) {
        phone::bringToFront(app(identifier));
        EXPECT_TRUE(phone::isSceneInForeground(app(identifier)));
    }
    phone::bringToFront(nil);
    EXPECT_TRUE(phone::isSceneInForeground(app("a")));
    EXPECT_FALSE(phone::isSceneInForeground(app("c")));
    EXPECT_EQ(phone::applicationInFront(), nil);
}

namespace {

/// What the system's own methods find.
NSUInteger readReasons = 0;

struct ReadsAtSetup : appledger::Hook<ReadsAtSetup, "SBApplicationSceneEntity",
                          "_setupSceneSettings:transitionContext:", void(id, id)> {
    static void replacement(const id&, SEL, const id& settings, const id&)
    {
        readReasons = send<"deactivationReasons", NSUInteger>(settings);
    }
};
struct ReadsAtModification : appledger::Hook<ReadsAtModification, "SBDeviceApplicationSceneHandle",
                                 "_modifyApplicationSceneSettings:fromRequestContext:entity:", void(id, id, id)> {
    static void replacement(const id&, SEL, const id& settings, const id&, const id&)
    {
        readReasons = send<"deactivationReasons", NSUInteger>(settings);
    }
};
constexpr appledger::HookRow readingRows[] { ReadsAtSetup::row(), ReadsAtModification::row() };

} // namespace

TEST(Immortalizer, ClearsTheReasonsBeforeTheSystemReadsThem)
{
    Immortal immortal("16.0", Injection::None);
    appledger::installHookGroup({ "Reading", readingRows });
    appledger::initializeLibrary();
    immortal.set({});
    const auto reasonsOf = [](const id& owner, auto sendTo) {
        const id settings = newObject("FBSMutableSceneSettings");
        send<"setDeactivationReasons:", void>(settings, 5UL);
        sendTo(owner, settings);
        return readReasons;
    };
    const auto setup = [](const id& owner, const id& settings) {
        send<"_setupSceneSettings:transitionContext:", void>(owner, settings, nil);
    };
    const auto modify = [](const id& owner, const id& settings) {
        send<"_modifyApplicationSceneSettings:fromRequestContext:entity:", void>(owner, settings, nil, nil);
    };
    const id entity = newObject("SBDeviceApplicationSceneEntity");
    const id handle = newObject("SBDeviceApplicationSceneHandle");
    for (const auto& [identifier, reasons] : { std::pair { "a", 0UL }, std::pair { "c", 5UL } }) {
        send<"setApplication:", void>(entity, app(identifier));
        send<"setApplication:", void>(handle, app(identifier));
        EXPECT_EQ(reasonsOf(entity, setup), reasons) << identifier;
        EXPECT_EQ(reasonsOf(handle, modify), reasons) << identifier;
    }
    send<"setApplication:", void>(handle, app("a"));
    immortal.set({ { "ALImmortalEnabled", boolean(false) } });
    EXPECT_EQ(reasonsOf(handle, modify), 5UL);
}

namespace {

bool killable(std::initializer_list<std::string_view> applications, bool asked = true)
{
    const id layout = newObject("SBAppLayout");
    send<"setBundleIdentifiers:", void>(layout, array(applications));
    const id card = newObject("SBFluidSwitcherItemContainer");
    send<"setAppLayout:", void>(card, layout);
    send<"setKillable:", void>(card, asked);
    return send<"isKillable", bool>(card);
}

} // namespace

TEST_P(ImmortalizerVersions, ProtectsCardsInOneDirection)
{
    Immortal immortal(GetParam());
    const bool readsEveryItem = std::string_view(GetParam()) == "16.0";
    EXPECT_TRUE(killable({ "a" }));
    EXPECT_FALSE(killable({ "a" }, false));
    EXPECT_FALSE(killable({ "b" }));
    EXPECT_FALSE(killable({ "b" }, false));
    EXPECT_FALSE(killable({ "b", "a" }));
    EXPECT_EQ(killable({ "a", "b" }), !readsEveryItem) << "the second of two applications";
    EXPECT_TRUE(killable({}));
    const id bare = newObject("SBFluidSwitcherItemContainer");
    send<"setKillable:", void>(bare, true);
    EXPECT_TRUE((send<"isKillable", bool>(bare))) << "no layout";
    immortal.set({ { "ALImmortalEnabled", boolean(false) } });
    EXPECT_TRUE(killable({ "b" }));
}

namespace {

id iconOf(const std::string& identifier)
{
    const id model = send<"model">(send<"sharedInstance">(id(objc_getClass("SBIconController"))));
    return send<"applicationIconForBundleIdentifier:">(model, string(identifier));
}

NSInteger accessoryOf(const id& icon, std::string_view location)
{
    const id view = newObject("SBIconView");
    send<"setIcon:", void>(view, icon);
    send<"setLocation:", void>(view, string(location));
    return send<"currentLabelAccessoryType", NSInteger>(view);
}

} // namespace

TEST_P(ImmortalizerVersions, MarksIconsByWhetherTheApplicationRuns)
{
    Immortal immortal(GetParam());
    for (const char* const location : { "SBIconLocationRoot", "SBIconLocationDock" }) {
        send<"setProcessState:", void>(app("a"), nil);
        EXPECT_EQ(accessoryOf(iconOf("a"), location), 2) << location;
        send<"setProcessState:", void>(app("a"), string("running"));
        EXPECT_EQ(accessoryOf(iconOf("a"), location), 4) << location;
        EXPECT_EQ(accessoryOf(iconOf("c"), location), 0) << location;
    }
    for (const char* const key : { "ALImmortalIndicatorEnabled", "ALImmortalEnabled" }) {
        immortal.set({ { key, boolean(false) } });
        EXPECT_EQ(accessoryOf(iconOf("a"), "SBIconLocationRoot"), 0) << key;
        EXPECT_EQ(accessoryOf(iconOf("a"), "SBIconLocationDock"), 0) << key;
    }
}

namespace {

/// What the system's own folder hears.
std::string transitions;

struct WillTransition
    : appledger::Hook<WillTransition, "SBFolderView", "willTransitionAnimated:withSettings:", void(bool, id)> {
    static void replacement(const id&, SEL, bool, const id&) { transitions += "will "; }
};
struct DidTransition : appledger::Hook<DidTransition, "SBFolderView", "didTransitionAnimated:", void(bool)> {
    static void replacement(const id&, SEL, bool) { transitions += "did "; }
};
constexpr appledger::HookRow transitionRows[] { WillTransition::row(), DidTransition::row() };

} // namespace

TEST(Immortalizer, HasTheLastListedApplicationDecideForItsFolder)
{
    Immortal immortal("16.0", Injection::None);
    appledger::installHookGroup({ "Transitions", transitionRows });
    appledger::initializeLibrary();
    immortal.set({});
    const id folder = newObject("SBFolder");
    const id icon = send<"initWithFolder:">(send<"alloc">(id(objc_getClass("SBFolderIcon"))), folder);
    const id view = send<"initWithFolder:">(send<"alloc">(id(objc_getClass("SBFolderView"))), folder);
    send<"setProcessState:", void>(app("a"), string("running"));
    const auto accessoryWith = [&](std::vector<id> icons) {
        send<"setIcons:", void>(folder, array(std::move(icons)));
        return accessoryOf(icon, "SBIconLocationRoot");
    };
    EXPECT_EQ(accessoryWith({ iconOf("c") }), 0);
    EXPECT_EQ(accessoryWith({ iconOf("a"), iconOf("c") }), 4);
    EXPECT_EQ(accessoryWith({ iconOf("b"), iconOf("a") }), 4);
    EXPECT_EQ(accessoryWith({ iconOf("a"), iconOf("b") }), 2) << "the last one, though the first runs";

    send<"willTransitionAnimated:withSettings:", void>(view, true, nil);
    EXPECT_EQ(accessoryOf(icon, "SBIconLocationRoot"), 0);
    EXPECT_EQ(accessoryOf(iconOf("a"), "SBIconLocationRoot"), 4);
    immortal.set({ { "ALImmortalIndicatorEnabled", boolean(false) } });
    send<"didTransitionAnimated:", void>(view, true);
    immortal.set({});
    EXPECT_EQ(immortal.phone.journal(), "");
    EXPECT_EQ(accessoryOf(icon, "SBIconLocationRoot"), 0) << "its end was missed";
    send<"willTransitionAnimated:withSettings:", void>(view, true, nil);
    send<"didTransitionAnimated:", void>(view, true);
    EXPECT_EQ(immortal.phone.journal(), "icon accessory folder");
    EXPECT_EQ(accessoryOf(icon, "SBIconLocationRoot"), 2);
    EXPECT_EQ(transitions, "will did will did ");
}

TEST(Immortalizer, LocksNames)
{
    Immortal immortal;
    const auto nameOf = [](const char* identifier) { return asString(send<"displayName">(app(identifier)))->text(); };
    EXPECT_EQ(nameOf("b"), "b🔒");
    EXPECT_EQ(asString(send<"displayName">(iconOf("b")))->text(), "b🔒");
    EXPECT_EQ(nameOf("a"), "a");
    for (const char* const key : { "ALImmortalLockIndicatorEnabled", "ALImmortalEnabled" }) {
        immortal.set({ { key, boolean(false) } });
        EXPECT_EQ(nameOf("b"), "b") << key;
    }
}

TEST_P(ImmortalizerVersions, TellsOfTheEndOfAnApplicationThatWasKeptAlive)
{
    Immortal immortal(GetParam());
    const std::string subtitle(appledger::ALLoc("BG Stopped"));
    const std::string picture = std::string_view(GetParam()) == "12.4" ? "no picture" : "picture";
    const auto exit = [&](const char* identifier) {
        send<"_didExitWithContext:", void>(app(identifier), nil);
        EXPECT_EQ(phone::takeJournal().size(), 0U) << "not at once";
        return immortal.phone.journal();
    };
    const auto toast = [&](const std::string& title) {
        return "note toast " + title + " / " + subtitle + " / " + picture + " / 3 s";
    };
    EXPECT_EQ(exit("a"), "icon accessory a | " + toast("a"));
    EXPECT_EQ(exit("b"), "icon accessory b | " + toast("b🔒"));
    EXPECT_EQ(exit("c"), "icon accessory c");
    const id uninstalled = newObject("SBApplication");
    send<"setBundleIdentifier:", void>(uninstalled, string("gone"));
    immortal.set({ { "ALImmortalForegroundApps", array({ "gone", "a" }) } });
    send<"_didExitWithContext:", void>(uninstalled, nil);
    EXPECT_EQ(immortal.phone.journal(), toast("gone"));
    immortal.set({ { "ALImmortalToastEnabled", boolean(false) } });
    EXPECT_EQ(exit("a"), "icon accessory a");
    immortal.set({ { "ALImmortalEnabled", boolean(false) } });
    EXPECT_EQ(exit("a"), "");
}

TEST(Immortalizer, HasTheServerShowTheNotificationsOfTheListed)
{
    Immortal immortal;
    const id server = send<"sharedInstance">(id(objc_getClass("UNSUserNotificationServer")));
    const auto notify = [&](const char* identifier) {
        send<"willPresentNotification:forBundleIdentifier:withCompletionHandler:", void>(
            server, nil, string(identifier), nil);
        return immortal.phone.journal();
    };
    for (const char* const identifier : { "a", "b", "d" })
        phone::bringToFront(app(identifier));
    phone::bringToFront(nil);
    immortal.phone.journal();
    EXPECT_EQ(notify("a"), "note a: notification left to it") << "it believes that it is in front";
    EXPECT_EQ(notify("b"), "note b: notification shown");
    EXPECT_EQ(notify("d"), "note d: notification shown");
    const auto state = [&](const char* identifier) {
        return send<"_applicationStateForBundleIdentifier:", unsigned>(server, string(identifier));
    };
    send<"_didChangeApplicationState:forBundleIdentifier:", void>(server, 8U, string("b"));
    send<"_didChangeApplicationState:forBundleIdentifier:", void>(server, 4U, string("a"));
    immortal.set({});
    EXPECT_EQ(state("a"), 8U) << "a change of the lists tells the server";
    EXPECT_EQ(state("b"), 4U);
    EXPECT_EQ(state("d"), 4U);
    immortal.set({ { "ALImmortalEnabled", boolean(false) } });
    phone::bringToFront(nil);
    phone::bringToFront(app("d"));
    EXPECT_EQ(notify("d"), "note d: notification left to it");
}

namespace {

int posts = 0;

} // namespace

TEST(Immortalizer, PostsEachChangeOfTheDisplayWhateverTheSwitchesSay)
{
    CFNotificationCenterAddObserver(
        [] { ++posts; }, "com.lorvane.immortalizer.updatecc", CFNotificationSuspensionBehavior::DeliverImmediately);
    Immortal immortal;
    posts = 0;
    FrontPhone::display("a");
    immortal.phone.journal();
    EXPECT_EQ(posts, 1);
    immortal.set({ { "ALImmortalEnabled", boolean(false) } });
    FrontPhone::display("");
    immortal.phone.journal();
    EXPECT_EQ(posts, 2);
}

TEST(Switcher, KillsWhatMayBeKilled)
{
    Immortal immortal;
    const auto cards = [] {
        std::string text;
        for (const phone::SwitcherCard& card : phone::presentSwitcher())
            text += card.application + (card.killable ? "" : " locked") + (card.running ? "" : " ended")
                + (card.foreground ? " front; " : "; ");
        return text;
    };
    for (const char* const identifier : { "a", "b", "c", "d", "a" })
        phone::bringToFront(app(identifier));
    EXPECT_EQ(cards(), "a front; d; c locked; b locked front; ");
    EXPECT_EQ(phone::swipeCardAway("c"), phone::SwipeOutcome::NotKillable);
    EXPECT_EQ(phone::swipeCardAway("a"), phone::SwipeOutcome::Killed);
    EXPECT_EQ(phone::swipeCardAway("a"), phone::SwipeOutcome::NoSuchCard);
    EXPECT_EQ(phone::applicationInFront(), nil);
    send<"_didExitWithContext:", void>(app("b"), nil);
    EXPECT_EQ(cards(), "d; c locked; b locked ended; ");
}
