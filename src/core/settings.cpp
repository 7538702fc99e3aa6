#include "core/settings.h"

#include "core/hex_color.h"
#include "core/notification_names.h"
#include "core/policies.h"
#include "core/text.h"
#include "platform/darwin/notify.h"
#include "platform/darwin/system.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/notification_center.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <algorithm>
#include <iterator>

namespace appledger {

using namespace platform;

namespace {

enum class Reach { Process, Phone };

/// What a change of a key is followed by.
struct ObservedKey {
    std::string_view key;
    Reach reach;
    std::string_view notification;
};

// In the order in which they are observed.
constexpr ObservedKey observedKeys[] {
    { preference::swipeUp, Reach::Process, notification::swipeUpChanged },
    { preference::swipeDown, Reach::Process, notification::swipeDownChanged },
    { preference::appearance, Reach::Process, notification::appearanceChanged },
    { preference::everyCacheClears, Reach::Phone, policy::autoClear.notification },
    { preference::hideSeparators, Reach::Process, notification::appearanceChanged },
    { preference::runningIndicator, Reach::Phone, policy::runningIndicator.notification },
    { preference::runningIndicatorColor, Reach::Phone, policy::runningIndicator.notification },
};

id defaultsDictionary()
{
    return dictionary({ { preference::swipeUp, boolean(true) }, { preference::swipeDown, boolean(false) },
        { preference::forceTouchMenu, boolean(false) },
        { preference::appearance, number(static_cast<std::int64_t>(AppearanceStyle::Dark)) },
        { preference::everyCacheClears, boolean(false) }, { preference::hideSeparators, boolean(false) },
        { preference::runningIndicator, boolean(false) },
        { preference::runningIndicatorColor, string(defaultColorHex) },
        { preference::directoryOpener, string("filza") } });
}

struct StyleTitle {
    AppearanceStyle style;
    std::string_view title;
};

constexpr StyleTitle styles[] {
    { AppearanceStyle::Dark, "Dark" },
    { AppearanceStyle::Light, "Light" },
    { AppearanceStyle::Auto, "Auto" },
};

/// Those that this system can show.
std::span<const StyleTitle> offeredStyles()
{
    return std::span(styles).first(isOperatingSystemAtLeastVersion(13, 0, 0) ? 3 : 2);
}

struct Opener {
    std::string_view value;
    std::string_view name;
    std::string_view openInTitle;
};

// The first stands for whatever isn't another.
constexpr Opener openers[] {
    { "filza", "Filza", "Open in Filza" },
    { "fila", "Fila", "Open in Fila" },
};

const Opener& openerNamed(const id& value)
{
    const auto text = asString(value);
    const auto* const found = text ? std::ranges::find(openers, text->view(), &Opener::value) : std::end(openers);
    return found == std::end(openers) ? openers[0] : *found;
}

const Opener& chosenOpener()
{
    return openerNamed(ALSettings::objectForKey(string(preference::directoryOpener)));
}

const id& defaults()
{
    return ALSettings::sharedInstance().userDefaults;
}

bool flag(std::string_view key)
{
    return ALSettings::boolForKey(string(key));
}

/// A class method of the function's name.
template <auto Function> struct ClassFunction;
template <class R, class... A, R (*Function)(A...)> struct ClassFunction<Function> {
    static R call(const id&, SEL, A... arguments) { return Function(arguments...); }
};

template <Name Selector, auto Function> constexpr MethodDefinition function()
{
    return classMethod<Selector, &ClassFunction<Function>::call>();
}

id colorFromHexString(const id& text)
{
    const auto found = asString(text);
    return colorFromHex(found ? found->view() : std::string_view());
}

id sharedInstance()
{
    return &ALSettings::sharedInstance();
}

constexpr MethodDefinition methods[] {
    function<"appearanceStyle", &ALSettings::appearanceStyle>(),
    function<"appearanceTitles", &ALSettings::appearanceTitles>(),
    function<"appearanceValues", &ALSettings::appearanceValues>(),
    function<"boolForKey:", &ALSettings::boolForKey>(),
    function<"colorFromHexString:", &colorFromHexString>(),
    function<"customAppNameForBundleIdentifier:", &ALSettings::customAppNameForBundleIdentifier>(),
    function<"defaultsDictionary", &defaultsDictionary>(),
    function<"directoryOpener", &ALSettings::directoryOpener>(),
    function<"directoryOpenerDisplayName", &ALSettings::directoryOpenerDisplayName>(),
    function<"directoryOpenerTitles", &ALSettings::directoryOpenerTitles>(),
    function<"directoryOpenerValues", &ALSettings::directoryOpenerValues>(),
    function<"forceTouchMenuEnabled", &ALSettings::forceTouchMenuEnabled>(),
    function<"hexStringFromColor:", &hexOfColor>(),
    function<"hidePanelSeparatorsEnabled", &ALSettings::hidePanelSeparatorsEnabled>(),
    method<"initialize", &ALSettings::initialize>(),
    function<"integerForKey:", &ALSettings::integerForKey>(),
    function<"objectForKey:", &ALSettings::objectForKey>(),
    method<"observeValueForKeyPath:ofObject:change:context:", &ALSettings::observeValueForKeyPath>(),
    function<"openInDirectoryOpenerTitle", &ALSettings::openInDirectoryOpenerTitle>(),
    function<"runningIndicatorEnabled", &ALSettings::runningIndicatorEnabled>(),
    function<"setCustomAppName:forBundleIdentifier:", &ALSettings::setCustomAppName>(),
    function<"setDirectoryOpener:", &ALSettings::setDirectoryOpener>(),
    function<"setInteger:forKey:", &ALSettings::setInteger>(),
    function<"setObject:forKey:", &ALSettings::setObject>(),
    setter<"setUserDefaults:", &ALSettings::userDefaults>(),
    function<"sharedInstance", &sharedInstance>(),
    function<"swipeDownEnabled", &ALSettings::swipeDownEnabled>(),
    function<"swipeUpEnabled", &ALSettings::swipeUpEnabled>(),
    function<"titleForAppearanceStyle:", &ALSettings::titleForAppearanceStyle>(),
    getter<"userDefaults", &ALSettings::userDefaults>(),
};

} // namespace

const ClassDefinition ALSettings::definition {
    .name = "ALSettings", .allocate = allocate<ALSettings>, .methods = methods
};

ALSettings& ALSettings::sharedInstance()
{
    static dispatch_once_t once;
    static ALSettings* shared;
    dispatch_once(once, [] {
        const Ref<ALSettings> settings = make<ALSettings>();
        settings->initialize();
        shared = static_cast<ALSettings*>(id(settings).leak());
    });
    return *shared;
}

void ALSettings::initialize()
{
    constexpr NSUInteger optionNew = 1;
    userDefaults = preferences();
    send<"registerDefaults:", void>(userDefaults, defaultsDictionary());
    for (const ObservedKey& observed : observedKeys)
        send<"addObserver:forKeyPath:options:context:", void>(
            userDefaults, id(this), string(observed.key), optionNew, static_cast<void*>(nullptr));
}

void ALSettings::observeValueForKeyPath(const id& keyPath, const id&, const id&, void*)
{
    const auto key = asString(keyPath);
    const auto* const found
        = key ? std::ranges::find(observedKeys, key->view(), &ObservedKey::key) : std::end(observedKeys);
    if (found == std::end(observedKeys))
        return;
    if (found->reach == Reach::Process)
        postLocalNotification(found->notification);
    else
        CFNotificationCenterPostNotification(found->notification);
}

id ALSettings::objectForKey(const id& key)
{
    return send<"objectForKey:">(defaults(), key);
}

bool ALSettings::boolForKey(const id& key)
{
    return send<"boolForKey:", bool>(defaults(), key);
}

NSInteger ALSettings::integerForKey(const id& key)
{
    return send<"integerForKey:", NSInteger>(defaults(), key);
}

void ALSettings::setObject(const id& value, const id& key)
{
    send<"setObject:forKey:", void>(defaults(), value, key);
}

void ALSettings::setInteger(NSInteger value, const id& key)
{
    send<"setInteger:forKey:", void>(defaults(), value, key);
}

bool ALSettings::swipeUpEnabled()
{
    return flag(preference::swipeUp);
}

bool ALSettings::swipeDownEnabled()
{
    return flag(preference::swipeDown);
}

bool ALSettings::forceTouchMenuEnabled()
{
    return flag(preference::forceTouchMenu);
}

bool ALSettings::hidePanelSeparatorsEnabled()
{
    return flag(preference::hideSeparators);
}

bool ALSettings::runningIndicatorEnabled()
{
    return flag(preference::runningIndicator);
}

NSInteger ALSettings::appearanceStyle()
{
    const id key = string(preference::appearance);
    const NSInteger style = integerForKey(key);
    if (style != static_cast<NSInteger>(AppearanceStyle::Auto) || isOperatingSystemAtLeastVersion(13, 0, 0))
        return style;
    constexpr auto dark = static_cast<NSInteger>(AppearanceStyle::Dark);
    setInteger(dark, key);
    return dark;
}

id ALSettings::appearanceValues()
{
    std::vector<id> values;
    for (const StyleTitle& row : offeredStyles())
        values.push_back(string(std::to_string(static_cast<NSInteger>(row.style))));
    return array(std::move(values));
}

id ALSettings::appearanceTitles()
{
    std::vector<id> titles;
    for (const StyleTitle& row : offeredStyles())
        titles.push_back(string(ALLoc(row.title)));
    return array(std::move(titles));
}

id ALSettings::titleForAppearanceStyle(NSInteger style)
{
    const auto* const found = std::ranges::find(styles, static_cast<AppearanceStyle>(style), &StyleTitle::style);
    return string(ALLoc(found == std::end(styles) ? "Unknown" : found->title));
}

id ALSettings::customAppNameForBundleIdentifier(const id& bundleIdentifier)
{
    id name = pairsOf(objectForKey(string(preference::customNames)))[bundleIdentifier];
    return asString(name) ? name : nil;
}

void ALSettings::setCustomAppName(const id& name, const id& bundleIdentifier)
{
    const auto identifier = asString(bundleIdentifier);
    if (!identifier)
        return;
    changePreference(static_cast<NSUserDefaults&>(*defaults()), preference::customNames,
        [&](const id& present) -> std::optional<id> { return dictionaryBySetting(present, *identifier, name); });
}

id ALSettings::directoryOpener()
{
    return string(chosenOpener().value);
}

void ALSettings::setDirectoryOpener(const id& opener)
{
    setObject(string(openerNamed(opener).value), string(preference::directoryOpener));
}

id ALSettings::directoryOpenerDisplayName()
{
    return string(chosenOpener().name);
}

id ALSettings::openInDirectoryOpenerTitle()
{
    return string(ALLoc(chosenOpener().openInTitle));
}

id ALSettings::directoryOpenerTitles()
{
    std::vector<id> names;
    for (const Opener& opener : openers)
        names.push_back(string(opener.name));
    return array(std::move(names));
}

id ALSettings::directoryOpenerValues()
{
    std::vector<id> values;
    for (const Opener& opener : openers)
        values.push_back(string(opener.value));
    return array(std::move(values));
}

} // namespace appledger
