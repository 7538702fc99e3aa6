#include "scenario/command.h"
#include "scenario/mortal_phone.h"

#include <chrono>
#include <fstream>
#include <gtest/gtest.h>
#include <poll.h>

/// Names and badges of the owner's choice on a phone of real processes, and what a SpringBoard leaves that is killed
/// between any two steps of choosing one.

namespace scenario {

namespace {

constexpr const char* notes = "com.example.notes";
constexpr const char* mail = "com.example.mail";

std::string textOf(const Json& report)
{
    return "shown " + report["shown"].dump() + ", custom " + report["custom"].dump() + ", real "
        + report["real"].dump();
}

std::string badges(const Phone& phone, const char* application = notes, const std::string& choice = "")
{
    std::vector<std::string> words { "app", "badge", application };
    if (!choice.empty())
        words.push_back(choice);
    return textOf(phone.answer(words));
}

void push(const Phone& phone, const char* application, const char* badge)
{
    phone.answer({ "phone", "push", application, "--badge", badge });
}

bool flagStands(const Phone& phone)
{
    return phone.answer({ "policy", "list" })["policies"].value("ALIsPanelModifying", Json(false)) == true;
}

/// What is drawn under and on the icon whose label is that.
bool isDrawn(const Phone& phone, const std::string& text)
{
    return phone.answer({ "phone", "describe" })["screen"].get<std::string>().find('"' + text + '"')
        != std::string::npos;
}

bool answersWithin(const Phone& phone, std::chrono::seconds limit)
{
    const auto end = std::chrono::steady_clock::now() + limit;
    while (phone.run({ "app", "badge", notes }).status != 0) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        ::poll(nullptr, 0, 10);
    }
    return true;
}

} // namespace

TEST(BadgeScenario, TheOwnersBadgeStaysAndTheApplicationsComesBack)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    EXPECT_EQ(badges(phone), "shown null, custom null, real null");
    push(phone, notes, "9");
    EXPECT_TRUE(isDrawn(phone, "9"));
    EXPECT_EQ(badges(phone, notes, "21"), "shown 21, custom 21, real 9");
    EXPECT_TRUE(isDrawn(phone, "21"));
    phone.answer({ "phone", "push", notes, "--badge-text", "New" });
    EXPECT_EQ(badges(phone), "shown 21, custom 21, real \"New\"");
    EXPECT_EQ(badges(phone, notes, "42"), "shown 42, custom 42, real \"New\"");
    EXPECT_TRUE(isDrawn(phone, "42"));
    phone.answer({ "phone", "respring" });
    EXPECT_EQ(badges(phone), "shown 42, custom 42, real \"New\"");
    EXPECT_EQ(badges(phone, notes, "clear"), "shown 0, custom 0, real \"New\"");
    EXPECT_FALSE(isDrawn(phone, "42"));
    EXPECT_FALSE(isDrawn(phone, "New"));
    EXPECT_EQ(badges(phone, notes, "default"), "shown \"New\", custom null, real \"New\"");
    EXPECT_TRUE(isDrawn(phone, "New"));
    for (const char* const badge : { "many", "1.5", "9223372036854775808", "" })
        EXPECT_EQ(phone.run({ "app", "badge", notes, badge }).status, 2) << badge;
    phone.answer({ "app", "badge", "com.example.gone", "3" }, 1);
    EXPECT_EQ(badges(phone), "shown \"New\", custom null, real \"New\"");
}

TEST(NameScenario, TheOwnersNameShowsAtOnceAndUntilItIsTakenBack)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    EXPECT_TRUE(isDrawn(phone, "Scribbles"));
    for (const char* const back : { "--default", "" }) {
        EXPECT_EQ(phone.answer({ "app", "rename", notes, "Zettel ü" })["name"], "Zettel ü");
        EXPECT_TRUE(isDrawn(phone, "Zettel ü"));
        EXPECT_FALSE(isDrawn(phone, "Scribbles"));
        phone.answer({ "phone", "respring" });
        EXPECT_TRUE(isDrawn(phone, "Zettel ü"));
        phone.answer({ "policy", "add", "ALImmortalLockedApps", notes });
        EXPECT_EQ(phone.answer({ "app", "show", notes })["record"]["name"], "Zettel ü🔒");
        phone.answer({ "policy", "remove", "ALImmortalLockedApps", notes });
        EXPECT_EQ(phone.answer({ "app", "rename", notes, back })["name"], "Scribbles");
        EXPECT_TRUE(isDrawn(phone, "Scribbles"));
    }
    EXPECT_EQ(phone.run({ "app", "rename", notes }).status, 2);
    EXPECT_EQ(phone.run({ "app", "rename", notes, "A", "--default" }).status, 2);
    phone.answer({ "app", "rename", "com.example.gone", "A" }, 1);
}

