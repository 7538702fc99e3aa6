#include "scenario/command.h"

#include <gtest/gtest.h>

/// The store, from the command to the processes in which its purchases begin.

namespace scenario {

namespace {

constexpr const char* notes = "com.example.notes";
constexpr const char* mail = "com.example.mail";

const std::vector<std::string> everyRoad { "request", "jobs", "purchase", "software", "purchases" };

Json buy(const Phone& phone, const std::string& road)
{
    return phone.answer({ "phone", "store", "buy", notes, mail, "--road", road });
}

/// "com.example.notes" → whether the store shows an update of it.
Json shown(const Phone& phone, const std::string& process)
{
    Json availability = Json::object();
    const Json report = phone.answer({ "phone", "store", "updates", "--process", process });
    for (const Json& update : report["updates"]) {
        EXPECT_EQ(update["isUpdateAvailable"], update["updateAvailable"]);
        EXPECT_EQ(update["newestVersion"].is_string(), update["isUpdateAvailable"]);
        availability[update["application"].get<std::string>()] = update["isUpdateAvailable"];
    }
    return availability;
}

} // namespace

TEST(StoreScenario, AnUpdateThatIsBlockedWhileTheStoreRunsIsRefusedAtTheNextCall)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    for (const std::string& road : everyRoad)
        EXPECT_EQ(buy(phone, road)["kept"], Json({ notes, mail })) << road;

    phone.answer({ "policy", "add", "ALBlockedUpdateApps", notes });
    for (const std::string& road : everyRoad) {
        const Json report = buy(phone, road);
        EXPECT_EQ(report["kept"], Json::array({ mail })) << road;
        EXPECT_EQ(report["refused"], Json::array({ notes })) << road;
        EXPECT_EQ(report["reachedStore"], true) << road;
    }
    for (const char* const process : { "AppStore", "appstored", "itunesstored", "SpringBoard" }) {
        const Json availability = shown(phone, process);
        EXPECT_EQ(availability[notes], false) << process;
        EXPECT_EQ(availability[mail], true) << process;
    }
    const Json refused = phone.answer({ "phone", "store", "buy", notes, "--road", "jobs", "--process", "appstored" });
    EXPECT_EQ(refused["completions"], Json::parse(R"([[false,
        {"domain": "ASDErrorDomain", "code": 500, "text": "Blocked by AppLedger"}]])"));
    EXPECT_EQ(refused["reachedStore"], false);
    EXPECT_EQ(phone.answer({ "phone", "store", "buy", notes })["requestExists"], false);

    phone.answer({ "policy", "remove", "ALBlockedUpdateApps", notes });
    for (const std::string& road : everyRoad)
        EXPECT_EQ(buy(phone, road)["refused"], Json::array()) << road;
    EXPECT_EQ(shown(phone, "AppStore")[notes], true);
}

TEST(StoreScenario, AStockPhoneBuysAndAProcessWithoutTheRoadSaysSo)
{
    const Phone phone;
    phone.answer({ "phone", "up", "--stock" });
    phone.answer({ "policy", "add", "ALBlockedUpdateApps", notes });
    for (const std::string& road : everyRoad)
        EXPECT_EQ(buy(phone, road)["refused"], Json::array()) << road;
    phone.answer({ "phone", "store", "buy", notes, "--road", "software", "--process", "appstored" }, 1);
    phone.answer({ "phone", "store", "updates", "--process", "Spotlight" }, 1);
}

TEST(StoreScenario, ExplainSaysWhatTheRoadsWouldDo)
{
    const Phone phone; // not up
    phone.answer({ "policy", "add", "ALBlockedUpdateApps", notes });
    const Json all = phone.answer({ "explain", "purchases", notes, mail })["roads"];
    EXPECT_EQ(all.size(), 4 * 2 + 4U) << "a road without a list is explained for each";
    const Json jobs = phone.answer({ "explain", "purchases", notes, mail, "--road", "jobs" })["roads"];
    ASSERT_EQ(jobs.size(), 1U);
    EXPECT_EQ(jobs[0]["outcome"], "shrink");
    EXPECT_EQ(jobs[0]["refused"], Json::array({ notes }));
    phone.answer({ "explain", "purchases", notes, "--road", "nowhere" }, 2);
}

} // namespace scenario
