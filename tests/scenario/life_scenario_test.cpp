#include "scenario/command.h"

#include <chrono>
#include <csignal>
#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <sys/stat.h>

/// A phone's life: up, down, and what it survives.

namespace scenario {

namespace {

constexpr const char* processes[] { "SpringBoard", "Spotlight", "AppStore", "appstored", "itunesstored" };

void write(const std::string& path, const std::string& content)
{
    std::ofstream(path, std::ios::binary) << content;
}

std::string read(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return { std::istreambuf_iterator<char>(file), {} };
}

std::string propertyList(const std::string& root)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\">" + root + "</plist>";
}

/// Asks until every process runs, for five seconds at most; the last answer.
Json statusOnceAllRun(const Phone& phone)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds { 5 };
    while (true) {
        const Outcome outcome = phone.run({ "phone", "status", "--json" });
        const Json status = Json::parse(outcome.output, nullptr, false);
        bool all = outcome.status == 0;
        if (all)
            for (const Json& process : status["processes"])
                all = all && process["running"] == true && !process["injected"].empty();
        if (all || std::chrono::steady_clock::now() > deadline)
            return status;
    }
}

} // namespace

TEST(LifeScenario, UpDownAndTheirRefusals)
{
    const Phone phone;
    EXPECT_EQ(phone.run({ "phone", "status" }).status, 1);
    EXPECT_EQ(phone.run({ "phone", "down" }).status, 1);
    EXPECT_EQ(phone.run({ "phone", "tap", "com.example.notes" }).status, 1);
    phone.answer({ "phone", "up" });
    const Outcome second = phone.run({ "phone", "up" });
    EXPECT_EQ(second.status, 1);
    EXPECT_NE(second.errors.find("is up already"), std::string::npos) << second.errors;
    phone.answer({ "phone", "tap", "com.example.none" }, 1);
    phone.answer({ "phone", "kill", "backboardd" }, 1);
    phone.answer({ "phone", "down" });
    EXPECT_EQ(phone.run({ "phone", "status" }).status, 1);
    EXPECT_EQ(phone.run({ "phone", "up", "--ios", "11" }).status, 2);
    EXPECT_EQ(phone.run({ "phone" }).status, 2);
}

TEST(LifeScenario, TwoPhonesRunSideBySide)
{
    const Phone one;
    const Phone other;
    one.answer({ "phone", "up" });
    other.answer({ "phone", "up", "--stock" });
    one.answer({ "policy", "add", "ALBlockedLaunchApps", "com.example.notes" });
    EXPECT_EQ(one.answer({ "phone", "tap", "com.example.notes" })["opened"], Json::array());
    EXPECT_EQ(other.answer({ "phone", "tap", "com.example.notes" })["opened"].size(), 1U);
}

TEST(LifeScenario, AKilledProcessIsBackWithTheLibrary)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    for (const std::string process : processes) {
        const int before = phone.pid(process);
        const Json back = phone.answer({ "phone", "kill", process });
        EXPECT_NE(back["pid"], before) << process;
    }
    const Json status = statusOnceAllRun(phone);
    for (const Json& process : status["processes"]) {
        EXPECT_EQ(process["restarts"], 1);
        EXPECT_EQ(process["injected"].size(), 1U) << process["name"];
    }
}

TEST(LifeScenario, KillsAtAnyMomentLoseNoPreference)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    std::mt19937 random(20260);
    std::vector<std::string> written;
    for (int round = 0; round < 20; ++round) {
        const Json status = phone.answer({ "phone", "status" });
        const int victim = status["processes"][random() % std::size(processes)]["pid"];
        if (victim > 0)
            ::kill(victim, SIGKILL);
        written.push_back("com.example.application" + std::to_string(round));
        // The clear notification has whichever process comes first write to the domain too.
        phone.answer({ "policy", "set", "ALLastModifiedIconBundleID", written.back() });
        phone.answer({ "policy", "add", "ALHiddenApps", written.back() });
    }
    const Json status = statusOnceAllRun(phone);
    for (const Json& process : status["processes"])
        EXPECT_EQ(process["injected"].size(), 1U) << process.dump();
    EXPECT_EQ(phone.answer({ "policy", "list" })["policies"]["ALHiddenApps"], Json(written));
}

