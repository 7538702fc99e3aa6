#include "support/phone_fixture.h"

#include "phone/springboard/icons/icon_list.h"
#include "phone/springboard/icons/removal.h"
#include "platform/foundation/block.h"
#include "platform/foundation/files.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/hook.h"
#include "platform/runtime/message.h"

#include <gtest/gtest.h>

using namespace platform;
using support::Phone;

namespace {

const std::string notes = "com.example.notes";
const std::string mail = "com.example.mail";

class AppsOnHomeScreen : public testing::TestWithParam<const char*> {
protected:
    void change(const char* key, const char* notification, const std::vector<std::string>& identifiers) const
    {
        std::vector<id> items;
        for (const std::string& identifier : identifiers)
            items.push_back(string(identifier));
        phone_.device.writeDomain({ { key, array(std::move(items)) } });
        CFNotificationCenterPostNotification(std::string("com.orbelix.appledger.") + notification);
        runUntilIdle();
    }

    void hide(const std::vector<std::string>& identifiers) const
    {
        change("ALHiddenApps", "hidden_changed", identifiers);
    }

    void protect(const std::vector<std::string>& identifiers) const
    {
        change("ALBlockedUninstallApps", "uninstall_blocked_changed", identifiers);
    }

    static std::string shown()
    {
        std::string text;
        for (const phone::HomeScreenIcon& icon : phone::homeScreenIcons())
            if (icon.isShown)
                text += icon.identifier + " ";
        return text;
    }

    static id iconOf(const std::string& identifier)
    {
        return send<"applicationIconForBundleIdentifier:">(phone::iconModel(), string(identifier));
    }

    Phone phone_ { "SpringBoard", GetParam() };
};

TEST_P(AppsOnHomeScreen, LosesHiddenApplicationsAndGetsThemBackAtOnce)
{
    phone_.with({ notes, mail }).inject().start();
    const std::string both = "com.example.mail com.example.notes ";
    EXPECT_EQ(shown(), both);
    hide({ notes });
    EXPECT_EQ(shown(), "com.example.mail ");
    hide({ notes, mail });
    EXPECT_EQ(shown(), "");
    hide({});
    EXPECT_EQ(shown(), both);
}

TEST_P(AppsOnHomeScreen, ShowsThemAllOnAStockPhone)
{
    phone_.with({ notes, mail }).start();
    hide({ notes });
    EXPECT_EQ(shown(), "com.example.mail com.example.notes ");
}

INSTANTIATE_TEST_SUITE_P(Versions, AppsOnHomeScreen, testing::Values("12.4", "16.0"),
    [](const auto& parameter) { return "iOS" + std::string(parameter.param).substr(0, 2); });

/// Tells its application by the older selector alone.
id applicationBundleID(const id&, SEL)
{
    return string(notes);
}

bool isVisible(const id&, SEL)
{
    return true;
}

constexpr MethodDefinition visibleIconMethods[] {
    method<"applicationBundleID", &applicationBundleID>(),
    method<"isVisible", &isVisible>(),
};

const ClassDefinition VisibleIcon_class { .name = "VisibleIcon", .methods = visibleIconMethods };

class HiddenApplication : public AppsOnHomeScreen { };
INSTANTIATE_TEST_SUITE_P(Newest, HiddenApplication, testing::Values("16.0"));

TEST_P(HiddenApplication, IsHiddenInEachLayerByItself)
{
    phone_.with({ notes, mail }).inject().start();
    const id icon = iconOf(notes);
    const id application = send<"application">(icon);
    const id info = send<"info">(application);
    const id model = phone::iconModel();
    const auto layers = [&] {
        std::string text;
        for (const bool layer :
            { send<"isIconVisible:", bool>(model, icon), asSet(send<"visibleIconIdentifiers">(model))->contains(notes),
                send<"isVisible", bool>(icon), !send<"isHidden", bool>(info), !send<"isHidden", bool>(application) })
            text += layer ? "shown " : "hidden ";
        return text + describe(send<"tags">(info));
    };
    EXPECT_EQ(layers(), "shown shown shown shown shown []");
    hide({ notes });
    EXPECT_EQ(layers(), "hidden hidden hidden hidden hidden [\"hidden\"]");
    hide({ mail });
    EXPECT_EQ(layers(), "shown shown shown shown shown []");

    // An application that knows of no information, and an icon that calls itself visible, are still the owner's to
    // hide.
    const id lone = send<"new">(id(objc_getClass("SBApplication")));
    send<"setBundleIdentifier:", void>(lone, string(notes));
    const id visibleIcon = send<"new">(id(registerClass(VisibleIcon_class)));
    hide({ notes });
    EXPECT_EQ((send<"isHidden", bool>(lone)), true);
    EXPECT_EQ((send<"isIconVisible:", bool>(model, visibleIcon)), false);
    hide({ mail });
    EXPECT_EQ((send<"isHidden", bool>(lone)), false);
    EXPECT_EQ((send<"isIconVisible:", bool>(model, visibleIcon)), true);
}

TEST_P(HiddenApplication, HasTheTagOnceBehindTheOthers)
{
    phone_.with({ notes }).inject().start();
    const id info = send<"info">(send<"application">(iconOf(notes)));
    hide({ notes });
    const struct {
        id tags;
        std::string result;
    } cases[] = {
        { nil, "[\"hidden\"]" },
        { array({ "a" }), "[\"a\", \"hidden\"]" },
        { array({ "hidden", "a" }), "[\"hidden\", \"a\"]" },
        { string("no array"), "\"no array\"" },
    };
    for (const auto& row : cases) {
        send<"setTags:", void>(info, row.tags);
        EXPECT_EQ(describe(send<"tags">(info)), row.result);
    }
    EXPECT_EQ(send<"tags">(info), cases[3].tags);
}

id givenIdentifiers;

id visibleIconIdentifiers(const id&, SEL)
{
    return givenIdentifiers;
}

TEST_P(HiddenApplication, IsTakenOutOfASetOfIdentifiersAndOfNothingElse)
{
    MSHookMessageEx(objc_getClass("SBHIconModel"), sel_registerName("visibleIconIdentifiers"),
        reinterpret_cast<IMP>(&visibleIconIdentifiers), nullptr);
    phone_.with({ notes }).inject().start();
    const auto visible = [](const id& given) {
        givenIdentifiers = given;
        return send<"visibleIconIdentifiers">(phone::iconModel());
    };
    const id identifiers = set({ string(notes), number(3), string(mail) });
    EXPECT_EQ(visible(identifiers).get(), identifiers.get()) << "nothing is hidden: the system's own object";
    hide({ notes });
    EXPECT_EQ(describe(visible(identifiers)), "{3, \"com.example.mail\"}");
    const id list = array({ "com.example.notes" });
    EXPECT_EQ(visible(list).get(), list.get());
    EXPECT_FALSE(visible(nil));
}

class UninstallProtection : public AppsOnHomeScreen {
protected:
    std::string removal(std::string_view road)
    {
        const phone::RemovalOutcome outcome = phone::requestRemoval(road, notes);
        EXPECT_EQ(outcome.error, "");
        std::string text = outcome.report.isOffered ? "offered" : "not offered";
        text += outcome.report.isRemoved ? ", removed" : ", kept";
        if (outcome.report.completion)
            text += *outcome.report.completion ? ", completed" : ", never completed";
        const std::string journal = phone_.journal();
        return text + (journal.empty() ? "" : ", ") + journal;
    }

