#include "icons/icon_image_info.h"
#include "phone/springboard/icons/icon_list.h"
#include "platform/dispatch/clock.h"
#include "platform/runtime/hook.h"
#include "support/phone_fixture.h"
#include "support/pictures.h"

/// The Home Screen's icons: what the system draws, and what it draws with the owner's pictures.

namespace appledger {

using namespace platform;
using namespace support;

namespace {

const std::string notes = "com.example.notes";
const std::string timer = "com.apple.mobiletimer";
const std::string calendar = "com.apple.mobilecal";
const std::string clip = "0123ABCD";

constexpr SBIconImageInfo usual { { 60, 60 }, 2, 13.5 };

enum class Method { Generate, Unmasked, Image };
constexpr Method methods[] { Method::Generate, Method::Unmasked, Method::Image };

id imageBy(Method method, const id& icon, const SBIconImageInfo& info = usual)
{
    switch (method) {
    case Method::Generate:
        return send<"generateIconImageWithInfo:">(icon, info);
    case Method::Unmasked:
        return send<"unmaskedIconImageWithInfo:">(icon, info);
    case Method::Image:
        return send<"iconImageWithInfo:">(icon, info);
    }
    return nil;
}

class HomeIcons : public testing::TestWithParam<const char*> {
protected:
    HomeIcons()
    {
        holdClock();
        phone_.with({ notes, timer, calendar });
        device().write("/var/mobile/Library/WebClips/" + clip + ".webclip/Info.plist",
            dictionary({ { "Title", string("Tides") } }));
    }

    const TemporaryDevice& device() const { return phone_.device; }

    static id icon(const std::string& identifier)
    {
        return send<"leafIconForIdentifier:">(phone::iconModel(), string(identifier));
    }

