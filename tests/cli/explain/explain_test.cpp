#include "cli/command/transition_options.h"
#include "cli/explain/explain_command.h"
#include "cli/explain/explain_launch.h"
#include "cli/explain/explain_notification.h"
#include "cli/explain/explain_purchases.h"
#include "cli/explain/explain_redirect.h"

#include "platform/foundation/property_list.h"
#include "platform/foundation/values.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace cli {

using namespace platform;
using Json = nlohmann::json;

namespace {

const char* const notes = "com.example.notes";
const char* const mail = "com.example.mail";

id preferences()
{
    return dictionary({
        { "ALBlockedLaunchApps", array({ "blocked", "both" }) },
        { "ALRequireAuthApps", array({ "protected", "both" }) },
        { "ALHiddenApps", array({ "hidden" }) },
        { "ALBlockedNotifications", array({ "silent" }) },
        { "ALMutedNotifications", array({ "quiet", "silent" }) },
        { "ALBlockedUpdateApps", array({ "old", "older" }) },
        { "IsBlockedFromLaunchingOthers/com.example.notes", boolean(true) },
        { "CustomBlockedApplications/com.example.chat", array({ "com.example.mail" }) },
        { "IsBlockedFromLaunchingOthers/quiet", boolean(true) },
        { "ShouldSimulateSuccess/quiet", boolean(true) },
        { "ShouldTeardownAutomatically/quiet", boolean(true) },
    });
}

Json redirectFrom(const char* source, const char* destination)
{
    return { { "transitionRequest", true }, { "eventLabel", nullptr },
        { "sourceEntity", { { "bundleIdentifier", source }, { "action", "openURL" } } },
        { "requester", { { "name", nullptr }, { "bundleIdentifier", nullptr } } }, { "previousScene", nullptr },
        { "destination", destination }, { "secondsSinceSourceLaunch", nullptr } };
}

Json changed(Json record, const char* key, Json value)
{
    record[key] = std::move(value);
    return record;
}

class Explain : public testing::Test {
protected:
    Json redirect(const Json& record) const { return Json::parse(explainRedirectLine(record.dump(), policies_)); }
    Json launch(const Json& record) const { return Json::parse(explainLaunchLine(record.dump(), policies_)); }

    Json purchase(const Json& record) const { return Json::parse(explainPurchaseLine(record.dump(), policies_)); }