TEST(BadgeScenario, AStockPhoneShowsTheApplicationsOwn)
{
    const Phone phone;
    phone.answer({ "policy", "set", "ALCustomBadges", R"({"com.example.notes":21})" });
    phone.answer({ "phone", "up", "--stock" });
    push(phone, notes, "9");
    EXPECT_TRUE(isDrawn(phone, "9"));
    EXPECT_EQ(phone.answer({ "app", "badge", notes }, 1)["error"], "SpringBoard runs without the library");
    EXPECT_FALSE(phone.answer({ "policy", "list" })["policies"].contains("ALRealBadges"));
    phone.answer({ "phone", "down" });
    phone.answer({ "phone", "up" });
    EXPECT_EQ(badges(phone), "shown 21, custom 21, real 9") << "recorded as soon as the library is there";
}

namespace {

struct Death {
    const char* choice; ///< of what SpringBoard is killed in
    const char* moment;
    const char* left;
    bool flagStands;
};

constexpr Death deaths[] {
    { "2", "before 1", "shown 9, custom null, real 9", false },
    { "2", "after 1", "shown 9, custom null, real 9", false },
    { "2", "after 2", "shown 9, custom null, real 9", true },
    { "2", "before 3", "shown 9, custom null, real 9", true },
    { "2", "after 3", "shown 9, custom null, real 9", false },
    { "2", "after 4", "shown 2, custom 2, real 9", false },
    { "default", "before 1", "shown 6, custom 6, real 9", false },
    { "default", "after 1", "shown 9, custom null, real 9", false },
    { "default", "after 2", "shown 9, custom null, real 9", true },
    { "default", "before 3", "shown 9, custom null, real 9", true },
    { "default", "after 3", "shown 9, custom null, real 9", false },
};

void PrintTo(const Death& death, std::ostream* out)
{
    *out << death.choice << ", " << death.moment;
}

} // namespace

/// Each death in a test of its own: a phone of processes that are watched takes its time to start.
class KilledSpringBoard : public testing::TestWithParam<Death> { };

TEST_P(KilledSpringBoard, LosesNothingThatWasRecorded)
{
    const auto& [choice, moment, left, flag] = GetParam();
    const Phone phone;
    const std::string file = phone.root() + "/moment";
    startMortal(phone, file, "com.merrowlane.appledger.plist");
    push(phone, mail, "4");
    badges(phone, mail, "3");
    push(phone, notes, "9");
    if (std::string(choice) == "default")
        badges(phone, notes, "6");
    else
        phone.answer({ "policy", "set", "ALRealBadges", R"({"com.example.mail":4})" }); // so that it is seeded
    const int springBoard = phone.pid("SpringBoard");
    std::ofstream(file) << moment;
    phone.answer({ "app", "badge", notes, choice }, 1);
    ASSERT_TRUE(answersWithin(phone, std::chrono::seconds(20)));
    EXPECT_NE(phone.pid("SpringBoard"), springBoard);
    EXPECT_EQ(badges(phone), left);
    EXPECT_EQ(badges(phone, mail), "shown 3, custom 3, real 4");
    EXPECT_EQ(flagStands(phone), flag);

    push(phone, notes, "7");
    const bool isOwn = std::string(left).find("custom null") == std::string::npos;
    const std::string real = flag ? "9" : "7";
    const std::string custom = std::string(choice) == "2" ? "2" : "6";
    EXPECT_EQ(badges(phone),
        isOwn ? "shown " + custom + ", custom " + custom + ", real 7" : "shown 7, custom null, real " + real);
    EXPECT_EQ(badges(phone, notes, "5"), "shown 5, custom 5, real " + real);
    EXPECT_FALSE(flagStands(phone));
    push(phone, notes, "8");
    EXPECT_EQ(badges(phone), "shown 5, custom 5, real 8");
    EXPECT_EQ(badges(phone, notes, "default"), "shown 8, custom null, real 8");
    EXPECT_EQ(badges(phone, mail), "shown 3, custom 3, real 4");
}

INSTANTIATE_TEST_SUITE_P(BadgeScenario, KilledSpringBoard, testing::ValuesIn(deaths));

} // namespace scenario