    Phone phone_ { "SpringBoard", GetParam() };
};

TEST_P(HomeIcons, AreTheSystemsOnAStockPhone)
{
    phone_.start();
    giveIcon(device(), notes, plainPng(green));
    giveIcon(device(), clip, plainPng(green));
    for (const Method method : methods)
        for (const std::string& identifier : { notes, clip }) {
            const std::string middle = middleOf(imageBy(method, icon(identifier)));
            EXPECT_TRUE(middle != "green" && middle != "nil") << identifier << ": " << middle;
        }
}

TEST_P(HomeIcons, AreTheOwnersUnderTheirKeysUntilTheTokenChanges)
{
    phone_.inject().start();
    const id shown = icon(notes);
    const std::string keys[] { "_gen_60.000000_", "_unmask_60.000000_", "_info_60.000000_" };
    const auto kept = [&](Method method, const std::string& token) {
        return middleOf(ALGetImageCache().objectForKey(notes + keys[static_cast<int>(method)] + token));
    };
    for (const Method method : methods) {
        const std::string systems = middleOf(imageBy(method, shown));
        EXPECT_NE(systems, "green");
        EXPECT_EQ(kept(method, "0"), "nil") << "the system's own image is never kept";
    }
    giveIcon(device(), notes, plainPng(green));
    for (const Method method : methods) {
        EXPECT_EQ(middleOf(imageBy(method, shown)), "green");
        EXPECT_EQ(kept(method, "1"), "green");
        EXPECT_EQ(colorAt(imageBy(method, shown), 0, 0), method == Method::Unmasked ? "green" : "clear");
    }
    // A picture that was kept is shown whatever happens to the file, and whatever else is asked for at that width.
    std::filesystem::remove(device().at(iconFile(notes)));
    for (const Method method : methods) {
        EXPECT_EQ(middleOf(imageBy(method, shown)), "green");
        EXPECT_EQ((send<"size", CGSize>(imageBy(method, shown, { { 60, 30 }, 1, 0 })).height), 60);
    }
    announceIcon(notes);
    for (const Method method : methods)
        EXPECT_NE(middleOf(imageBy(method, shown)), "green");
}

TEST_P(HomeIcons, AreTheSystemsWhereTheFileCantBeRead)
{
    phone_.inject().start();
    giveIcon(device(), notes, "not a picture");
    for (const Method method : methods)
        EXPECT_NE(middleOf(imageBy(method, icon(notes))), "nil");
    EXPECT_EQ(ALGetImageCache().count(), 0U);
}

TEST_P(HomeIcons, OfClockAndCalendarStayTheSystems)
{
    phone_.inject().start();
    for (const std::string& live : { timer, calendar }) {
        giveIcon(device(), live, plainPng(green));
        for (const Method method : methods)
            EXPECT_NE(middleOf(imageBy(method, icon(live))), "green") << live;
    }
}

int updates = 0;
Original<void(id)> original_update;
void countUpdate(const id& self, SEL cmd, const id& image)
{
    ++updates;
    original_update(self, cmd, image);
}

TEST_P(HomeIcons, OfClockAndCalendarHearOfChangesBySystemAlone)
{
    MSHookMessageEx(objc_getClass("SBIcon"), sel_registerName("iconImageDidUpdate:"),
        reinterpret_cast<IMP>(&countUpdate), &original_update.implementation);
    phone_.inject().start();
    const auto reaches = [](const id& icon, const id& image) {
        updates = 0;
        send<"iconImageDidUpdate:", void>(icon, image);
        return updates == 1;
    };
    EXPECT_TRUE(reaches(icon(notes), nil));
    EXPECT_TRUE(reaches(icon(clip), nil));
    for (const std::string& live : { timer, calendar }) {
        EXPECT_FALSE(reaches(icon(live), nil));
        EXPECT_TRUE(reaches(icon(live), icon(live)));
    }
}

TEST_P(HomeIcons, OfWebClipsComeFromTheFileEachTime)
{
    phone_.inject().start();
    const id shown = icon(clip);
    const std::string systems = middleOf(imageBy(Method::Generate, shown));
    EXPECT_EQ(middleOf(imageBy(Method::Image, shown)), systems);
    giveIcon(device(), clip, plainPng(green));
    for (const Method method : methods)
        EXPECT_EQ(middleOf(imageBy(method, shown)), "green");
    EXPECT_EQ(ALGetImageCache().count(), 0U) << "nothing is kept";
    device().put(iconFile(clip), plainPng(blue));
    EXPECT_EQ(middleOf(imageBy(Method::Image, shown)), "blue") << "without a word";
    // No web clip is left out, whatever its identifier.
    EXPECT_EQ(colorAt(imageBy(Method::Generate, shown), 0, 0), "clear");
    EXPECT_EQ(colorAt(imageBy(Method::Unmasked, shown), 0, 0), "blue");
}

id stampedImage(const id&, SEL, SBIconImageInfo)
{
    return string("generated");
}

TEST_P(HomeIcons, OfWebClipsAreGeneratedOnTheOneWay)
{
    const std::string name(class_getName(
        NSClassFromString("SBHBookmarkIcon") ? objc_getClass("SBHBookmarkIcon") : objc_getClass("SBBookmarkIcon")));
    MSHookMessageEx(objc_getClass(name), sel_registerName("generateIconImageWithInfo:"),
        reinterpret_cast<IMP>(&stampedImage), nullptr);
    phone_.inject().start();
    EXPECT_EQ(describe(imageBy(Method::Image, icon(clip))), "\"generated\"");
}

TEST_P(HomeIcons, OfWebClipsBearTheOwnersNames)
{
    phone_.inject().start();
    const auto name
        = [&] { return describe(send<"displayNameForLocation:">(icon(clip), string("SBIconLocationRoot"))); };
    EXPECT_EQ(name(), "\"Tides\"");
    for (const auto& [given, expected] : { std::pair { string("Waves"), "\"Waves\"" },
             std::pair { string(""), "\"Tides\"" }, std::pair { number(3), "\"Tides\"" } }) {
        device().writeDomain({ { "CustomAppNames", dictionary({ { clip, given } }) } });
        EXPECT_EQ(name(), expected) << describe(given);
    }
    device().writeDomain({ { "CustomAppNames", string("no table") } });
    EXPECT_EQ(name(), "\"Tides\"");
}

INSTANTIATE_TEST_SUITE_P(EachVersion, HomeIcons, testing::Values("13.0", "14.8", "16.0"),
    [](const auto& info) { return "On" + std::string(info.param, 2); });

} // namespace

} // namespace appledger
