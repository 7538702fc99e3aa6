#include "phone/supervisor/supervised_process.h"

#include <csignal>
#include <gtest/gtest.h>

namespace phone {

using namespace std::chrono_literals;

namespace {

/// What waitpid() says of a process that a signal ended, or that ended itself.
constexpr int bySignal(int signal)
{
    return signal;
}
constexpr int byItself(int status)
{
    return status << 8;
}

} // namespace

TEST(SupervisedProcess, ComesUpWithoutLibrariesAfterThreeCrashesInARow)
{
    struct Run {
        std::chrono::seconds length;
        int status;
    };
    const struct {
        const char* what;
        std::vector<Run> runs;
        int crashes;
        bool withoutLibraries;
    } cases[] {
        { "two crashes", { { 1s, bySignal(SIGSEGV) }, { 1s, bySignal(SIGABRT) } }, 2, false },
        { "three", { { 1s, bySignal(SIGSEGV) }, { 0s, bySignal(SIGBUS) }, { 59s, bySignal(SIGABRT) } }, 3, true },
        { "one after a minute counts anew",
            { { 1s, bySignal(SIGSEGV) }, { 1s, bySignal(SIGSEGV) }, { 60s, bySignal(SIGSEGV) } }, 1, false },
        { "so does one behind a long run that was ended",
            { { 1s, bySignal(SIGSEGV) }, { 1s, bySignal(SIGSEGV) }, { 3600s, bySignal(SIGKILL) },
                { 1s, bySignal(SIGSEGV) } },
            1, false },
        { "a long run without them doesn't bring them back",
            { { 1s, bySignal(SIGSEGV) }, { 1s, bySignal(SIGALRM) }, { 1s, bySignal(SIGSEGV) },
                { 60s, bySignal(SIGSEGV) } },
            4, true },
        { "who kills from outside is no crash",
            { { 1s, bySignal(SIGKILL) }, { 1s, bySignal(SIGTERM) }, { 1s, bySignal(SIGKILL) }, { 1s, byItself(1) } }, 0,
            false },
    };
    for (const auto& [what, runs, crashes, withoutLibraries] : cases) {
        SCOPED_TRACE(what);
        SupervisedProcess process { .name = "SpringBoard" };
        SupervisedProcess::Clock::time_point now {};
        for (const Run& run : runs) {
            process.started = now;
            now += run.length;
            process.noteEnd(run.status, now);
        }
        EXPECT_EQ(process.crashes, crashes);
        EXPECT_EQ(process.comesUpWithoutLibraries(), withoutLibraries);
        process.forgetCrashes();
        EXPECT_FALSE(process.comesUpWithoutLibraries());
    }
}

TEST(SupervisedProcess, SaysHowARunEndedAndWithWhichLibraries)
{
    SupervisedProcess process { .name = "Spotlight", .child = { .pid = 7 } };
    EXPECT_EQ(process.noteEnd(byItself(1), {}), "Spotlight (process 7) ended with status 1");
    EXPECT_EQ(process.noteEnd(bySignal(SIGSEGV), {}),
        "Spotlight (process 7) died of signal 11 (Segmentation fault) with no third-party library");
    process.hear("loading /a.dylib\nloading /b.dylib\n");
    EXPECT_EQ(process.noteEnd(bySignal(SIGKILL), {}),
        "Spotlight (process 7) died of signal 9 (Killed) with /a.dylib, /b.dylib");
    process.endIsAskedFor = true;
    EXPECT_EQ(process.noteEnd(bySignal(SIGKILL), {}), "");
    EXPECT_NE(process.noteEnd(bySignal(SIGKILL), {}), "");
}

TEST(SupervisedProcess, HearsAReportHoweverItIsCut)
{
    SupervisedProcess process;
    EXPECT_FALSE(process.hear("load"));
    EXPECT_FALSE(process.hear("ing /Library/a b.dylib\nrea"));
    EXPECT_EQ(process.lastLoaded, "/Library/a b.dylib");
    EXPECT_TRUE(process.hear("dy\n"));
    EXPECT_FALSE(process.hear("ready"));
}

TEST(SupervisedProcess, PausesEverLongerUpToFiveSeconds)
{
    EXPECT_EQ(pauseAfter(0), 0ms);
    for (int failures = 1; failures < 40; ++failures) {
        EXPECT_GE(pauseAfter(failures), pauseAfter(failures - 1)) << failures;
        EXPECT_LE(pauseAfter(failures), 5s) << failures;
    }
    EXPECT_EQ(pauseAfter(1), 20ms);
    EXPECT_EQ(pauseAfter(1'000'000), 5s);
}

} // namespace phone
