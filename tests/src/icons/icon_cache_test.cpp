#include "icons/icon_cache.h"

#include "core/preference_domain.h"
#include "platform/dispatch/run_loop.h"
#include "platform/foundation/notification_center.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/exception.h"
#include "platform/runtime/message.h"
#include "support/temporary_device.h"

#include <gtest/gtest.h>

#include <utility>

namespace appledger {

using namespace platform;

namespace {

constexpr std::string_view folder = "/var/mobile/Library/Preferences/AppLedgerIcons/";

class IconCache : public testing::Test {
protected:
    std::string file(std::string_view identifier) const { return std::string(folder).append(identifier) + ".png"; }

    /// As a writer that has changed the icon of that application, or of all of them ("").
    void announce(std::string_view identifier)
    {
        if (!identifier.empty())
            preferences()->setObject(string(identifier), "ALLastModifiedIconBundleID");
        preferences()->synchronize();
        ALClearSpecificIconCache();
    }

    static bool known(std::string_view identifier) { return ALCustomIconPathIfExists(identifier).has_value(); }

    const support::TemporaryDevice device_;
};

TEST_F(IconCache, KnowsTheFileOfEachApplicationAndLooksOnce)
{
    EXPECT_EQ(ALCustomIconFilePath("a.b"), file("a.b"));
    EXPECT_FALSE(ALCustomIconFilePath(""));
    EXPECT_FALSE(known(""));
    EXPECT_FALSE(known("a.b"));
    device_.put(file("a.b"), "png");
    device_.put(file("c.d"), "png");
    EXPECT_FALSE(known("a.b")) << "what was found is remembered";
    EXPECT_EQ(ALCustomIconPathIfExists("c.d"), file("c.d"));
    std::filesystem::remove(device_.at(file("c.d")));
    ALInvalidateCustomIconPresence("a.b");
    EXPECT_TRUE(known("a.b"));
    EXPECT_TRUE(known("c.d"));
    ALInvalidateCustomIconPresence("");
    EXPECT_FALSE(known("c.d"));
}

TEST_F(IconCache, KeepsAHostileIdentifierInsideTheDevice)
{
    std::ofstream(device_.outside() / "secret.png") << "png";
    EXPECT_FALSE(known("../../../../../../../../secret"));
}

TEST_F(IconCache, BumpsTheTokenOfTheApplicationThatTheWriterNames)
{
    EXPECT_EQ(ALGetCacheToken("a"), "0");
    EXPECT_FALSE(known("a") || known("b"));
    device_.put(file("a"), "png");
    device_.put(file("b"), "png");
    ALGetImageCache().setObject(string("image"), "a-0");
    announce("a");
    EXPECT_EQ(ALGetCacheToken("a") + ALGetCacheToken("b"), "10");
    EXPECT_TRUE(known("a"));
    EXPECT_FALSE(known("b")) << "nobody spoke of it";
    EXPECT_EQ(ALGetImageCache().count(), 1U);
    EXPECT_FALSE(preferences()->objectForKey("ALLastModifiedIconBundleID")) << "the name is used up";
    EXPECT_FALSE(pairsOf(dictionaryWithContentsOfFile(preferenceFile))["ALLastModifiedIconBundleID"]);
    announce("a");
    EXPECT_EQ(ALGetCacheToken("a"), "2");
    announce("");
    EXPECT_EQ(ALGetCacheToken("a"), "2");
    EXPECT_EQ(ALGetImageCache().count(), 0U);
    EXPECT_TRUE(known("b"));
}

TEST_F(IconCache, TakesANameThatIsntOneForAllApplications)
{
    EXPECT_EQ(ALGetImageCache().countLimit(), 1500U);
    for (const id& value : { string(""), number(1), array({ "a" }) }) {
        device_.writeDomain({ { "ALLastModifiedIconBundleID", value } });
        ALGetImageCache().setObject(string("image"), "a-0");
        ALClearSpecificIconCache();
        EXPECT_EQ(ALGetImageCache().count(), 0U) << describe(value);
        EXPECT_EQ(ALGetCacheToken("a") + ALGetCacheToken(""), "00") << describe(value);
    }
}

std::string journal;
bool raises = false;

void clearSearch(const id&, SEL, const id&)
{
    journal += "search | ";
}
void clear(const id&, SEL)
{
    if (raises)
        throw NSException("NSInternalInconsistencyException", "no cache");
    journal += "icon services | ";
}
id sharedCache(const id& self, SEL)
{
    return send<"new">(self);
}

constexpr MethodDefinition searchMethods[] { classMethod<"sharedCache", sharedCache>(),
    method<"clearImagesWithNotification:", clearSearch>() };
constexpr MethodDefinition servicesMethods[] { classMethod<"sharedCache", sharedCache>(), method<"clear", clear>() };
const ClassDefinition SearchUIImageCache_class { .name = "SearchUIImageCache", .methods = searchMethods };
const ClassDefinition ISIconCache_class { .name = "ISIconCache", .methods = servicesMethods };

TEST_F(IconCache, RefreshesTheSystemsCachesOnTheMainQueueAndThenTheViews)
{
    addLocalObserver("ALForceRefreshIconsNotification", [](std::string_view, const id&) { journal += "views"; });
    const auto refreshed = [] {
        ALForceRefreshIconsCallback();
        EXPECT_EQ(journal, "") << "not in the callback";
        runUntilIdle();
        return std::exchange(journal, {});
    };
    EXPECT_EQ(refreshed(), "views") << "where the system has none of these caches";
    registerClass(SearchUIImageCache_class);
    registerClass(ISIconCache_class);
    EXPECT_EQ(refreshed(), "search | icon services | views");
    raises = true;
    EXPECT_EQ(refreshed(), "search | ") << "what is behind the exception is left out";
}

} // namespace

} // namespace appledger