TEST(LifeScenario, ThePhoneOutlivesItsBusAndGoesWithItsSupervisor)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    const int springBoard = phone.pid("SpringBoard");
    const int supervisor = phone.answer({ "phone", "status" })["supervisor"];
    const Outcome bus = runProgram({ "/usr/bin/pkill", "-KILL", "-P", std::to_string(supervisor), "dbus-daemon" });
    ASSERT_EQ(bus.status, 0) << bus.errors;
    const Json status = statusOnceAllRun(phone);
    EXPECT_NE(status["processes"][0]["pid"], springBoard);
    EXPECT_EQ(phone.answer({ "phone", "tap", "com.example.notes" })["opened"].size(), 1U);

    ::kill(supervisor, SIGKILL);
    while (::kill(supervisor, 0) == 0) { }
    EXPECT_EQ(phone.run({ "phone", "status" }).status, 1);
    phone.answer({ "phone", "up" });
    EXPECT_EQ(phone.answer({ "phone", "tap", "com.example.notes" })["opened"].size(), 1U);
}

TEST(LifeScenario, ADamagedDomainReadsAsEmptyOnThePhoneAndIsNotTouched)
{
    const std::pair<const char*, std::string> cases[] {
        { "empty", "" },
        { "not a property list", "AppLedger" },
        { "truncated", std::string("bplist00\xD1\x01\x02", 11) },
        { "wrong root type", propertyList("<array><string>com.example.notes</string></array>") },
        { "wrong types",
            propertyList("<dict><key>ALBlockedLaunchApps</key><string>com.example.notes</string><key>ALHiddenApps</key>"
                         "<array><integer>7</integer><array/></array><key>ALImmortalEnabled</key><dict/></dict>") },
    };
    const Phone phone;
    phone.answer({ "policy", "add", "ALBlockedLaunchApps", "com.example.notes" });
    phone.answer({ "phone", "up" });
    for (const auto& [what, content] : cases) {
        SCOPED_TRACE(what);
        write(phone.preferenceFile(), content);
        phone.answer({ "phone", "respring" });
        EXPECT_EQ(phone.answer({ "phone", "tap", "com.example.notes" })["opened"].size(), 1U);
        phone.answer({ "policy", "list" }, what == std::string_view("wrong types") ? 0 : 1);
        EXPECT_EQ(read(phone.preferenceFile()), content);
    }
}

TEST(LifeScenario, AHostileIdentifierIsAnsweredLikeAnyOther)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    for (const std::string& identifier : { std::string("../../x"), std::string(10000, 'a'), std::string("\xFF\xFE"),
             std::string("a/b"), std::string("line\nbreak"), std::string("%s%n") }) {
        SCOPED_TRACE(identifier.substr(0, 20));
        for (const char* verb : { "tap", "open", "quick-action", "switcher" })
            phone.answer({ "phone", verb, identifier }, 1);
        phone.answer({ "phone", "spotlight", identifier });
        phone.answer({ "policy", "set", "ALLastModifiedIconBundleID", identifier });
        for (const std::string& key : { std::string("ALHiddenApps"), "CustomBlockedApplications/" + identifier }) {
            phone.answer({ "policy", "add", key, identifier });
            EXPECT_EQ(phone.answer({ "policy", "show", identifier })["policies"].size(), 1U) << key.substr(0, 40);
            phone.answer({ "policy", "remove", key, identifier });
            phone.answer({ "policy", "unset", key });
        }
    }
    EXPECT_EQ(statusOnceAllRun(phone)["processes"].size(), std::size(processes));
    struct stat information { };
    EXPECT_NE(::stat((phone.root() + "/../x").c_str(), &information), 0);
    EXPECT_NE(::stat((phone.root() + "/../../x").c_str(), &information), 0);
}

} // namespace scenario
