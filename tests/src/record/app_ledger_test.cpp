#include "record/app_ledger.h"

#include "phone/device/mach_o.h"
#include "platform/dispatch/clock.h"
#include "platform/dispatch/run_loop.h"
#include "platform/foundation/url.h"
#include "platform/runtime/message.h"
#include "support/phone_fixture.h"

#include <deque>
#include <gtest/gtest.h>
#include <typeinfo>

namespace appledger {

using namespace platform;

namespace {

/// The system's object for an application, as far as a table of its methods goes.
class Proxy : public NSObject {
public:
    id shortVersionString;
    id bundleVersion;
    id bundleIdentifier;
    bool isAppStoreVendable = true;
    bool isDeletable = false;
    id bundleURL;
    id bundleContainerURL;
    id dataContainerURL;
    id groupContainerURLs;
    id staticDiskUsage;
    id entitlements;
    id itemID;
};

using Methods = std::vector<MethodDefinition>;

/// An object of a class that offers these methods; what describes the class lives as long as the class.
template <class T> Ref<T> objectWith(const Methods& methods)
{
    struct Kept {
        std::string name;
        Methods methods;
        ClassDefinition definition;
    };
    static std::deque<Kept> kept;
    Kept& one = kept.emplace_back(Kept { typeid(T).name() + std::to_string(kept.size()), methods, {} });
    one.definition = { .name = one.name, .allocate = allocate<T>, .methods = one.methods };
    const id object = send<"new">(id(registerClass(one.definition)));
    return Ref<T>(static_cast<T*>(object.get()));
}

Ref<Proxy> proxyWith(const Methods& methods)
{
    return objectWith<Proxy>(methods);
}

const Methods everything {
    getter<"bundleContainerURL", &Proxy::bundleContainerURL>(),
    getter<"bundleIdentifier", &Proxy::bundleIdentifier>(),
    getter<"bundleURL", &Proxy::bundleURL>(),
    getter<"bundleVersion", &Proxy::bundleVersion>(),
    getter<"dataContainerURL", &Proxy::dataContainerURL>(),
    getter<"entitlements", &Proxy::entitlements>(),
    getter<"groupContainerURLs", &Proxy::groupContainerURLs>(),
    getter<"isAppStoreVendable", &Proxy::isAppStoreVendable>(),
    getter<"isDeletable", &Proxy::isDeletable>(),
    getter<"itemID", &Proxy::itemID>(),
    getter<"shortVersionString", &Proxy::shortVersionString>(),
    getter<"staticDiskUsage", &Proxy::staticDiskUsage>(),
};

std::string pathOf(const id& url)
{
    return describe(askObject<"path">(url));
}

class Record : public testing::Test {
protected:
    Record()
    {
        phone_.device.writeDomain({});
        phone_.inject();
    }

