#include "support/phone_fixture.h"

#include "phone/springboard/applications/application_process.h"
#include "platform/dispatch/clock.h"
#include "platform/runtime/message.h"
#include "surfaces/auto_clear_decision.h"
#include "surfaces/cache_clear.h"

#include <gtest/gtest.h>

using namespace platform;
using namespace std::chrono_literals;
using support::Phone;
namespace fs = std::filesystem;

namespace {

const std::string notes = "com.example.notes";
const std::string mail = "com.example.mail";
const std::string safari = "com.apple.mobilesafari";
const std::string bare = "com.example.bare"; ///< has no data container

TEST(AutoClearDecision, AnExplicitChoiceWinsAtAnExitAndTheSystemsOwnAreLeftOtherwise)
{
    const std::string_view listed[] { notes, safari };
    const appledger::IdentifierList list { listed };
    using enum appledger::ClearOutcome;
    const struct {
        std::string identifier;
        bool everyApplication;
        appledger::ClearOutcome outcome;
    } cases[] = {
        { notes, false, Listed },
        { safari, false, Listed },
        { safari, true, Listed },
        { mail, false, NotChosen },
        { mail, true, EveryApplication },
        { "com.apple.camera", true, SystemApplication },
        { "com.apple.camera", false, NotChosen },
        { "com.apple", true, EveryApplication },
        { "Com.apple.camera", true, EveryApplication },
    };
    for (const auto& [identifier, everyApplication, outcome] : cases)
        EXPECT_EQ(appledger::decideClearAtExit(identifier, list, everyApplication), outcome) << identifier;
    EXPECT_EQ(appledger::decideClearInSweep(safari), SystemApplication);
    EXPECT_EQ(appledger::decideClearInSweep(notes), EveryApplication);
}

class AutoClear : public testing::Test {
protected:
    AutoClear()
    {
        holdClock();
        phone_.with({ notes, mail, safari, bare });
        for (const std::string& identifier : { notes, mail, safari }) {
            phone_.device.write(container(identifier) + "/.com.apple.mobile_container_manager.metadata.plist",
                dictionary({ { "MCMMetadataIdentifier", string(identifier) } }));
            fill(identifier);
        }
    }

    static std::string container(const std::string& identifier)
    {
        return "/var/mobile/Containers/Data/Application/" + identifier;
    }

    void fill(const std::string& identifier) const
    {
        for (const char* const file : { "Library/Caches/file", "Library/Caches/images/deep/file", "tmp/.hidden" })
            phone_.device.put(container(identifier) + "/" + file, "1");
        phone_.device.put(container(identifier) + "/Documents/kept", "1");
        phone_.device.put(container(identifier) + "/Library/Preferences/kept", "1");
    }

    bool isCleared(const std::string& identifier) const
    {
        const fs::path home = phone_.device.at(container(identifier));
        EXPECT_TRUE(fs::exists(home / "Documents/kept") && fs::exists(home / "Library/Preferences/kept"));
        EXPECT_TRUE(fs::is_directory(home / "Library/Caches") && fs::is_directory(home / "tmp"));
        const bool caches = fs::is_empty(home / "Library/Caches");
        EXPECT_EQ(caches, fs::is_empty(home / "tmp"));
        return caches;
    }

    /// The applications that were cleared since they were last filled; fills them again.
    std::string cleared() const
    {
        runUntilIdle();
        std::string text;
        for (const std::string& identifier : { notes, mail, safari })
            if (isCleared(identifier)) {
                text += identifier + " ";
                fill(identifier);
            }
        return text;
    }

    void wanting(const id& listed, bool everyApplication) const
    {
        phone_.device.writeDomain(
            { { "ALAutoClearCacheApps", listed }, { "GlobalAutoClearCacheEnabled", boolean(everyApplication) } });
    }

    void notify() const
    {
        CFNotificationCenterPostNotification("com.orbelix.appledger.autoclear_changed");
        runUntilIdle();
    }

    void launchAndEnd(const std::string& identifier)
    {
        phone_.enter("tap", { identifier });
        phone::takeJournal();
        EXPECT_TRUE(phone::endProcessOf(identifier));
        EXPECT_EQ(phone::frontmostApplication(), "");
        EXPECT_FALSE(phone::endProcessOf(identifier)) << "it has ended";
        phone_.journal();
        EXPECT_EQ(phone_.heldUpAt(), "");
    }

    std::string clearedByEnding(const std::vector<std::string>& identifiers)
    {
        for (const std::string& identifier : identifiers)
            launchAndEnd(identifier);
        return cleared();
    }