    const ExplainPolicies policies_ { preferences() };
};

TEST_F(Explain, AnswersARedirectWithOutcomeReasonAndRule)
{
    const Json base = redirectFrom(notes, mail);
    const struct {
        Json record;
        Json verdict;
    } cases[] = {
        { base,
            { { "outcome", "decline" }, { "reason", "No Redirect" },
                { "rule", "forbidden-source IsBlockedFromLaunchingOthers/com.example.notes" } } },
        { changed(base, "transitionRequest", false),
            { { "outcome", "pass" }, { "reason", nullptr }, { "rule", "not-a-transition" } } },
        { changed(base, "eventLabel", "Lock"),
            { { "outcome", "pass" }, { "reason", nullptr }, { "rule", "other-label" } } },
        { changed(base, "sourceEntity", { { "bundleIdentifier", notes }, { "action", "other" } }),
            { { "outcome", "pass" }, { "reason", nullptr }, { "rule", "other-action" } } },
        { changed(base, "sourceEntity", nullptr),
            { { "outcome", "pass" }, { "reason", nullptr }, { "rule", "unknown-application" } } },
        { changed(changed(changed(base, "sourceEntity", nullptr), "requester", { { "name", "lsd" } }), "previousScene",
              "sceneID:com.example.chat-default"),
            { { "outcome", "decline" }, { "reason", "No Redirect" },
                { "rule", "forbidden-pair CustomBlockedApplications/com.example.chat" } } },
        { changed(base, "destination", "hidden"),
            { { "outcome", "decline" }, { "reason", "No Redirect" }, { "rule", "hidden ALHiddenApps" } } },
        { redirectFrom("quiet", mail),
            { { "outcome", "background" }, { "reason", nullptr },
                { "rule", "forbidden-source IsBlockedFromLaunchingOthers/quiet, ShouldSimulateSuccess/quiet" } } },
        { changed(redirectFrom("quiet", mail), "secondsSinceSourceLaunch", 10.0),
            { { "outcome", "background" }, { "reason", nullptr },
                { "rule", "forbidden-source IsBlockedFromLaunchingOthers/quiet, ShouldSimulateSuccess/quiet" } } },
        { changed(redirectFrom("quiet", mail), "secondsSinceSourceLaunch", 10.001),
            { { "outcome", "pass" }, { "reason", nullptr }, { "rule", "paused ShouldTeardownAutomatically/quiet" } } },
        { redirectFrom(mail, notes), { { "outcome", "pass" }, { "reason", nullptr }, { "rule", "default" } } },
    };
    for (const auto& [record, verdict] : cases)
        EXPECT_EQ(redirect(record), verdict) << record;
}

TEST_F(Explain, AnswersAPurchaseWithWhatIsKeptAndWhatTheBuyerIsTold)
{
    const auto verdict = [](const char* outcome, Json kept, Json refused, Json answer) {
        return Json { { "outcome", outcome }, { "kept", std::move(kept) }, { "refused", std::move(refused) },
            { "answer", std::move(answer) },
            { "rule", std::string(outcome) == "pass" ? Json(nullptr) : Json("ALBlockedUpdateApps") } };
    };
    const auto record = [](const std::string& road, Json identifiers) {
        return Json { { "road", road }, { "identifiers", std::move(identifiers) } };
    };
    const std::string jobs = "ASDJobManager addJobs:withCompletionBlock:";
    const std::string error = "ASDErrorDomain 500 \"Blocked by AppLedger\")";
    const Json none = Json::array();
    const Json old = Json::array({ "old" });
    const struct {
        Json record;
        Json verdict;
    } cases[] = {
        { record(jobs, { "new", "newer" }), verdict("pass", { "new", "newer" }, none, nullptr) },
        { record(jobs, none), verdict("pass", none, none, nullptr) },
        { record(jobs, { "new", "old", nullptr, "older", "newer" }),
            verdict("shrink", { "new", nullptr, "newer" }, { "old", "older" }, nullptr) },
        { record(jobs, { "old", "older" }),
            verdict("refuse", none, { "old", "older" }, "completion (false, " + error) },
        { record("ASDPurchaseManager startPurchase:withResultHandler:", old),
            verdict("refuse", none, old, "completion (nil, " + error) },
        { record("SKUIItemStateCenter _performSoftwarePurchases:withClientContext:completionBlock:", old),
            verdict("refuse", none, old, "completion (nil)") },
        { record("ASDPurchaseRequest initWithOptions:", old), verdict("refuse", none, old, "nil") },
        { record("ASDApp isUpdateAvailable", old), verdict("refuse", none, old, "false") },
        { record("ASDApp updateMetadata", old), verdict("refuse", none, old, "nil") },
        { record("ASDApp updateMetadata", Json::array({ nullptr })),
            verdict("pass", Json::array({ nullptr }), none, nullptr) },
        { record("ASDApp updateMetadata", { "new", "old" }), { { "error", "the road takes one identifier" } } },
        { record("ASDApp", old), { { "error", "there is no road \"ASDApp\"" } } },
        { { { "road", jobs } }, { { "error", "\"identifiers\" is an array of texts or nulls" } } },
        { record(jobs, Json::array({ 1 })), { { "error", "\"identifiers\" is an array of texts or nulls" } } },
    };
    for (const auto& [record, expected] : cases)
        EXPECT_EQ(purchase(record), expected) << record;
}

TEST_F(Explain, NamesTheApplicationsOfAPurchaseOnItsLine)
{
    const auto line = [this](const char* road, Json identifiers) {
        return describePurchaseVerdict(
            explainPurchase({ { "road", road }, { "identifiers", std::move(identifiers) } }, policies_));
    };
    EXPECT_EQ(line("ASDApp isUpdateAvailable", { "new" }), "ASDApp isUpdateAvailable for new → passes.");
    EXPECT_EQ(line("ASDApp updateMetadata", { "old" }),
        "ASDApp updateMetadata for old → refused with nil: ALBlockedUpdateApps lists old.");
    EXPECT_EQ(line("ASDJobManager addJobs:withCompletionBlock:", { "new", "old", nullptr }),
        "ASDJobManager addJobs:withCompletionBlock: for new, what has no identifier, old → goes on with new, what has "
        "no "
        "identifier: ALBlockedUpdateApps lists old.");
}

TEST_F(Explain, AnswersALaunchRoadByRoad)
{
    const auto verdict = [](const char* outcome, Json prompts, Json reason, bool haptic) {
        return Json { { "outcome", outcome }, { "prompts", std::move(prompts) }, { "reason", std::move(reason) },
            { "haptic", haptic } };
    };
    const Json open = verdict("open", nullptr, nullptr, false);
    const Json quietStop = verdict("stop", nullptr, nullptr, false);
    const Json stop = verdict("stop", nullptr, nullptr, true);
    const std::string tap = "SBIconView _handleTap";
    const std::string validate = "SBMainWorkspace _canExecuteTransitionRequest:forExecution:";
    const std::string service = "FBSOpenApplicationService openApplication:withOptions:completion:";
    const std::string card = "SBFluidSwitcherViewController didSelectContainer:";
    const struct {
        Json record;
        Json verdict;
    } cases[] = {
        { { { "road", tap }, { "bundleIdentifier", "blocked" } }, stop },
        { { { "road", tap }, { "bundleIdentifier", "other" } }, open },
        { { { "road", tap }, { "bundleIdentifier", nullptr } }, open },
        { { { "road", tap }, { "bundleIdentifier", "both" } }, verdict("prompt", "both", nullptr, true) },
        { { { "road", tap }, { "bundleIdentifier", "both" }, { "bypass", "both" } }, stop },
        { { { "road", tap }, { "bundleIdentifier", "protected" }, { "bypass", "protected" } }, open },
        { { { "road", validate }, { "bundleIdentifier", "hidden" } },
            verdict("stop", nullptr, "Blocked by AppLedger", false) },
        { { { "road", validate }, { "bundleIdentifier", "protected" } },
            verdict("prompt", "protected", "Blocked for Authentication", false) },
        { { { "road", service }, { "bundleIdentifier", "hidden" } }, quietStop },
        // What the process read stands in place of the file, but for the blocked list where it is read fresh.
        { { { "road", tap }, { "bundleIdentifier", "blocked" }, { "cached", { { "ALBlockedLaunchApps", { "x" } } } } },
            open },
        { { { "road", tap }, { "bundleIdentifier", "hidden" }, { "cached", { { "ALBlockedLaunchApps", { "x" } } } } },
            stop },
        { { { "road", tap }, { "bundleIdentifier", "x" }, { "cached", { { "ALHiddenApps", { 3, "x" } } } } }, stop },
        { { { "road", tap }, { "bundleIdentifier", "x" }, { "cached", { { "ALHiddenApps", "x" } } } }, open },
        { { { "road", service }, { "bundleIdentifier", "blocked" },
              { "cached", { { "ALBlockedLaunchApps", { "x" } } } } },
            quietStop },
        { { { "road", service }, { "bundleIdentifier", "x" }, { "cached", { { "ALBlockedLaunchApps", { "x" } } } } },
            open },
        { { { "road", service }, { "bundleIdentifier", "x" }, { "cached", { { "ALRequireAuthApps", { "x" } } } } },
            verdict("prompt", "x", nullptr, false) },
        // Spotlight reads its lists at its load, and none of hidden applications.
        { { { "road", "Spotlight " + service }, { "bundleIdentifier", "x" },
              { "cached", { { "ALBlockedLaunchApps", { "x" } } } } },
            quietStop },
        { { { "road", "Spotlight " + service }, { "bundleIdentifier", "hidden" } }, open },
        { { { "road", "LSApplicationWorkspace openApplicationWithBundleID:" }, { "bundleIdentifier", "blocked" } },
            quietStop },
        { { { "road", "LSApplicationWorkspace openApplicationWithBundleID:" }, { "bundleIdentifier", "hidden" } },
            open },
        { { { "road", card }, { "layout", { "other", "blocked", "protected" } } },
            verdict("prompt", "protected", nullptr, true) },
        { { { "road", card }, { "layout", { "other", "hidden" } } }, stop },
        { { { "road", card }, { "layout", Json::array() } }, open },
        { { { "road", card }, { "bundleIdentifier", "blocked" } }, open },
    };
    for (const auto& [record, expected] : cases)
        EXPECT_EQ(launch(record), expected) << record;
}

TEST_F(Explain, AnswersANotificationRoadByRoad)
{
    const auto explained = [this](Json record) {
        const Json verdict = Json::parse(explainNotificationLine(record.dump(), policies_));
        if (verdict.contains("error"))
            return verdict["error"].get<std::string>();
        std::string text = verdict["outcome"].get<std::string>();
        for (const char* const key : { "application", "rule" })
            text += " " + (verdict[key].is_string() ? verdict[key].get<std::string>() : "-");
        return text;
    };
    const std::string bulletin = "BBServer publishBulletin:destinations:";
    const std::string section = "BBServer _publishBulletinRequest:forSectionID:forDestinations:";
    const std::string alert = "SBNCAlertingController alertOnPresentationForNotificationRequest:presentingDestination:";
    const Json hidden { { "sectionID", "hidden" } };
    const Json quiet { { "sectionID", 3 }, { "sectionIdentifier", "" }, { "bulletin", { { "sectionID", "quiet" } } } };
    const struct {
        Json record;
        std::string verdict;
    } cases[] = {
        { { { "road", bulletin }, { "notification", hidden } }, "drop hidden ALHiddenApps" },
        { { { "road", section }, { "notification", hidden } }, "pass hidden -" },
        { { { "road", alert }, { "notification", hidden } }, "drop hidden ALHiddenApps" },
        { { { "road", bulletin }, { "notification", quiet } }, "mute quiet ALMutedNotifications" },
        { { { "road", bulletin }, { "section", "silent" } }, "pass - -" },
        { { { "road", section }, { "section", "silent" } }, "drop silent ALBlockedNotifications" },
        { { { "road", section }, { "notification", quiet }, { "section", "silent" } },
            "mute quiet ALMutedNotifications" },
        { { { "road", "BBServer fly" } }, "there is no road \"BBServer fly\"" },
        { { { "road", bulletin }, { "notification", "x" } }, "\"notification\" is an object or null" },
        { Json::array(), "a record is an object" },
    };
    for (const auto& [record, verdict] : cases)
        EXPECT_EQ(explained(record), verdict) << record;
}

TEST_F(Explain, KnowsEveryRoadByItsName)
{
    for (const appledger::NotificationRoadTraits& road : appledger::notificationRoads())
        EXPECT_EQ(notificationRoadNamed(roadName(road)), &road) << roadName(road);
    for (const appledger::LaunchRoadTraits& road : appledger::launchRoads())
        EXPECT_EQ(roadNamed(roadName(road)), &road) << roadName(road);
    EXPECT_EQ(roadNamed("Spotlight SBIconView _handleTap"), nullptr);
    EXPECT_EQ(roadNamed("SBIconView"), nullptr);
}

TEST_F(Explain, SaysWhatIsWrongWithARecord)
{
    const Json base = redirectFrom(notes, mail);
    const struct {
        std::string line;
        const char* error;
    } redirects[] = {
        { "", "a record is an object" },
        { "{", "a record is an object" },
        { "[]", "a record is an object" },
        { "\"\xFF\"", "a record is an object" },
        { base.dump() + "}", "a record is an object" },
        { "{}", "\"transitionRequest\" is true or false" },
        { changed(base, "transitionRequest", 1).dump(), "\"transitionRequest\" is true or false" },
        { changed(base, "eventLabel", 1).dump(), "\"eventLabel\" is a text or null" },
        { changed(base, "sourceEntity", "x").dump(), "\"sourceEntity\" is an object or null" },
        { changed(base, "sourceEntity", { { "action", "fly" } }).dump(),
            "\"action\" is \"none\", \"openURL\" or \"other\"" },
        { changed(base, "requester", { { "name", 2 } }).dump(), "\"name\" is a text or null" },
        { changed(base, "destination", Json::array()).dump(), "\"destination\" is a text or null" },
        { changed(base, "secondsSinceSourceLaunch", "2").dump(), "\"secondsSinceSourceLaunch\" is a number or null" },
    };
    for (const auto& [line, error] : redirects)
        EXPECT_EQ(Json::parse(explainRedirectLine(line, policies_)), (Json { { "error", error } })) << line;

    const Json tap { { "road", "SBIconView _handleTap" } };
    const struct {
        Json record;
        const char* error;
    } launches[] = {
        { nullptr, "a record is an object" },
        { Json::object(), "\"road\" is a text" },
        { { { "road", 3 } }, "\"road\" is a text or null" },
        { { { "road", "SBIconView fly" } }, "there is no road \"SBIconView fly\"" },
        { changed(tap, "bundleIdentifier", 3), "\"bundleIdentifier\" is a text or null" },
        { changed(tap, "bypass", false), "\"bypass\" is a text or null" },
        { changed(tap, "cached", Json::array()), "\"cached\" is an object or null" },
        { changed(tap, "layout", "x"), "\"layout\" is an array of texts or null" },
        { changed(tap, "layout", { "x", 3 }), "\"layout\" is an array of texts or null" },
    };
    for (const auto& [record, error] : launches)
        EXPECT_EQ(launch(record), (Json { { "error", error } })) << record;
}

TEST_F(Explain, SpeaksOfWhoWhatAndWhy)
{
    const Json record = redirectFrom(notes, mail);
    EXPECT_EQ(describeRedirect(explainRedirect(record, policies_).verdict),
        "com.example.notes asks for com.example.mail: declined with \"No Redirect\".\nWhy: the source may open no "
        "other "
        "application (forbidden-source IsBlockedFromLaunchingOthers/com.example.notes).");
    const Json tap { { "road", "SBIconView _handleTap" }, { "bundleIdentifier", "blocked" } };
    EXPECT_EQ(describeLaunchVerdict(explainLaunch(tap, policies_)),
        "SBIconView _handleTap → stopped, with a haptic: ALBlockedLaunchApps lists blocked.");
}

TEST(TransitionRecord, FillsInWhatIsUsual)
{
    const Json from = transitionRecord({ .source = notes }, mail);
    EXPECT_EQ(from["eventLabel"], "OpenApplication(com.example.mail)ForRequester(com.example.notes)");
    EXPECT_EQ(from["sourceEntity"], (Json { { "bundleIdentifier", notes }, { "action", "none" } }));
    EXPECT_EQ(from["requester"], (Json { { "name", notes }, { "bundleIdentifier", notes } }));
    EXPECT_EQ(from["destination"], mail);

    const Json crumb = transitionRecord({ .source = notes, .isBreadcrumb = true }, mail);
    EXPECT_EQ(crumb["eventLabel"], "ActivateFromBreadcrumb");
    EXPECT_EQ(crumb["sourceEntity"], nullptr);
    EXPECT_EQ(crumb["requester"]["name"], "SpringBoard");
    EXPECT_EQ(crumb["previousScene"], "sceneID:com.example.notes-default");

    const Json daemon = transitionRecord({ .hasNoLabel = true, .requester = "lsd", .previousScene = "s" }, mail);
    EXPECT_EQ(daemon["eventLabel"], nullptr);
    EXPECT_EQ(daemon["sourceEntity"], nullptr);
    EXPECT_EQ(daemon["requester"], (Json { { "name", "lsd" }, { "bundleIdentifier", nullptr } }));
    EXPECT_EQ(daemon["previousScene"], "s");

    EXPECT_FALSE(TransitionOptions {}.any());
}

TEST(ExplainPreferences, AreReadFromEitherFormatAndFromNothingElse)
{
    std::string pattern = std::filesystem::temp_directory_path() / "preferences-XXXXXX";
    const std::filesystem::path folder = ::mkdtemp(pattern.data());
    const std::string file = folder / "rules.plist";
    const auto write = [&file](std::string_view bytes) { std::ofstream(file, std::ios::binary) << bytes; };
    for (const PropertyListFormat format : { PropertyListFormat::Xml, PropertyListFormat::Binary }) {
        write(*dataFromPropertyList(preferences(), format));
        const ExplainPolicies policies(preferencesFromHostFile(file));
        EXPECT_TRUE(policies.hidden.list().contains("hidden"));
        EXPECT_TRUE(policies.redirect.rules().forbiddenSources->contains(notes));
    }
    EXPECT_FALSE(preferencesFromHostFile(folder / "absent"));
    EXPECT_FALSE(preferencesFromHostFile(folder));
    write("bplist00 and then nothing");
    EXPECT_FALSE(preferencesFromHostFile(file));
    write(*dataFromPropertyList(array({ "a" }), PropertyListFormat::Xml));
    EXPECT_FALSE(preferencesFromHostFile(file));
    std::filesystem::remove_all(folder);
}

} // namespace

} // namespace cli
