#include "platform/graphics/bitmap.h"
#include "scenario/command.h"
#include "scenario/mortal_phone.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <poll.h>
#include <set>
#include <sstream>

/// Pictures of the owner's choice on a phone of real processes.

namespace scenario {

namespace {

constexpr const char* notes = "com.example.notes";
constexpr std::uint32_t green = 0xFF00FF00;
constexpr std::uint32_t blue = 0xFF0000FF;

/// Each surface with the process that has it.
constexpr std::pair<const char*, const char*> surfaces[] { { "home", "SpringBoard" },
    { "home-generated", "SpringBoard" }, { "home-unmasked", "SpringBoard" }, { "contents", "SpringBoard" },
    { "displayed", "SpringBoard" }, { "banner", "SpringBoard" }, { "image", "SpringBoard" }, { "image", "Spotlight" },
    { "image", "AppStore" }, { "proxy", "Spotlight" }, { "search", "Spotlight" }, { "search-later", "Spotlight" } };

std::string contentOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return { std::istreambuf_iterator<char>(file), {} };
}

std::string plainPicture(const Phone& phone, std::uint32_t color, int width = 120, int height = 80)
{
    platform::Bitmap bitmap = *platform::Bitmap::make(width, height);
    std::fill(bitmap.pixels.begin(), bitmap.pixels.end(), color);
    std::string path = phone.root() + "/picture-" + std::to_string(color) + ".png";
    std::ofstream(path, std::ios::binary) << platform::encodePng(bitmap);
    return path;
}

std::uint32_t middleOf(const std::string& png)
{
    const auto bitmap = platform::decodePicture(png);
    if (!bitmap)
        return 0;
    return bitmap->pixels[static_cast<std::size_t>(bitmap->height / 2) * static_cast<std::size_t>(bitmap->width)
        + static_cast<std::size_t>(bitmap->width / 2)];
}

std::uint32_t shown(const Phone& phone, const std::string& surface, const std::string& process,
    const std::string& application = notes, const std::string& size = "60")
{
    const std::string file = phone.root() + "/rendered.png";
    phone.answer(
        { "icon", "render", application, "--surface", surface, "--process", process, "--size", size, "-o", file });
    return middleOf(contentOf(file));
}

std::string iconFile(const Phone& phone, const std::string& identifier = notes)
{
    return phone.root() + "/var/mobile/Library/Preferences/AppLedgerIcons/" + identifier + ".png";
}

std::string screenOf(const Phone& phone, const std::string& process)
{
    const std::string file = phone.root() + "/screen.png";
    phone.answer({ "phone", "screenshot", file, "--scale", "1", "--process", process });
    return contentOf(file);
}

/// How many pixels of the screen have that very colour.
std::ptrdiff_t countOf(std::uint32_t color, const std::string& png)
{
    const auto bitmap = platform::decodePicture(png);
    return bitmap ? std::count(bitmap->pixels.begin(), bitmap->pixels.end(), color) : 0;
}

} // namespace

TEST(IconScenario, AChangeShowsOnEverySurfaceOfEveryProcess)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    for (const auto& [surface, process] : surfaces)
        EXPECT_NE(shown(phone, surface, process), green) << surface << " in " << process;

    const Json set = phone.answer({ "icon", "set", notes, plainPicture(phone, green) });
    EXPECT_EQ(set["bytes"], std::filesystem::file_size(iconFile(phone)));
    EXPECT_EQ(phone.answer({ "icon", "list" })["icons"],
        Json::array({ { { "application", notes }, { "name", "Scribbles" }, { "width", 80 }, { "height", 80 },
            { "bytes", set["bytes"] } } }));

    // One process took the name and bumped its token; the others found none and threw everything away.
    std::set<std::string> heard;
    const Json states = phone.answer({ "icon", "state", notes })["processes"];
    for (const auto& [process, state] : states.items()) {
        heard.insert(process);
        if (state["token"] == "0") {
            EXPECT_LE(state["images"], 3) << process << ": what it has drawn since then at most";
        }
    }
    EXPECT_EQ(heard.size(), 5U);
    for (const auto& [surface, process] : surfaces)
        EXPECT_EQ(shown(phone, surface, process), green) << surface << " in " << process;

    EXPECT_EQ(phone.answer({ "icon", "reset", notes })["hadIcon"], true);
    EXPECT_FALSE(std::filesystem::exists(iconFile(phone)));
    for (const auto& [surface, process] : surfaces)
        EXPECT_NE(shown(phone, surface, process), green) << surface << " in " << process;
    EXPECT_EQ(phone.answer({ "icon", "reset", notes })["hadIcon"], false);
    EXPECT_EQ(phone.answer({ "icon", "list" })["icons"], Json::array());
}

