#include "platform/dispatch/clock.h"
#include "platform/foundation/block.h"
#include "platform/foundation/notification_center.h"
#include "platform/graphics/geometry.h"
#include "platform/runtime/exception.h"
#include "platform/runtime/hook.h"
#include "support/phone_fixture.h"
#include "support/pictures.h"

/// Icons outside of the Home Screen: each surface, what it asks the system first, and how large it draws.

namespace appledger {

using namespace platform;
using namespace support;

namespace {

const std::string notes = "com.example.notes";
const std::string timer = "com.apple.mobiletimer";

id images()
{
    return id(objc_getClass("UIImage"));
}

id imageFor(const id& identifier, int format = 2)
{
    return send<"_applicationIconImageForBundleIdentifier:format:scale:">(images(), identifier, format, 2.0);
}

/// "40 green": the width in points, and the colour in the middle.
std::string seen(const id& image)
{
    if (!image)
        return "nil";
    const std::string middle = middleOf(image);
    return std::to_string(static_cast<int>(send<"size", CGSize>(image).width)) + " "
        + (middle == "green" || middle == "blue" ? middle : "system");
}

class Elsewhere : public testing::Test {
protected:
    explicit Elsewhere(const char* process = "SpringBoard", const char* version = "16.0")
        : phone_(process, version)
    {
        holdClock();
        phone_.with({ notes, timer });
    }

    void give(const std::string& identifier, std::uint32_t color = green) const
    {
        giveIcon(phone_.device, identifier, plainPng(color));
    }

