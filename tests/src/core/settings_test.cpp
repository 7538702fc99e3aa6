#include "core/settings.h"

#include "core/policies.h"
#include "platform/darwin/notify.h"
#include "platform/darwin/system.h"
#include "platform/dispatch/run_loop.h"
#include "platform/foundation/notification_center.h"
#include "platform/runtime/message.h"
#include "platform/screen/framework.h"
#include "support/temporary_device.h"

#include <gtest/gtest.h>
#include <thread>

namespace appledger {

using namespace platform;

namespace {

/// What was posted since it was last asked for.
std::string posted;

class Settings : public testing::Test {
protected:
    Settings()
    {
        on("16.0");
        for (const std::string_view name :
            { notification::swipeUpChanged, notification::swipeDownChanged, notification::appearanceChanged })
            addLocalObserver(name, [](std::string_view posting, const id& object) {
                posted += "local " + std::string(posting) + (object ? " with an object; " : "; ");
            });
        CFNotificationCenterAddObserver([] { posted += "autoclear; "; }, policy::autoClear.notification,
            CFNotificationSuspensionBehavior::DeliverImmediately);
        CFNotificationCenterAddObserver([] { posted += "indicator; "; }, policy::runningIndicator.notification,
            CFNotificationSuspensionBehavior::DeliverImmediately);
    }

    static void on(const char* version)
    {
        setProcessFacts({ "com.apple.springboard", "SpringBoard", parseSystemVersion(version).value() });
    }

    static std::string takePosted()
    {
        runUntilIdle();
        return std::exchange(posted, "");
    }

    static id settings()
    {
        registerClass(ALSettings::definition);
        return id(classNamed<"ALSettings">());
    }