    void installThirdParty(const std::string& identifier) const
    {
        phone_.device.write("/var/containers/Bundle/Application/" + identifier + "/A.app/Info.plist",
            dictionary({ { "CFBundleIdentifier", string(identifier) } }));
    }
};

INSTANTIATE_TEST_SUITE_P(Newest, UninstallProtection, testing::Values("16.0"));

TEST_P(UninstallProtection, AnswersEveryRoadWithATapAlone)
{
    installThirdParty(notes);
    installThirdParty(mail);
    phone_.inject().start();
    protect({ notes });
    EXPECT_EQ(removal("completion"), "not offered, kept, never completed, haptic impact");
    EXPECT_EQ(removal("animate"), "not offered, kept, haptic impact");
    EXPECT_EQ(removal("plain"), "not offered, kept, haptic impact");
    EXPECT_EQ(shown(), "com.example.mail com.example.notes ") << "protected is not hidden";
    protect({ mail });
    EXPECT_EQ(removal("completion"), "offered, removed, completed");
    EXPECT_EQ(shown(), "com.example.mail ");
    EXPECT_FALSE(fileExists("/var/containers/Bundle/Application/" + notes));
}

TEST_P(UninstallProtection, IsNotThereOnAStockPhone)
{
    installThirdParty(notes);
    phone_.start();
    protect({ notes });
    EXPECT_EQ(removal("completion"), "offered, removed, completed");
}

TEST_P(UninstallProtection, PassesIconsThatTellNoApplication)
{
    phone_.inject().start();
    protect({ notes });
    const id manager = phone::iconManager();
    bool completed = false;
    const id icon = send<"new">(id(objc_getClass("SBLeafIcon")));
    send<"uninstallIcon:animate:completion:", void>(manager, icon, true, block([&](bool) { completed = true; }));
    send<"uninstallIcon:", void>(manager, nil);
    EXPECT_TRUE(completed);
    EXPECT_EQ(phone_.journal(), "");
}

} // namespace