    support::Phone phone_ { "SpringBoard", "16.0" };
};

TEST_F(Record, OfNobodyHasItsDefaults)
{
    const auto record = ALAppLedger::forProxy(nil, nil);
    runUntilIdle();
    EXPECT_EQ(describe(record->bundleIdentifier), "\"N/A\"");
    EXPECT_EQ(describe(record->version), "\"N/A\"");
    EXPECT_TRUE(record->isDeletable);
    EXPECT_FALSE(record->appStoreVendable);
    EXPECT_EQ(record->appGroups, nil);
    EXPECT_EQ(record->diskUsageString, nil);
    EXPECT_FALSE(record->isApplication());
    EXPECT_FALSE(record->hasAppStoreApp());
    EXPECT_EQ(describe(record->name()), "\"Web Clip\"");
    EXPECT_EQ(describe(ALAppLedger::forProxy(string("given"), nil)->bundleIdentifier), "\"given\"");
}

TEST_F(Record, TakesItsVersionFromTheFirstThatIsOffered)
{
    const MethodDefinition shortVersion = getter<"shortVersionString", &Proxy::shortVersionString>();
    const MethodDefinition bundleVersion = getter<"bundleVersion", &Proxy::bundleVersion>();
    const struct {
        Methods offered;
        id shortVersion;
        id bundleVersion;
        std::string version;
    } cases[] = {
        { { shortVersion, bundleVersion }, string("1.2"), string("3"), "\"1.2\"" },
        { { shortVersion, bundleVersion }, nil, string("3"), "\"3\"" },
        { { shortVersion, bundleVersion }, nil, nil, "nil" },
        { { shortVersion }, nil, nil, "\"N/A\"" },
        { { bundleVersion }, nil, string("3"), "\"N/A\"" },
    };
    for (const auto& [offered, shortValue, bundleValue, version] : cases) {
        const auto proxy = proxyWith(offered);
        proxy->shortVersionString = shortValue;
        proxy->bundleVersion = bundleValue;
        EXPECT_EQ(describe(ALAppLedger::forProxy(nil, proxy)->version), version);
    }
}

TEST_F(Record, GathersWhatTheProxyKnows)
{
    const auto proxy = proxyWith(everything);
    proxy->bundleIdentifier = string("com.example.known");
    proxy->bundleContainerURL = fileURL("/container");
    proxy->dataContainerURL = fileURL("/data");
    proxy->groupContainerURLs = dictionary({ { "group.b", fileURL("/b") }, { "Group.A", fileURL("/a") },
        { "group.É", fileURL("/e") }, { "group.a", fileURL("/aa") } });
    proxy->staticDiskUsage = number(1234567);
    proxy->entitlements = dictionary({ { "z", boolean(true) }, { "a", boolean(false) } });
    proxy->itemID = number(42);
    const auto record = ALAppLedger::forProxy(string("given"), proxy);
    EXPECT_EQ(describe(record->bundleIdentifier), "\"com.example.known\"");
    EXPECT_TRUE(record->appStoreVendable);
    EXPECT_FALSE(record->isDeletable);
    EXPECT_EQ(pathOf(record->bundleURL), "\"/container\"") << "in the place of a bundle's that is nil";
    EXPECT_EQ(pathOf(record->dataContainerURL), "\"/data\"");
    std::string groups;
    for (const id& group : itemsOf(record->appGroups))
        groups += describe(send<"identifier">(group)) + pathOf(send<"url">(group)) + " ";
    EXPECT_EQ(groups, R"("Group.A""/a" "group.a""/aa" "group.b""/b" "group.É""/e" )");
    EXPECT_EQ(record->diskUsage, 1234567);
    EXPECT_EQ(describe(record->diskUsageString), "\"1.2 MB\"");
    EXPECT_EQ(describe(record->entitlementsIdentifiers), R"(["z", "a"])");
    EXPECT_TRUE(record->hasAppStoreApp());
    proxy->itemID = number(0);
    EXPECT_FALSE(record->hasAppStoreApp());
    proxy->groupContainerURLs = dictionary({});
    EXPECT_EQ(describe(ALAppLedger::forProxy(nil, proxy)->appGroups), "[]");
}

TEST_F(Record, IsDeletableWhereAMarkLiesBesideTheBundle)
{
    const auto proxy = proxyWith(everything);
    for (const char* const mark : { "_TrollStore", "_TrollStoreLite", "_Other" }) {
        const std::string container = "/apps/" + std::string(mark);
        phone_.device.put(container + "/A.app/Info.plist", "");
        phone_.device.put(container + "/" + mark, "");
        proxy->bundleURL = fileURL(container + "/A.app");
        EXPECT_EQ(ALAppLedger::forProxy(nil, proxy)->isDeletable, std::string_view(mark) != "_Other") << mark;
    }
    proxy->isDeletable = true;
    EXPECT_TRUE(ALAppLedger::forProxy(nil, proxy)->isDeletable) << "as the system says";
}

/// What of the files' facts there is, once the other threads have come to rest.
std::string factsOf(const Ref<Proxy>& proxy)
{
    const auto record = ALAppLedger::forProxy(nil, proxy);
    runUntilIdle();
    return describe(send<"internalVersion">(record)) + describe(send<"urlSchemes">(record))
        + (send<"isEncrypted", bool>(record) ? " encrypted" : "");
}

TEST_F(Record, ReadsTheBundlesFilesAfterwards)
{
    holdClock();
    const auto& device = phone_.device;
    const auto proxy = proxyWith(everything);
    const id information = dictionary({ { "CFBundleVersion", string("7") }, { "CFBundleExecutable", string("App") },
        { "CFBundleURLTypes", array({ dictionary({ { "CFBundleURLSchemes", array({ "a" }) } }) }) } });
    device.put("/xml/App", phone::machOExecutable(phone::Encryption::Set, ""));
    device.write("/xml/Info.plist", information);
    device.put("/binary/App", phone::machOExecutable(phone::Encryption::Unset, ""));
    device.write("/binary/Info.plist", information, PropertyListFormat::Binary);
    device.put("/damaged/Info.plist", "<plist><dict><key>CFBundleVersion</key><str");
    device.write("/list/Info.plist", array({ "CFBundleVersion" }));
    std::vector<id> many;
    for (int index = 0; index < 200000; ++index)
        many.push_back(string("an-activity-type-with-a-long-name-" + std::to_string(index)));
    device.write("/large/Info.plist",
        dictionary({ { "CFBundleVersion", string("8") }, { "NSUserActivityTypes", array(std::move(many)) } }));
    ASSERT_GT(std::filesystem::file_size(device.at("/large/Info.plist")), 10'000'000U);
    std::filesystem::create_directories(device.at("/empty"));
    const std::pair<const char*, std::string> cases[] {
        { "/xml", R"("7"["a"] encrypted)" },
        { "/binary", R"("7"["a"])" },
        { "/damaged", "nilnil" },
        { "/list", "nilnil" },
        { "/large", "\"8\"nil" },
        { "/empty", "nilnil" },
        { "/missing", "nilnil" },
    };
    for (const auto& [path, expected] : cases) {
        proxy->bundleURL = fileURL(path);
        EXPECT_EQ(factsOf(proxy), expected) << path;
    }
    proxy->bundleURL = fileURL("/xml");
    const auto record = ALAppLedger::forProxy(nil, proxy);
    EXPECT_EQ(send<"internalVersion">(record), nil) << "what it reads comes later";
    send<"setInternalVersion:", void>(record, string("mine"));
    EXPECT_EQ(describe(send<"internalVersion">(record)), "\"mine\"");
}

/// An icon, and the view of it.
class Icon : public NSObject {
public:
    id name;
    id icon() { return this; }
    id displayName() const { return name; }
    id displayNameForLocation(const id&) const { return name; }
};

id iconWith(const Methods& methods, const id& name)
{
    const Ref<Icon> icon = objectWith<Icon>(methods);
    icon->name = name;
    return icon;
}

TEST_F(Record, IsCalledAsItsIconIsWhereItIsNoApplication)
{
    const MethodDefinition icon = method<"icon", &Icon::icon>();
    const MethodDefinition name = method<"displayName", &Icon::displayName>();
    const MethodDefinition located = method<"displayNameForLocation:", &Icon::displayNameForLocation>();
    const auto record = ALAppLedger::forProxy(nil, nil);
    const struct {
        id view;
        std::string name;
    } cases[] = {
        { iconWith({ icon, name }, string("A")), "\"A\"" },
        { iconWith({ icon, name, located }, string("A")), "\"A\"" },
        { iconWith({ icon, located }, nil), "nil" },
        { iconWith({ icon, name }, nil), "nil" },
        { iconWith({ icon }, string("A")), "\"Web Clip\"" },
        { iconWith({ name }, string("A")), "\"Web Clip\"" },
    };
    for (const auto& [view, expected] : cases) {
        record->iconView = view;
        EXPECT_EQ(describe(record->name()), expected);
    }
}

TEST_F(Record, OfAnInstalledApplicationKnowsBothOfTheSystemsObjects)
{
    phone_.with({ "com.example.notes" }).start();
    const id record = send<"appLedgerForBundleIdentifier:iconImage:">(
        id(classNamed<"ALAppLedger">()), string("com.example.notes"), string("image"));
    EXPECT_TRUE((send<"isApplication", bool>(record)));
    EXPECT_TRUE(send<"appProxy">(record));
    EXPECT_EQ(describe(send<"iconImage">(record)), "\"image\"");
    EXPECT_EQ(describe(send<"name">(record)), "\"com.example.notes\"");
    EXPECT_EQ(send<"sbApplicationForBundleIdentifier:">(id(classNamed<"ALAppLedger">()), string("none")), nil);
}

} // namespace

} // namespace appledger