    Phone phone_;
};

class SpotlightIcons : public Elsewhere {
protected:
    SpotlightIcons()
        : Elsewhere("Spotlight")
    {
    }
};

TEST_F(Elsewhere, AnApplicationsIconIsTheOwnersWhereverItIsAskedFor)
{
    phone_.start();
    give(notes);
    EXPECT_EQ(seen(imageFor(string(notes))), "60 system") << "on a stock phone";
}

TEST_F(Elsewhere, AnApplicationsIconIsOfTheSystemsSizeAndLooksForTheFileEachTime)
{
    phone_.inject().start();
    EXPECT_EQ(seen(imageFor(string(notes), 0)), "29 system");
    // The presence that another surface has remembered says nothing here.
    EXPECT_FALSE(ALCustomIconPathIfExists(notes));
    phone_.device.put(iconFile(notes), plainPng(green));
    EXPECT_EQ(seen(imageFor(string(notes), 0)), "29 green");
    EXPECT_EQ(seen(ALGetImageCache().objectForKey(notes + "_uiimg_0_0")), "29 green");
    EXPECT_EQ(colorAt(imageFor(string(notes), 0), 0, 0), "clear");
    // Kept until the token changes.
    std::filesystem::remove(phone_.device.at(iconFile(notes)));
    EXPECT_EQ(seen(imageFor(string(notes), 0)), "29 green");
    EXPECT_EQ(seen(imageFor(string(notes), 1)), "40 system");
    announceIcon(notes);
    EXPECT_EQ(seen(imageFor(string(notes), 0)), "29 system");

    give(timer);
    EXPECT_EQ(seen(imageFor(string(timer))), "60 green") << "no application is left out";
    give("com.example.gone");
    EXPECT_EQ(seen(imageFor(string("com.example.gone"))), "60 green") << "where the system has none";
    for (const id& identifier : { id(), number(3), array({ notes }) })
        EXPECT_EQ(seen(imageFor(identifier)), "nil") << describe(identifier);
}

TEST_F(Elsewhere, AProxysIconIsTheOwners)
{
    phone_.inject().start();
    const id proxy = send<"applicationProxyForIdentifier:">(id(objc_getClass("LSApplicationProxy")), string(notes));
    const auto icon = [&](const id& of, int variant) {
        return send<"_iconForResourceProxy:variant:options:variantsScale:">(images(), of, variant, 0, 2.0);
    };
    EXPECT_EQ(seen(icon(proxy, 1)), "40 system");
    phone_.device.put(iconFile(notes), plainPng(green));
    EXPECT_EQ(seen(icon(proxy, 1)), "40 system") << "the presence is remembered";
    announceIcon(notes);
    EXPECT_EQ(seen(icon(proxy, 1)), "40 green");
    EXPECT_EQ(seen(ALGetImageCache().objectForKey(notes + "_proxy_1_1")), "40 green");
    EXPECT_EQ(seen(icon(string("no proxy"), 1)), "nil");
    EXPECT_EQ(seen(icon(nil, 1)), "nil");
}

id raising(const id&, SEL, const id&, int, double)
{
    throw NSException("NSInvalidArgumentException", "no icon today");
}

TEST_F(Elsewhere, AnIconIsShownThoughTheSystemRaises)
{
    MSHookMessageEx(object_getClass(images()),
        sel_registerName("_applicationIconImageForBundleIdentifier:format:scale:"), reinterpret_cast<IMP>(&raising),
        nullptr);
    phone_.inject().start();
    EXPECT_EQ(seen(imageFor(string(notes))), "nil");
    give(notes);
    EXPECT_EQ(seen(imageFor(string(notes))), "60 green");
}

id searchIcon(const id& identifier, const id& size)
{
    id icon = send<"new">(id(objc_getClass("SearchUIAppIconImage")));
    send<"setBundleIdentifier:", void>(icon, identifier);
    send<"setSize:", void>(icon, size);
    return icon;
}

id boxed(double width, double height)
{
    return send<"valueWithCGSize:">(id(objc_getClass("NSValue")), CGSizeMake(width, height));
}

id loaded(const id& icon)
{
    return send<"loadImageWithScale:isDarkStyle:">(icon, 2.0, true);
}

/// What the handler got; "not called" when it wasn't.
std::string delivered(const id& icon)
{
    std::string got = "not called";
    send<"loadImageWithScale:isDarkStyle:completionHandler:", void>(
        icon, 2.0, false, block([&got](const id& image) { got = seen(image); }));
    return got;
}

TEST_F(SpotlightIcons, AreTheOwnersAtTheirSize)
{
    phone_.inject().start();
    EXPECT_EQ(seen(loaded(searchIcon(string(notes), nil))), "40 system");
    EXPECT_EQ(delivered(searchIcon(string(notes), nil)), "40 system");
    give(notes);
    // The system's own image is of 40 or 60 points, and says what the icon itself doesn't.
    EXPECT_EQ(seen(loaded(searchIcon(string(notes), boxed(50, 50)))), "60 green");
    EXPECT_EQ(delivered(searchIcon(string(notes), boxed(50, 50))), "50 green");
    EXPECT_EQ(seen(loaded(searchIcon(string(notes), nil))), "40 green");
    EXPECT_EQ(seen(ALGetImageCache().objectForKey(notes + "_search_2.000000_40.000000_1")), "40 green");
    EXPECT_EQ(seen(ALGetImageCache().objectForKey(notes + "_searchblock_2.000000_50.000000_1")), "50 green");
    EXPECT_EQ(seen(loaded(searchIcon(number(1), nil))), "nil") << "an identifier that is no string";
    EXPECT_EQ(delivered(searchIcon(number(1), nil)), "nil");
    give(timer);
    EXPECT_EQ(seen(loaded(searchIcon(string(timer), nil))), "40 green") << "no application is left out";
}

id noLoad(const id&, SEL, double, bool)
{
    return nil;
}

TEST_F(SpotlightIcons, FallBackOnTheirOwnSizeAndThenOnFortyPoints)
{
    MSHookMessageEx(objc_getClass("SearchUIAppIconImage"), sel_registerName("loadImageWithScale:isDarkStyle:"),
        reinterpret_cast<IMP>(&noLoad), nullptr);
    phone_.inject().start();
    give(notes);
    struct Case {
        id size;
        const char* expected;
    };
    for (const auto& [size, expected] : { Case { nil, "40 green" }, Case { boxed(24, 24), "24 green" },
             Case { boxed(0, 0), "40 green" }, Case { string("no size"), "40 green" } }) {
        EXPECT_EQ(seen(loaded(searchIcon(string(notes), size))), expected) << describe(size);
        EXPECT_EQ(delivered(searchIcon(string(notes), size)), expected) << describe(size);
    }
    EXPECT_EQ(seen(loaded(searchIcon(string(notes), boxed(30, 0)))), "nil") << "of no height";
    EXPECT_EQ(seen(loaded(searchIcon(string("com.example.none"), nil))), "nil");
}

int asked = 0;
Original<void(double, bool, id)> original_load;
void countLoad(const id& self, SEL cmd, double scale, bool isDark, const id& handler)
{
    ++asked;
    original_load(self, cmd, scale, isDark, handler);
}

TEST_F(SpotlightIcons, AreDeliveredInThePlaceOfTheSystems)
{
    MSHookMessageEx(objc_getClass("SearchUIAppIconImage"),
        sel_registerName("loadImageWithScale:isDarkStyle:completionHandler:"), reinterpret_cast<IMP>(&countLoad),
        &original_load.implementation);
    phone_.inject().start();
    const id icon = searchIcon(string(notes), nil);
    const auto ask = [&](const id& handler) {
        asked = 0;
        send<"loadImageWithScale:isDarkStyle:completionHandler:", void>(icon, 2.0, false, handler);
        return asked;
    };
    const id handler = block([](const id&) {});
    EXPECT_EQ(ask(handler), 1);
    give(notes);
    EXPECT_EQ(ask(nil), 1) << "without a handler";
    EXPECT_EQ(ALGetImageCache().count(), 0U);
    EXPECT_EQ(ask(handler), 0);
    EXPECT_EQ(ask(handler), 0) << "from the cache";
    EXPECT_EQ(ALGetImageCache().count(), 1U);
    EXPECT_EQ(ask(nil), 1);
}

class IconImageViews : public Elsewhere {
protected:
    static id iconOf(const std::string& identifier)
    {
        const id controller = send<"sharedInstance">(id(objc_getClass("SBIconController")));
        return send<"applicationIconForBundleIdentifier:">(send<"model">(controller), string(identifier));
    }

