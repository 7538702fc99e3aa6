#include "entry/observers.h"

#include "core/policies.h"
#include "launch/redirect_rules.h"
#include "state/app_brightness_manager.h"
#include "state/immortalizer.h"
#include "support/phone_fixture.h"
#include "surfaces/hidden_apps.h"

#include <gtest/gtest.h>

namespace appledger {

using namespace platform;
using support::Phone;

namespace {

constexpr std::string_view brightnessFile = "/var/mobile/Library/Preferences/com.orbelix.appbrightness.plist";

id valueOfVersion(PreferenceType type, int version)
{
    const std::string text = std::to_string(version);
    switch (type) {
    case PreferenceType::Boolean:
        return boolean(version == 2);
    case PreferenceType::String:
        return string(text);
    case PreferenceType::NumberTable:
        return dictionary({ { "a", number(version) } });
    default:
        return array({ std::string_view(text) });
    }
}

/// Everything that a process keeps a copy of, with values that say which version they are.
void writeVersion(const support::TemporaryDevice& device, int version)
{
    std::vector<std::pair<id, id>> pairs;
    pairs.emplace_back(string("IsBlockedFromLaunchingOthers/" + std::to_string(version)), boolean(true));
    for (const PreferenceKey& key : preferenceTable)
        if (!key.isPrefix)
            pairs.emplace_back(string(key.name), valueOfVersion(key.type, version));
    device.write(preferenceFile, dictionary(std::move(pairs)));
    device.write(brightnessFile, dictionary({ { "a", real(version) } }));
}

bool isSecond(const PreferenceKey& key)
{
    const auto& [value, flag, text] = key.cache;
    return (value && describe(value->value()) == describe(valueOfVersion(key.type, 2))) || (flag && *flag)
        || (text && *text->load() == "2");
}

/// What in this process is of the second version.
std::string changed()
{
    std::string names;
    for (const PreferenceKey& key : preferenceTable)
        if (isSecond(key))
            names.append(key.name).append(" ");
    const RuleSet* const rules = gForbiddenLaunchSources.load();
    names += rules && rules->contains("2") ? "redirects " : "";
    names += AppBrightnessManager::sharedManager().levelFor("a") == 2.0 ? "brightness " : "";
    return names;
}

/// What is reread when it is posted.
std::string keysOf(std::string_view notification)
{
    std::string names;
    for (const PreferenceKey& key : preferenceTable)
        if (key.notification == notification && (key.cache.value || key.cache.flag || key.cache.text))
            names.append(key.name).append(" ");
    return names;
}

TEST(Observers, RereadWhatTheirNotificationIsAboutAndNothingElse)
{
    Phone phone("SpringBoard", "16.0");
    writeVersion(phone.device, 1);
    phone.inject().start();
    EXPECT_EQ(changed(), "");
    std::vector<std::pair<std::string, std::string>> cases { { "com.orbelix.appledger.icon_changed", "" } };
    for (const Observer& observer : observers())
        cases.emplace_back(observer.notification, keysOf(observer.notification));
    for (auto& [name, expected] : cases) {
        if (name == "com.orbelix.appledger.notifications_changed")
            expected += "ALMutedNotifications ";
        if (name == "com.orbelix.appledger.redirect_saved")
            expected = "redirects ";
        if (name == "com.orbelix.appledger.brightness_changed")
            expected = "brightness ";
        writeVersion(phone.device, 2);
        CFNotificationCenterPostNotification(name);
        EXPECT_EQ(changed(), "") << name << ": not in the post";
        runUntilIdle();
        EXPECT_EQ(changed(), expected) << name;
        writeVersion(phone.device, 1);
        for (const auto& other : cases)
            CFNotificationCenterPostNotification(other.first);
        runUntilIdle();
        ASSERT_EQ(changed(), "") << name;
    }
}

TEST(Observers, AreAddedOnceForImmediateDeliveryByTheRoleOfTheProcess)
{
    Phone phone("SpringBoard", "16.0");
    phone.inject();
    const auto added = darwinObservers();
    ASSERT_EQ(added.size(), observers().size());
    for (std::size_t index = 0; index < added.size(); ++index) {
        EXPECT_EQ(added[index].name, observers()[index].notification);
        EXPECT_EQ(added[index].callback, observers()[index].callback);
        EXPECT_EQ(added[index].suspensionBehavior, CFNotificationSuspensionBehavior::DeliverImmediately);
    }
}

TEST(Observers, CallWhatTheirNamesSayWhereAReloadIsNotAll)
{
    const std::pair<std::string_view, void (*)()> callbacks[] = {
        { "HiddenAppsChangedCallback", HiddenAppsChangedCallback },
        { "ImmortalizerChangedCallback", ImmortalizerChangedCallback },
        { "RunningIndicatorChangedCallback", RunningIndicatorChangedCallback },
    };
    for (const auto& [name, callback] : callbacks) {
        const auto found = std::ranges::find(observers(), name, &Observer::callbackName);
        ASSERT_NE(found, observers().end()) << name;
        EXPECT_EQ(found->callback, callback) << name;
    }
}

TEST(Observers, OfSpotlightAreThoseOfEveryProcess)
{
    Phone phone("Spotlight", "16.0");
    phone.inject();
    std::string names;
    for (const DarwinObserver& observer : darwinObservers())
        names += observer.name + " ";
    EXPECT_EQ(names, "com.appledger.forcerefresh com.appledger.clearcache ");
}

} // namespace

} // namespace appledger