    Phone phone_ { "SpringBoard", "16.0" };
};

TEST_F(AutoClear, AStockPhoneKeepsItsCaches)
{
    wanting(array({ notes }), true);
    phone_.start();
    EXPECT_EQ(clearedByEnding({ notes, mail, safari, bare }), "");
    advanceClock(31s);
    EXPECT_EQ(cleared(), "");
}

TEST_F(AutoClear, ChosenApplicationsAreClearedWhenTheyEnd)
{
    wanting(array({ notes, safari }), false);
    phone_.inject().start();
    EXPECT_EQ(clearedByEnding({ notes, mail, safari, bare }), notes + " " + safari + " ");

    wanting(array({}), true);
    advanceClock(3s);
    EXPECT_EQ(clearedByEnding({ mail }), "") << "decided on the caches of the process";
    notify();
    EXPECT_EQ(clearedByEnding({ notes, mail, safari, bare }), notes + " " + mail + " ");

    wanting(string(notes), false);
    notify();
    advanceClock(3s);
    EXPECT_EQ(clearedByEnding({ notes, mail, safari }), "");
}

TEST_F(AutoClear, AnExitThatIsToldTwiceClearsOnceAndOneThreeSecondsLaterAgain)
{
    wanting(array({ notes, mail }), false);
    phone_.inject().start();
    // Both methods tell of the exit. What is written between the two stays.
    const id process = send<"new">(id(objc_getClass("FBProcess")));
    send<"setBundleIdentifier:", void>(process, string(notes));
    const id manager = send<"sharedInstance">(id(objc_getClass("FBProcessManager")));
    send<"processDidExit:", void>(manager, process);
    EXPECT_EQ(cleared(), notes + " ");
    send<"_processDidExitWithContext:", void>(process, nil);
    EXPECT_EQ(cleared(), "");

    EXPECT_EQ(clearedByEnding({ mail }), mail + " ") << "another application has its own time";
    advanceClock(2'999ms);
    EXPECT_EQ(clearedByEnding({ notes }), "");
    advanceClock(1ms);
    EXPECT_EQ(clearedByEnding({ notes }), notes + " ");
    advanceClock(2s);
    EXPECT_EQ(clearedByEnding({ notes }), "") << "counted from the last clear";

    send<"processDidExit:", void>(manager, nil);
    send<"processDidExit:", void>(manager, send<"new">(id(objc_getClass("FBProcess"))));
    appledger::ALPerformBackgroundCacheClear(nil);
    appledger::ALPerformBackgroundCacheClear(string(""));
    appledger::ALPerformBackgroundCacheClear(string("com.example.unknown"));
    EXPECT_EQ(cleared(), "");
}

TEST_F(AutoClear, OnlyQueuesWorkWhenAProcessEnds)
{
    wanting(array({ notes }), false);
    phone_.inject().start();
    launchAndEnd(notes);
    EXPECT_FALSE(isCleared(notes)) << "nothing was removed on the thread of the hook";
    EXPECT_EQ(cleared(), notes + " ");
}

TEST_F(AutoClear, TheSweepComesHalfAMinuteAfterTheStartAndReadsTheDomainItself)
{
    wanting(array({ notes }), true);
    phone_.inject().start();
    wanting(array({ safari, mail }), false);
    advanceClock(29'999ms);
    EXPECT_EQ(cleared(), "");
    advanceClock(1ms);
    EXPECT_EQ(cleared(), mail + " " + safari + " ") << "listed, whatever their prefix";
    advanceClock(5min);
    EXPECT_EQ(cleared(), "") << "once";
}

TEST_F(AutoClear, TheSweepWithEveryApplicationLeavesTheSystemsOwnThoughTheyAreListed)
{
    wanting(array({ safari }), true);
    phone_.inject().start();
    advanceClock(30s);
    EXPECT_EQ(cleared(), notes + " " + mail + " ");
}

TEST_F(AutoClear, TheSweepPassesOverWhatIsNoIdentifier)
{
    wanting(array({ number(7), string(""), string(bare), string(notes) }), false);
    phone_.inject().start();
    advanceClock(30s);
    EXPECT_EQ(cleared(), notes + " ");
}

TEST_F(AutoClear, TheSweepDoesNothingWithoutAChoice)
{
    phone_.inject().start();
    advanceClock(30s);
    EXPECT_EQ(cleared(), "");
}

TEST_F(AutoClear, ACacheFolderThatIsALinkLeadsOutOfNoContainer)
{
    wanting(array({ notes }), false);
    phone_.inject().start();
    const fs::path caches = phone_.device.at(container(notes)) / "Library/Caches";
    fs::remove_all(caches);
    fs::create_symlink(phone_.device.at(container(mail)) / "Library/Caches", caches);
    launchAndEnd(notes);
    runUntilIdle();
    EXPECT_FALSE(isCleared(mail));
    EXPECT_TRUE(fs::is_empty(phone_.device.at(container(notes)) / "tmp"));
}

} // namespace