    static id viewOf(const std::string& identifier, const CGSize& size)
    {
        id view = send<"initWithFrame:">(send<"alloc">(id(objc_getClass("SBIconImageView"))), CGRect { {}, size });
        if (!identifier.empty())
            send<"setIcon:", void>(view, iconOf(identifier));
        return view;
    }

    static std::string contents(const id& view) { return seen(send<"contentsImage">(view)); }
    static std::string displayed(const id& view) { return seen(send<"displayedImage">(view)); }
};

TEST_F(IconImageViews, ShowTheOwnersPictures)
{
    phone_.inject().start();
    const id view = viewOf(notes, { 60, 60 });
    EXPECT_EQ(contents(view) + ", " + displayed(view), "60 system, 60 system");
    give(notes);
    EXPECT_EQ(contents(view) + ", " + displayed(view), "60 green, 60 green");
    EXPECT_EQ(seen(ALGetImageCache().objectForKey(notes + "_sbi_contents_60.000000_1")), "60 green");
    EXPECT_EQ(seen(ALGetImageCache().objectForKey(notes + "_sbi_displayed_60.000000_1")), "60 green");
    give(timer);
    EXPECT_EQ(contents(viewOf(timer, { 60, 60 })), "60 system") << "a live icon";
    EXPECT_EQ(contents(viewOf("", { 60, 60 })), "nil") << "no icon";
}

id noImage(const id&, SEL)
{
    return nil;
}

TEST_F(IconImageViews, FallBackOnTheirOwnSizeAndThenOnSixtyPoints)
{
    MSHookMessageEx(
        objc_getClass("SBIconImageView"), sel_registerName("contentsImage"), reinterpret_cast<IMP>(&noImage), nullptr);
    phone_.inject().start();
    give(notes);
    EXPECT_EQ(contents(viewOf(notes, { 44, 44 })), "44 green");
    EXPECT_EQ(contents(viewOf(notes, { 0, 0 })), "60 green");
    EXPECT_EQ(contents(viewOf(notes, { 30, 0 })), "nil") << "of no height";
}

class Banners : public Elsewhere {
protected:
    static id request(const id& section)
    {
        id made = send<"new">(id(objc_getClass("NCNotificationRequest")));
        send<"setSectionIdentifier:", void>(made, section);
        return made;
    }

    static id providerOf(const id& notificationRequest, const id& icons = nil)
    {
        id provider = send<"new">(id(objc_getClass("NCNotificationRequestContentProvider")));
        send<"setNotificationRequest:", void>(provider, notificationRequest);
        send<"setIcons:", void>(provider, icons);
        return provider;
    }

