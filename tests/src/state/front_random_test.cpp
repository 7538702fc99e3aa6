#include "front_fixture.h"

#include <cstdlib>
#include <filesystem>
#include <random>
#include <set>

using namespace platform;
using namespace std::chrono_literals;
using support::FrontPhone;

namespace {

/// What the tables say, with nothing queued.
struct Model {
    std::set<std::string> muted;
    std::map<std::string, double> levels;
    std::set<std::string> awake;

    double volume = 0.8;
    std::optional<double> volumeBefore {};
    std::string lastForVolume {};

    double brightness = 0.6;
    std::optional<double> brightnessBefore {};
    std::string lastForBrightness {};

    bool held = false;
    std::string lastForIdleTimer {};

    void front(const std::string& application)
    {
        lastForVolume = lastForBrightness = lastForIdleTimer = application;
        if (muted.contains(application) != volumeBefore.has_value())
            volumeBefore ? restoreVolume() : mute();
        if (const auto level = levels.find(application); level != levels.end()) {
            if (!brightnessBefore)
                brightnessBefore = brightness;
            brightness = level->second;
        } else {
            restoreBrightness();
        }
        held = awake.contains(application);
    }

    void leave(const std::string& application)
    {
        if (volumeBefore && application == lastForVolume) {
            restoreVolume();
            lastForVolume.clear();
        }
        if (brightnessBefore && application == lastForBrightness) {
            restoreBrightness();
            lastForBrightness.clear();
        }
        if (held && application == lastForIdleTimer) {
            held = false;
            lastForIdleTimer.clear();
        }
    }

    void nothingInFront()
    {
        for (const std::string& last : { lastForVolume, lastForBrightness, lastForIdleTimer })
            leave(std::string(last));
    }

    std::string state() const
    {
        return phone::levelText(volume) + " " + phone::levelText(brightness) + (held ? " AppLedger_KeepAwake" : "");
    }

private:
    void mute()
    {
        volumeBefore = volume > 0.01 ? volume : 0.5;
        volume = 0;
    }
    void restoreVolume()
    {
        volume = *volumeBefore;
        volumeBefore.reset();
    }
    void restoreBrightness()
    {
        if (brightnessBefore)
            brightness = *brightnessBefore;
        brightnessBefore.reset();
    }
};

} // namespace

#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)
constexpr int events = 10'000; // one thread's work, ten times slower to watch
#else
constexpr int events = 100'000;
#endif

TEST(FrontApplication, EndsWhereTheTablesSayAfterVeryManyEvents)
{
    // The levels are written to the device at nearly every event: a disk would be most of this test.
    if (std::filesystem::is_directory("/dev/shm"))
        ::setenv("TMPDIR", "/dev/shm", 1);
    // 0, or with --gtest_shuffle another at each run.
    const unsigned seed = testing::UnitTest::GetInstance()->random_seed();
    SCOPED_TRACE("seed " + std::to_string(seed));
    FrontPhone phone({ .muted = { "a", "b" },
        .brightness = { { "b", 0.25 }, { "c", 0.75 }, { "d", 0.0 } },
        .keptAwake = { "a", "d", "e" } });
    Model model { { "a", "b" }, { { "b", 0.25 }, { "c", 0.75 }, { "d", 0.0 } }, { "a", "d", "e" } };
    std::mt19937 random(seed);
    const auto upTo = [&random](unsigned limit) { return std::uniform_int_distribution<unsigned>(0, limit)(random); };
    for (int count = 0; count < events; ++count) {
        const std::string application(1, static_cast<char>('a' + upTo(5)));
        switch (upTo(9)) {
        case 0:
        case 1:
        case 2:
            FrontPhone::visibility(application, 2);
            model.front(application);
            break;
        case 3:
        case 4:
        case 5:
            FrontPhone::visibility(application, 1);
            model.leave(application);
            break;
        case 6:
        case 7:
            FrontPhone::display(application);
            model.front(application);
            break;
        case 8:
            FrontPhone::display("");
            model.nothingInFront();
            break;
        default:
            model.volume = upTo(4) / 4.0;
            phone::turnVolumeTo(model.volume);
            model.brightness = upTo(4) / 4.0;
            phone::turnBrightnessTo(model.brightness);
        }
        ASSERT_EQ(phone.state(std::chrono::milliseconds { upTo(200) }), model.state()) << "event " << count;
    }
}