TEST(IconScenario, OneChangeIsOneInvalidationAndElsewhereAFullPurge)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    constexpr int changes = 4;
    for (int change = 0; change < changes; ++change)
        phone.answer({ "icon", "set", notes, plainPicture(phone, change % 2 == 0 ? green : blue) });
    int invalidations = 0;
    const Json states = phone.answer({ "icon", "state", notes })["processes"];
    for (const auto& [process, state] : states.items())
        invalidations += std::stoi(state["token"].get<std::string>());
    // Whoever is first takes the name; two that read it at the same instant both do, and lose nothing by it.
    EXPECT_GE(invalidations, changes);
    EXPECT_LT(invalidations, 5 * changes);
    EXPECT_EQ(shown(phone, "home", "SpringBoard"), blue);
    EXPECT_EQ(shown(phone, "image", "AppStore"), blue);
}

TEST(IconScenario, TheScreensFollowWithoutARestart)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    phone.answer({ "phone", "search", "scrib" });
    phone.answer({ "phone", "push", notes, "--title", "Hello" });
    for (const char* const process : { "SpringBoard", "Spotlight" })
        EXPECT_EQ(countOf(green, screenOf(phone, process)), 0) << process;
    phone.answer({ "icon", "set", notes, plainPicture(phone, green) });
    phone.answer({ "phone", "push", notes, "--title", "Hello" });
    EXPECT_GT(countOf(green, screenOf(phone, "SpringBoard")), 60 * 60 + 38 * 38 - 500) << "Home Screen and banner";
    EXPECT_GT(countOf(green, screenOf(phone, "Spotlight")), 40 * 40 - 200);
    phone.answer({ "phone", "respring" });
    EXPECT_GT(countOf(green, screenOf(phone, "SpringBoard")), 60 * 60 - 300) << "it lasts";
    phone.answer({ "icon", "refresh" });
    EXPECT_GT(countOf(green, screenOf(phone, "SpringBoard")), 60 * 60 - 300);
    phone.answer({ "icon", "reset", notes });
    EXPECT_EQ(countOf(green, screenOf(phone, "Spotlight")), 0);
}

TEST(IconScenario, ARefreshShowsTheIndicatorsSwitchAtOnce)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    phone.answer({ "phone", "tap", notes });
    phone.answer({ "phone", "home" });
    const auto dotIsDrawn = [&] {
        std::istringstream screen(phone.answer({ "phone", "describe" })["screen"].get<std::string>());
        for (std::string line; std::getline(screen, line);)
            if (line.find(", 6 x 6)") != std::string::npos && line.find("hidden") == std::string::npos)
                return true;
        return false;
    };
    EXPECT_FALSE(dotIsDrawn());
    phone.answer({ "policy", "set", "RunningIndicatorEnabled", "true" });
    phone.answer({ "icon", "refresh" });
    EXPECT_TRUE(dotIsDrawn());
    phone.answer({ "policy", "set", "RunningIndicatorEnabled", "false" });
    phone.answer({ "icon", "refresh" });
    EXPECT_FALSE(dotIsDrawn());
}

