#include "support/phone_fixture.h"

#include "platform/foundation/block.h"
#include "platform/runtime/message.h"

#include <gtest/gtest.h>

#include <utility>

using namespace platform;
using support::Phone;
using support::Policies;

namespace {

const std::string notes = "com.example.notes";
const std::string mail = "com.example.mail";

class Spotlight : public testing::Test {
protected:
    /// SpringBoard, which opens what Spotlight asks for, is another process: the test stands in for it.
    Phone& start()
    {
        phone_.start();
        phone::setOpenApplicationHandler([](const phone::OpenRequest& request) {
            phone::journal(phone::JournalEvent::Opened, request.bundleIdentifier);
            return true;
        });
        return phone_;
    }

    /// The roads on which a search result opens, and in brackets those on which it prompts.
    std::string openRoads(const std::string& identifier)
    {
        std::string names;
        for (const phone::SearchRoad& road : phone::searchRoads()) {
            const std::string journal = phone_.enter(road.name, { identifier });
            EXPECT_EQ(phone_.heldUpAt(), journal.starts_with("opened") ? "" : road.method) << road.name;
            if (journal == "opened " + identifier)
                names.append(road.name).append(" ");
            else if (journal == "prompt Spotlight: Authenticate to open this app.")
                names.append("(").append(road.name).append(") ");
            else
                EXPECT_EQ(journal, "") << road.name << ": neither haptic nor reason";
        }
        return names;
    }

    Phone phone_ { "Spotlight", "16.0" };
};

constexpr const char* all = "spotlight spotlight-port spotlight-workspace ";
constexpr const char* allPrompt = "(spotlight) (spotlight-port) (spotlight-workspace) ";

TEST_F(Spotlight, OpensEverythingOnAStockPhone)
{
    phone_.wanting({ { notes }, { notes }, { notes } });
    start();
    EXPECT_EQ(openRoads(notes), all);
}

TEST_F(Spotlight, StopsByItsTwoListsAndKnowsNoHiddenApplications)
{
    phone_.inject();
    start();
    const std::pair<Policies, std::string> cases[] = {
        { {}, all },
        { { .blocked = { mail } }, all },
        { { .blocked = { notes } }, "" },
        { { .requireAuth = { notes } }, allPrompt },
        { { .requireAuth = { notes }, .authenticated = notes }, all },
        { { .requireAuth = { notes }, .blocked = { notes }, .authenticated = notes }, "" },
    };
    for (const auto& [policies, expected] : cases) {
        phone_.wanting(policies);
        appledger::reload(appledger::policy::blockedLaunch);
        appledger::reload(appledger::policy::requireAuth);
        EXPECT_EQ(openRoads(notes), expected) << "case " << (&policies - &cases[0].first);
    }
}

TEST_F(Spotlight, DecidesOnWhatItReadAtItsLoad)
{
    phone_.wanting({ .requireAuth = { mail }, .blocked = { notes }, .hidden = { "com.example.hidden" } }).inject();
    start();
    EXPECT_EQ(openRoads(notes), "");
    EXPECT_EQ(openRoads(mail), allPrompt);
    EXPECT_EQ(openRoads("com.example.hidden"), all) << "the list of hidden applications isn't read here";
    phone_.wanting({ .blocked = { "com.example.hidden" } }).notify();
    EXPECT_EQ(openRoads(notes), "");
    EXPECT_EQ(openRoads(mail), allPrompt);
    EXPECT_EQ(openRoads("com.example.hidden"), all) << "neither the file nor a notification changes it";
}

TEST_F(Spotlight, AnswersFalseAndCallsNoCompletionWhenItStops)
{
    phone_.wanting({ .blocked = { notes } }).inject();
    start();
    std::string completions;
    const id completion = block([&](const id& failure) { completions += failure ? "error " : "done "; });
    const id service = send<"sharedInstance">(id(objc_getClass("FBSOpenApplicationService")));
    const id workspace = send<"defaultWorkspace">(id(objc_getClass("LSApplicationWorkspace")));
    const auto open = [&](const id& identifier) {
        send<"openApplication:withOptions:completion:", void>(service, identifier, nil, completion);
        send<"openApplication:withOptions:clientPort:completion:", void>(service, identifier, nil, 0U, completion);
        const bool answer = send<"openApplicationWithBundleID:", bool>(workspace, identifier);
        return std::exchange(completions, {}) + (answer ? "true" : "false");
    };
    EXPECT_EQ(open(string(notes)), "false");
    EXPECT_EQ(open(string(mail)), "done done true");
    EXPECT_EQ(open(number(7)), "error error false");
    EXPECT_EQ(open(nil), "error error false");
    EXPECT_EQ(phone_.journal(), "opened com.example.mail | opened com.example.mail | opened com.example.mail");
}

} // namespace
