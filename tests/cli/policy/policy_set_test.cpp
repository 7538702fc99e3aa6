#include "cli/command/application_names.h"
#include "cli/command/nearest.h"
#include "cli/command/part.h"
#include "cli/history/policy_session.h"
#include "cli/policy/audit.h"
#include "cli/policy/features.h"
#include "cli/policy/key_texts.h"
#include "cli/policy/policy_set.h"
#include "cli/policy/policy_set_file.h"
#include "cli/policy/policy_value.h"
#include "core/preference_domain.h"
#include "support/temporary_device.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <set>

namespace cli {

using namespace platform;
using Json = nlohmann::json;

namespace {

std::string setWith(const std::string& domain)
{
    return "{\n \"format\": \"appledger-policies\",\n \"version\": 1,\n \"domain\": {\n" + domain + "\n }\n}\n";
}

} // namespace

TEST(PolicySetFile, HostileFilesAreRefusedWholeWithTheLine)
{
    const std::string whole = setWith("  \"ALHiddenApps\": [\"a\"]");
    ASSERT_EQ(setFromBytes(whole).problem, "");
    std::string deep = "{\n\"format\": ";
    deep.append(100'000, '[');
    const std::string xml = bytesOfSet(setFromBytes(whole).set, "a.plist");
    const std::pair<std::string, std::string> cases[] {
        { "", "line 1" },
        { whole.substr(0, whole.size() - 4), "line 6: the file ends in the middle" },
        { whole.substr(0, 60), "the file ends in the middle" },
        { "{\n\"format\":\n'x'}", "line 3: it isn't JSON" },
        { deep, "line 2: it is nested too deep" },
        { "[1, 2]", "line 1: it isn't an export" },
        { "{\n\"rules\": [],\n\"format\": \"another\"}", "line 3: it isn't an export" },
        { setWith("  \"ALHiddenApps\": [\"a\"],\n  \"ALHiddenApp\": []"),
            "line 6: AppLedger has no key ALHiddenApp; the nearest is ALHiddenApps" },
        { setWith("\n  \"ALHiddenApps\": \"a\""), "line 6: ALHiddenApps takes bundle identifiers" },
        { setWith("  \"ALHiddenApps\": [1]"), "line 5: ALHiddenApps takes" },
        { setWith("  \"ALImmortalEnabled\": 1"), "line 5: ALImmortalEnabled takes true or false" },
        { setWith("  \"RunningIndicatorColor\": \"blue\""), "line 5: RunningIndicatorColor takes #RRGGBB" },
        { setWith("  \"ALActionBarItems\": [\"badge\", \"bagde\"]"), "line 5: ALActionBarItems takes a list of these" },
        { setWith("  \"ALRealBadges\": {}"), "line 5: ALRealBadges is the phone's own state" },
        { setWith("  \"ShouldSimulateSuccess/\": true"), "line 5: ShouldSimulateSuccess/ goes on" },
        { setWith("  \"ALCustomBadges\": {\"a\": 18446744073709551615}"), "line 5" },
        { "{\"format\":\"appledger-policies\",\"version\":2,\"domain\":{}}", "another version" },
        { "{\"format\":\"appledger-policies\",\"version\":1,\n\"domain\":{},\"brightness\":{\"a\":80}}",
            "line 2: brightness takes" },
        { "{\"format\":\"appledger-policies\",\"version\":1,\"domain\":{},\n\"rules\":[]}",
            "line 2: a set of policies has no" },
        { xml.substr(0, xml.size() / 2), "line 6: it isn't a property list" },
        { "<plist><dict><key>a</key></array></dict></plist>", "line 1: it isn't a property list" },
        { "bplist00\xFF\xFF", "it isn't a property list" },
    };
    for (const auto& [bytes, problem] : cases) {
        const SetReading reading = setFromBytes(bytes);
        EXPECT_NE(reading.problem.find(problem), std::string::npos) << bytes.substr(0, 80) << "\n" << reading.problem;
        EXPECT_TRUE(reading.set.is_null());
    }
}

TEST(PolicySetFile, OneThatIsNestedWithoutEndIsRefusedSoon)
{
    std::string xml = "<plist>";
    std::string json;
    for (int depth = 0; depth < 300'000; ++depth) {
        xml += "<array>";
        json += "[\n";
    }
    for (const std::string& bytes : { xml, json, "{\"domain\":" + json, "\"" + json })
        EXPECT_NE(setFromBytes(bytes).problem, "") << bytes.substr(0, 20);
}

TEST(PolicySetFile, OneThatIsTooLargeIsNotRead)
{
    const std::string path = testing::TempDir() + "large-" + std::to_string(::getpid());
    std::ofstream(path) << "{\n" << std::string((std::size_t { 16 } << 20) + 10, ' ') << "\n}";
    EXPECT_NE(setFromFile(path).problem.find("line 2: it goes on behind 16 MiB"), std::string::npos);
    std::filesystem::remove(path);
    EXPECT_NE(setFromFile(path).problem, "");
}

TEST(PolicySet, ExportResetImportIsTheSameDomainToTheByte)
{
    const support::TemporaryDevice device;
    const phone::PhoneDirectory directory(deviceRoot());
    std::string problem;
    const auto open = [&] { return PolicySession::open(directory, problem); };
    // In no order, with what is no policy between.
    device.write(support::TemporaryDevice::domainFile,
        dictionary({ { "SwipeUpEnabled", boolean(false) },
            { "ALRealBadges", dictionary({ { "z", number(1) }, { "a", real(2) } }) },
            { "ALHiddenApps", array({ "b", "a" }) },
            { "ALCustomBadges", dictionary({ { "z", real(1) }, { "b", number(7) } }) }, { "Somebody's", data("\1\2") },
            { "CustomBlockedApplications/x", emptyArray() } }),
        PropertyListFormat::Binary);
    const auto bytes = [&] { return readFile(support::TemporaryDevice::domainFile).value_or(""); };
    const std::string before = bytes();
    for (const char* const file : { "a.json", "a.plist" }) {
        const Json set = policySetOf(PolicyValues::ofDevice());
        EXPECT_FALSE(set["domain"].contains("ALRealBadges") || set["domain"].contains("Somebody's"));
        {
            const auto session = open();
            wantSet(*session, emptySet(), SetMode::Replace);
            EXPECT_TRUE(session->commit({ .verb = "reset" }).isDone());
        }
        EXPECT_EQ(PolicyValues::ofDevice().domain().size(), 2U);
        EXPECT_NE(bytes(), before);
        const SetReading reading = setFromBytes(bytesOfSet(set, file));
        ASSERT_EQ(reading.problem, "");
        {
            const auto session = open();
            wantSet(*session, reading.set, SetMode::Replace);
            const CommitReport report = session->commit({ .verb = "import" });
            EXPECT_TRUE(report.isDone());
            std::set<std::string> once(report.notifications.begin(), report.notifications.end());
            EXPECT_EQ(once.size(), report.notifications.size());
        }
        EXPECT_EQ(bytes(), before) << file;
        EXPECT_EQ(bytesOfSet(policySetOf(PolicyValues::ofDevice()), ""), bytesOfSet(set, ""));
    }
}

TEST(Audit, NamesWhatIsOdd)
{
    const support::TemporaryDevice device;
    device.writeDomain({ { "ALHiddenApps", array({ "a" }) }, { "ALBlockedLaunchApps", array({ "a", "gone", "b" }) },
        { "ALHidenApps", emptyArray() }, { "kAppearance", number(7) }, { "ALImmortalEnabled", number(1) },
        { "ALMutedNotifications", array({ "b" }) }, { "ALBlockedNotifications", array({ "b" }) },
        { "IsBlockedFromLaunchingOthers/a", boolean(true) }, { "CustomBlockedApplications/a", array({ "b" }) },
        { "CustomBypassedApplications/b", array({ "a" }) }, { "ALImmortalNotifApps", array({ "b" }) } });
    std::multiset<std::string> found;
    for (const Finding& finding : auditOf(PolicyValues::ofDevice(), { { "a", "A" }, { "b", "B" } }))
        found.insert(finding.kind + " " + finding.key + " " + finding.application);
    EXPECT_EQ(found,
        (std::multiset<std::string> { "gone ALBlockedLaunchApps gone", "out-of-range kAppearance ",
            "shadowed ALBlockedLaunchApps a", "shadowed ALMutedNotifications b",
            "shadowed CustomBlockedApplications/a a", "shadowed CustomBlockedApplications/a a",
            "unknown-key ALHidenApps ", "without-effect ALImmortalNotifApps b", "wrong-type ALImmortalEnabled " }));
}

TEST(PolicyWords, EveryKeyIsDescribedAndEveryFeatureHasOne)
{
    for (const appledger::PreferenceKey& key : appledger::preferenceKeys()) {
        EXPECT_NE(keyText(key), "") << key.name;
        EXPECT_FALSE(readersOf(key).empty()) << key.name;
    }
    for (const Feature* const feature : features())
        EXPECT_TRUE(feature->kind == Feature::Kind::MuteFile || appledger::preferenceKey(feature->key)) << feature->key;
    const auto readers = [](std::string_view key) { return readersOf(*appledger::preferenceKey(key)); };
    EXPECT_EQ(readers("ALBlockedLaunchApps"), (std::vector<std::string> { "SpringBoard", "Spotlight" }));
    EXPECT_EQ(readers("ALHiddenApps"), std::vector<std::string> { "SpringBoard" });
    EXPECT_EQ(readers("ALBlockedUpdateApps").size(), 4U);
}

TEST(PolicyWords, ValuesAreReadOneWayOnly)
{
    const std::pair<const char*, std::optional<double>> parts[] { { "0.8", 0.8 }, { "80%", 0.8 }, { "80 %", 0.8 },
        { "0", 0.0 }, { "100%", 1.0 }, { "1", 1.0 }, { "80", {} }, { "101%", {} }, { "-0.1", {} }, { "nan", {} },
        { "", {} }, { "%", {} }, { "0.8x", {} } };
    for (const auto& [text, part] : parts)
        EXPECT_EQ(parsePart(text), part) << text;
    const std::pair<const char*, std::optional<double>> times[] { { "5m", 300.0 }, { "90s", 90.0 }, { "90", 90.0 },
        { "1.5h", 5400.0 }, { "2d", 172800.0 }, { "0m", {} }, { "-1m", {} }, { "367d", {} }, { "m", {} },
        { "5 m", {} } };
    for (const auto& [text, seconds] : times)
        EXPECT_EQ(parseDuration(text), seconds) << text;
}

TEST(ApplicationNames, AreTheIdentifierTheNameOrAPartThatNoOtherHas)
{
    const std::vector<KnownApplication> known { { "com.example.notes", "Scribbles" },
        { "com.example.mail", "Letterbox" }, { "com.example.a", "Mail" }, { "com.example.b", "Mail Box" },
        { "com.example.c", "Corner Shop" } };
    const std::pair<const char*, const char*> cases[] { { "com.example.notes", "com.example.notes" },
        { "scribbles", "com.example.notes" }, { "ribb", "com.example.notes" }, { "MAIL", "com.example.a" },
        { "mail b", "com.example.b" }, { "box", "?" }, { "s", "s" }, { "com.example.none", "com.example.none" } };
    for (const auto& [word, meant] : cases) {
        const MeantApplication found = meantApplication(known, word);
        EXPECT_EQ(found.problem.empty() ? found.identifier : "?", meant) << word;
    }
    EXPECT_NE(
        meantApplication(known, "com.exmple.notes").note.find("Scribbles (com.example.notes)"), std::string::npos);
    EXPECT_EQ(nearest("ALHidenApp", { "ALHiddenApps", "ALImmortalNotifApps" }), "ALHiddenApps");
    EXPECT_EQ(nearest("entirely", { "other", "words" }), std::nullopt);
    EXPECT_EQ(distanceBetween("teh", "the"), 1U) << "neighbours that are swapped";
}

} // namespace cli