    static std::string icons(const id& provider)
    {
        const id found = send<"icons">(provider);
        std::string text;
        for (const id& image : itemsOf(found))
            text += (text.empty() ? "" : ", ") + seen(image);
        return text.empty() ? "none" : text;
    }
};

TEST_F(Banners, ShowOnePictureOfTheOwners)
{
    phone_.inject().start();
    EXPECT_EQ(icons(providerOf(request(string(notes)))), "38 system");
    give(notes);
    const id two = array(std::vector { imageOf(plainPng(red, 20)), imageOf(plainPng(blue, 30)) });
    EXPECT_EQ(icons(providerOf(request(string(notes)), two)), "20 green") << "as large as the first, and alone";
    EXPECT_EQ(icons(providerOf(request(string(notes)))), "20 green") << "all banners share it";
    EXPECT_EQ(seen(ALGetImageCache().objectForKey(notes + "_notif_1")), "20 green");
    announceIcon(notes);
    EXPECT_EQ(icons(providerOf(request(string(notes)), emptyArray())), "38 green");
    EXPECT_EQ(icons(providerOf(request(number(1)), two)), "20 system, 30 blue");
    EXPECT_EQ(icons(providerOf(nil, two)), "20 system, 30 blue");
    give("com.example.other", blue);
    EXPECT_EQ(icons(providerOf(request(string("com.example.none")), two)), "20 system, 30 blue");
}

class OtherRequest : public NSObject {
public:
    id notificationIdentifier() const { return string(notes); }
    id sectionIdentifier() const { return section; }
    id section;
};
constexpr MethodDefinition otherMethods[] {
    method<"notificationIdentifier", &OtherRequest::notificationIdentifier>(),
    method<"sectionIdentifier", &OtherRequest::sectionIdentifier>(),
};
const ClassDefinition OtherRequest_class {
    .name = "OtherRequest", .allocate = allocate<OtherRequest>, .methods = otherMethods
};

TEST_F(Banners, NameTheApplicationByTheNotificationWhereThereIsNoSection)
{
    phone_.inject().start();
    give(notes);
    const id other = send<"new">(id(registerClass(OtherRequest_class)));
    const id one = array(std::vector { imageOf(plainPng(red, 20)) });
    EXPECT_EQ(icons(providerOf(other, one)), "20 green");
    as<OtherRequest>(other)->section = string("com.example.none");
    EXPECT_EQ(icons(providerOf(other, one)), "20 system") << "a section is final";
}

int refreshed = 0;
Original<void(id)> original_updateWith;
void countUpdateWith(const id& self, SEL cmd, const id& image)
{
    ++refreshed;
    original_updateWith(self, cmd, image);
}

TEST_F(SpotlightIcons, FollowAChangeWhileTheyAreSeen)
{
    MSHookMessageEx(objc_getClass("SearchUIImageView"), sel_registerName("updateWithImage:"),
        reinterpret_cast<IMP>(&countUpdateWith), &original_updateWith.implementation);
    phone_.inject().start();
    id view = send<"initWithFrame:">(send<"alloc">(id(objc_getClass("SearchUIImageView"))), CGRectMake(0, 0, 40, 40));
    send<"updateWithImage:", void>(view, searchIcon(string(notes), nil));
    EXPECT_EQ(seen(send<"image">(view)), "40 system");
    give(notes);
    EXPECT_EQ(seen(send<"image">(view)), "40 system") << "not yet";
    ALForceRefreshIconsCallback();
    runUntilIdle();
    EXPECT_EQ(seen(send<"image">(view)), "40 green");
    refreshed = 0;
    view = nil;
    postLocalNotification("ALForceRefreshIconsNotification");
    EXPECT_EQ(refreshed, 0) << "it has gone";
}

TEST_F(IconImageViews, FollowAChangeWhileTheyAreSeen)
{
    phone_.inject().start();
    const id view = viewOf(notes, { 60, 60 });
    EXPECT_EQ(seen(send<"image">(view)), "60 system");
    give(notes);
    postLocalNotification("ALForceRefreshIconsNotification");
    EXPECT_EQ(seen(send<"image">(view)), "60 green");
}

} // namespace

} // namespace appledger