TEST(IconScenario, WebClipsAreShownAndNothingElseIsGivenAPicture)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    const Json icons = phone.answer({ "phone", "icons" })["icons"];
    std::string clip;
    std::string widget;
    for (const Json& icon : icons) {
        if (icon["name"] == "Bread Log")
            clip = icon["application"];
        if (icon["name"] == "Up Next")
            widget = icon["application"];
    }
    const std::string picture = plainPicture(phone, green);
    phone.answer({ "icon", "set", clip, picture });
    EXPECT_EQ(shown(phone, "home", "SpringBoard", clip), green);
    EXPECT_GT(countOf(green, screenOf(phone, "SpringBoard")), 60 * 60 - 300);
    for (const std::string& identifier : { widget, std::string("com.example.gone"), std::string("../../x") })
        EXPECT_NE(phone.answer({ "icon", "set", identifier, picture }, 1)["error"], "") << identifier;

    // The Clock and the Calendar keep the system's icons on the Home Screen, and have the owner's elsewhere.
    phone.answer({ "icon", "set", "com.apple.mobiletimer", picture });
    EXPECT_NE(shown(phone, "home", "SpringBoard", "com.apple.mobiletimer"), green);
    EXPECT_EQ(shown(phone, "search", "Spotlight", "com.apple.mobiletimer"), green);
}

TEST(IconScenario, APictureThatCantBeTakenIsRefusedWithItsReason)
{
    const Phone phone;
    phone.answer({ "phone", "up" });
    const std::string good = plainPicture(phone, green);
    phone.answer({ "icon", "set", notes, good });
    const std::string kept = contentOf(iconFile(phone));
    const std::string bad = phone.root() + "/bad.png";
    std::ofstream(bad, std::ios::binary) << contentOf(good).substr(0, 60);
    for (const auto& [path, reason] : { std::pair { bad, "is no picture that can be read" },
             std::pair { phone.root() + "/none.png", "No such file" }, std::pair { phone.root(), "it is a folder" },
             std::pair { std::string("/dev/null"), "it isn't a regular file" } })
        EXPECT_NE(
            phone.answer({ "icon", "set", notes, path }, 1)["error"].get<std::string>().find(reason), std::string::npos)
            << path;
    EXPECT_EQ(contentOf(iconFile(phone)), kept);
    EXPECT_EQ(phone.run({ "icon", "render", notes, "--surface", "ceiling", "-o", bad }).status, 2);
    EXPECT_NE(phone.run({ "icon", "render", notes, "--surface", "image", "--size", "33", "-o", bad })
                  .errors.find("20, 29, 38, 40, 60"),
        std::string::npos);
    EXPECT_EQ(phone.run({ "icon", "render", notes, "-o", phone.root() + "/nowhere/x.png" }).status, 1);
    phone.answer({ "phone", "down" });
    EXPECT_EQ(phone.answer({ "icon", "list" })["icons"].size(), 1U) << "with the phone down too";
    phone.answer({ "phone", "up", "--stock" });
    EXPECT_EQ(phone.answer({ "icon", "set", notes, good }, 1)["error"], "SpringBoard runs without the library");
    EXPECT_NE(shown(phone, "home", "SpringBoard"), green);
}

TEST(IconScenario, ASaveThatIsKilledLeavesTheOldPictureOrTheNew)
{
    for (const auto& [moment, left] : { std::pair { "before 1", green }, std::pair { "after 1", blue } }) {
        SCOPED_TRACE(moment);
        const Phone phone;
        const std::string file = phone.root() + "/moment";
        startMortal(phone, file, std::string(notes) + ".png");
        phone.answer({ "icon", "set", notes, plainPicture(phone, green) });
        std::ofstream(file) << moment;
        phone.answer({ "icon", "set", notes, plainPicture(phone, blue) }, 1);
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (phone.run({ "phone", "icons" }).status != 0 && std::chrono::steady_clock::now() < end)
            ::poll(nullptr, 0, 10);
        EXPECT_EQ(middleOf(contentOf(iconFile(phone))), left);
        EXPECT_EQ(shown(phone, "home", "SpringBoard"), left);
        EXPECT_EQ(phone.answer({ "icon", "list" })["icons"].size(), 1U) << "what was begun is no icon";
        phone.answer({ "icon", "set", notes, plainPicture(phone, blue) });
        EXPECT_EQ(shown(phone, "home", "SpringBoard"), blue);
    }
}

} // namespace scenario