    const support::TemporaryDevice device_;
};

const std::string up = "local com.merrowlane.appledger.swipeup-preferences-changed; ";
const std::string down = "local com.merrowlane.appledger.swipedown-preferences-changed; ";
const std::string looks = "local com.merrowlane.appledger.appearance-preferences-changed; ";

struct Change {
    std::string_view key;
    id value;
    std::string posted;
};

const Change changes[] {
    { "SwipeUpEnabled", boolean(false), up },
    { "SwipeDownEnabled", boolean(true), down },
    { "ForceTouchMenuEnabled", boolean(true), "" },
    { "kAppearance", number(1), looks },
    { "GlobalAutoClearCacheEnabled", boolean(true), "autoclear; " },
    { "HidePanelSeparatorsEnabled", boolean(true), looks },
    { "RunningIndicatorEnabled", boolean(true), "indicator; " },
    { "RunningIndicatorColor", string("#00FF00"), "indicator; " },
    { "DirectoryOpener", string("fila"), "" },
};

TEST_F(Settings, AnswerTheirDefaultsAndNobodyElseDoes)
{
    const id shared = settings();
    EXPECT_TRUE((send<"swipeUpEnabled", bool>(shared)));
    for (const char* const off :
        { "swipeDownEnabled", "forceTouchMenuEnabled", "hidePanelSeparatorsEnabled", "runningIndicatorEnabled" })
        EXPECT_FALSE((sendSelector<bool>(shared, sel_registerName(off)))) << off;
    EXPECT_EQ((send<"integerForKey:", NSInteger>(shared, string("kAppearance"))), 0);
    EXPECT_EQ(describe(send<"objectForKey:">(shared, string("RunningIndicatorColor"))), "\"#AF52DE\"");
    EXPECT_FALSE((send<"boolForKey:", bool>(shared, string("GlobalAutoClearCacheEnabled"))));
    EXPECT_EQ(describe(send<"objectForKey:">(shared, string("DirectoryOpener"))), "\"filza\"");
    EXPECT_FALSE(preferences()->boolForKey("SwipeUpEnabled"));
    EXPECT_EQ(describe(preferences()->dictionaryRepresentation()), "{}");
    for (const auto& [key, value, expected] : changes)
        EXPECT_NE(preferenceKey(key), nullptr) << key << " can't be set by the command";
}

TEST_F(Settings, PostWhatBelongsToTheKeyThatTheyAreSet)
{
    const id shared = settings();
    for (const auto& [key, value, expected] : changes) {
        send<"setObject:forKey:", void>(shared, value, string(key));
        EXPECT_EQ(takePosted(), expected) << key;
        EXPECT_EQ(describe(send<"objectForKey:">(shared, string(key))), describe(value));
        send<"setObject:forKey:", void>(shared, value, string(key));
        EXPECT_EQ(takePosted(), "") << key << " is what it was";
    }
    send<"setInteger:forKey:", void>(shared, NSInteger { 2 }, string("kAppearance"));
    EXPECT_EQ(takePosted(), looks);
    preferences()->setBool(true, "SwipeUpEnabled");
    EXPECT_EQ(takePosted(), up) << "by another instance in this process";
}

TEST_F(Settings, PostWhatAnotherProcessHasSetOnceSomebodySynchronizes)
{
    settings();
    ALSettings::sharedInstance();
    for (const auto& [key, value, expected] : changes) {
        device_.writeDomain({ { key, value } });
        EXPECT_EQ(takePosted(), "") << key;
        send<"synchronize", bool>(ALSettings::sharedInstance().userDefaults);
        EXPECT_EQ(takePosted(), expected) << key;
        device_.writeDomain({});
        preferences(); // a new instance looks at the file
        EXPECT_EQ(takePosted(), expected) << key << " is gone";
    }
}

TEST_F(Settings, OfferTheAutomaticAppearanceFrom13On)
{
    const id shared = settings();
    const struct {
        const char* version;
        NSInteger stored;
        NSInteger style;
        std::string titles;
        std::string values;
    } cases[] = {
        { "13.0", 2, 2, R"(["Dark", "Light", "Auto"])", R"(["0", "1", "2"])" },
        { "12.4", 2, 0, R"(["Dark", "Light"])", R"(["0", "1"])" },
        { "12.4", 1, 1, R"(["Dark", "Light"])", R"(["0", "1"])" },
        { "16.0", 7, 7, R"(["Dark", "Light", "Auto"])", R"(["0", "1", "2"])" },
    };
    for (const auto& [version, stored, style, titles, values] : cases) {
        on(version);
        send<"setInteger:forKey:", void>(shared, stored, string("kAppearance"));
        EXPECT_EQ((send<"appearanceStyle", NSInteger>(shared)), style) << version;
        EXPECT_EQ((send<"integerForKey:", NSInteger>(shared, string("kAppearance"))), style) << "written back";
        EXPECT_EQ(describe(send<"appearanceTitles">(shared)), titles);
        EXPECT_EQ(describe(send<"appearanceValues">(shared)), values);
    }
    const auto title = [&](NSInteger style) { return describe(send<"titleForAppearanceStyle:">(shared, style)); };
    EXPECT_EQ(title(0) + title(1) + title(2) + title(3) + title(-1), R"("Dark""Light""Auto""Unknown""Unknown")");
}

TEST_F(Settings, NameOneOfTwoFileManagers)
{
    const id shared = settings();
    const auto told = [&] {
        std::string text;
        for (const id& one : { send<"directoryOpener">(shared), send<"directoryOpenerDisplayName">(shared),
                 send<"openInDirectoryOpenerTitle">(shared) })
            text += describe(one);
        return text;
    };
    const std::string filza = R"("filza""Filza""Open in Filza")";
    const std::string fila = R"("fila""Fila""Open in Fila")";
    EXPECT_EQ(told(), filza);
    for (const auto& [opener, expected] : { std::pair(string("fila"), fila), { string("Fila"), filza },
             { string("fila"), fila }, { nil, filza }, { string("fila"), fila }, { number(1), filza } }) {
        send<"setDirectoryOpener:", void>(shared, opener);
        EXPECT_EQ(told(), expected) << describe(opener);
        EXPECT_TRUE(told().starts_with(describe(send<"objectForKey:">(shared, string("DirectoryOpener")))));
    }
    for (const id& stored : { string("anything"), number(2), array({ "fila" }) }) {
        send<"setObject:forKey:", void>(shared, stored, string("DirectoryOpener"));
        EXPECT_EQ(told(), filza) << describe(stored);
    }
    EXPECT_EQ(describe(send<"directoryOpenerTitles">(shared)), R"(["Filza", "Fila"])");
    EXPECT_EQ(describe(send<"directoryOpenerValues">(shared)), R"(["filza", "fila"])");
}

TEST_F(Settings, KeepTheNamesThatTheOwnerGives)
{
    const id shared = settings();
    const auto set = [&](const id& name, const id& identifier) {
        send<"setCustomAppName:forBundleIdentifier:", void>(shared, name, identifier);
    };
    const auto onDisk = [] { return describe(CFPreferencesCopyAppValue("CustomAppNames", preferenceSuite)); };
    set(string("One"), string("a"));
    set(string("Two"), string("b"));
    set(string("None"), nil);
    set(string("None"), number(1));
    EXPECT_EQ(onDisk(), R"({"a": "One", "b": "Two"})");
    EXPECT_EQ(describe(send<"customAppNameForBundleIdentifier:">(shared, string("b"))), "\"Two\"");
    set(nil, string("b"));
    set(nil, string("b"));
    EXPECT_EQ(send<"customAppNameForBundleIdentifier:">(shared, string("b")), nil);
    EXPECT_EQ(send<"customAppNameForBundleIdentifier:">(shared, nil), nil);
    device_.writeDomain({ { "CustomAppNames", dictionary({ { "b", number(2) }, { "theirs", string("Three") } }) } });
    set(string("Four"), string("c"));
    EXPECT_EQ(onDisk(), R"({"b": 2, "theirs": "Three", "c": "Four"})")
        << "what another process has named meanwhile stays";
    EXPECT_EQ(send<"customAppNameForBundleIdentifier:">(shared, string("b")), nil) << "no text";
    device_.writeDomain({ { "CustomAppNames", array({ "a" }) } });
    preferences();
    EXPECT_EQ(send<"customAppNameForBundleIdentifier:">(shared, string("a")), nil);
    set(string("One"), string("a"));
    EXPECT_EQ(onDisk(), R"({"a": "One"})");
}

TEST_F(Settings, AreOneInstanceForAllThreads)
{
    std::array<const ALSettings*, 4> found {};
    std::array<std::thread, 4> threads;
    for (std::size_t index = 0; index < threads.size(); ++index)
        threads[index] = std::thread([&found, index] { found[index] = &ALSettings::sharedInstance(); });
    for (std::thread& thread : threads)
        thread.join();
    for (const ALSettings* one : found)
        EXPECT_EQ(one, found[0]);
}

TEST_F(Settings, TakeTheValuesThatTheirRangesAllow)
{
    const struct {
        std::string_view key;
        std::vector<id> allowed;
        std::vector<id> refused;
    } cases[] = {
        { "kAppearance", { number(0), number(2) }, { number(3), number(-1), string("0") } },
        { "DirectoryOpener", { string("fila"), string("filza") }, { string("Filza"), string(""), number(1) } },
        { "RunningIndicatorColor", { string("#AF52de"), string("#AF52DE7F") },
            { string("AF52DE"), string("#AF52D"), string("#GF52DE"), string("#"), number(1) } },
    };
    for (const auto& [key, allowed, refused] : cases) {
        const PreferenceRange& range = preferenceKey(key)->range;
        ASSERT_NE(range.contains, nullptr) << key;
        for (const id& value : allowed)
            EXPECT_TRUE(range.contains(value)) << key << describe(value);
        for (const id& value : refused)
            EXPECT_FALSE(range.contains(value)) << key << describe(value);
    }
}

} // namespace

} // namespace appledger
