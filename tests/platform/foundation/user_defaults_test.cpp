#include "platform/foundation/user_defaults.h"

#include "platform/foundation/device_root.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/url.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <atomic>
#include <chrono>
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>

namespace platform {
namespace {

constexpr std::string_view suite = "com.example.settings";
constexpr std::string_view directory = "/var/mobile/Library/Preferences";
const std::string file = std::string(directory) + "/com.example.settings.plist";

std::string xml(std::string_view pairs)
{
    return "<plist><dict>" + std::string(pairs) + "</dict></plist>";
}

std::string onDisk()
{
    return describe(dictionaryWithContentsOfFile(file));
}

/// A device with that content as the suite's file.
class DeviceWithFile : public DeviceRoot {
public:
    explicit DeviceWithFile(std::string_view content) { put(file, content); }
};

TEST(UserDefaults, ReadEachTypeOutOfEachValue)
{
    const DeviceRoot device;
    const auto defaults = NSUserDefaults::suite(suite);
    struct Case {
        id value;
        std::string_view string;
        bool boolean;
        std::int64_t integer;
        double real;
    };
    const Case cases[] {
        { nil, "nil", false, 0, 0 },
        { string("12.5 apples"), "\"12.5 apples\"", true, 12, 12.5 },
        { string("YES"), "\"YES\"", true, 0, 0 },
        { number(-3), "\"-3\"", true, -3, -3 },
        { boolean(true), "\"1\"", true, 1, 1 },
        { real(2.75), "\"2.75\"", true, 2, 2.75 },
        { array({ "1" }), "nil", false, 0, 0 },
        { dictionary({ { "1", number(1) } }), "nil", false, 0, 0 },
        { date(5), "nil", false, 0, 0 },
    };
    for (const auto& [value, text, boolean, integer, real] : cases) {
        defaults->setObject(value, "key");
        EXPECT_TRUE(isEqual(defaults->objectForKey("key"), value));
        EXPECT_EQ(describe(defaults->stringForKey("key")), text);
        EXPECT_EQ(defaults->boolForKey("key"), boolean) << describe(value);
        EXPECT_EQ(defaults->integerForKey("key"), integer) << describe(value);
        EXPECT_EQ(defaults->doubleForKey("key"), real) << describe(value);
        EXPECT_EQ(defaults->arrayForKey("key"), asArray(value) ? defaults->objectForKey("key") : nil);
        EXPECT_EQ(defaults->dictionaryForKey("key"), asDictionary(value) ? defaults->objectForKey("key") : nil);
    }
}

TEST(UserDefaults, AWriteIsSeenAtOnceHereAndInTheFileAfterSynchronize)
{
    const DeviceRoot device;
    const auto writer = NSUserDefaults::suite(suite);
    const auto reader = NSUserDefaults::suite(suite);
    EXPECT_TRUE(writer->synchronize());
    EXPECT_FALSE(fileExists("/var")); // nothing to write, so not even a directory
    writer->setBool(true, "a");
    EXPECT_TRUE(reader->boolForKey("a"));
    EXPECT_TRUE(NSUserDefaults::suite(suite)->boolForKey("a"));
    EXPECT_EQ(CFPreferencesCopyAppValue("a", suite), nil);
    EXPECT_FALSE(fileExists(file));

    EXPECT_TRUE(reader->synchronize());
    EXPECT_EQ(onDisk(), R"({"a": true})");
    EXPECT_TRUE(device.get(file).starts_with("bplist00"));
    EXPECT_EQ(describe(CFPreferencesCopyAppValue("a", suite)), "true");
    writer->removeObject("a");
    EXPECT_EQ(reader->objectForKey("a"), nil);
    EXPECT_TRUE(writer->synchronize());
    EXPECT_EQ(onDisk(), "{}");
}

TEST(UserDefaults, KeysOfOthersSurviveAWrite)
{
    const DeviceWithFile device(
        xml("<key>theirs</key><dict><key>deep</key><array><date>2020-01-01T00:00:00Z</date><data>AAE=</data></array>"
            "</dict><key>ours</key><integer>1</integer>"));
    ::chmod(device.at(file).c_str(), 0640);
    const id theirs = (*asDictionary(dictionaryWithContentsOfFile(file)))["theirs"];
    const auto defaults = NSUserDefaults::suite(suite);
    defaults->setInteger(2, "ours");
    device.put(file,
        xml("<key>later</key><true/><key>ours</key><integer>7</integer><key>theirs</key><dict>"
            "<key>deep</key><array><date>2020-01-01T00:00:00Z</date><data>AAE=</data></array></dict>"));
    EXPECT_TRUE(defaults->synchronize());
    const auto written = *asDictionary(dictionaryWithContentsOfFile(file));
    EXPECT_EQ(asInteger(written["ours"]), 2);
    EXPECT_EQ(asBool(written["later"]), true);
    EXPECT_TRUE(isEqual(written["theirs"], theirs));
    EXPECT_TRUE(defaults->boolForKey("later"));
    struct stat status { };
    ASSERT_EQ(::stat(device.at(file).c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640U);
}

TEST(UserDefaults, AFileThatIsNoDictionaryReadsAsEmptySaysSoAndIsSetAsideByAWrite)
{
    for (const std::string_view content : { "", "garbage", "<plist><array/></plist>", "<plist><dict>" }) {
        const DeviceWithFile device(content);
        const auto defaults = NSUserDefaults::suite(suite);
        defaults->removeObject("absent");
        EXPECT_TRUE(defaults->synchronize());
        EXPECT_EQ(describe(defaults->dictionaryRepresentation()), "{}") << content;
        EXPECT_NE(defaults->readProblem(), "") << content;
        EXPECT_EQ(device.get(file), content);
        defaults->setBool(true, "a");
        EXPECT_TRUE(defaults->synchronize());
        EXPECT_EQ(onDisk(), R"({"a": true})") << content;
        EXPECT_EQ(defaults->readProblem(), "") << content;
        EXPECT_EQ(device.get(file + ".damaged-1"), content);
        defaults->removeObject("a");
        EXPECT_TRUE(defaults->synchronize());
    }
}

TEST(UserDefaults, AChangeGetsThePresentValueAndPublishesWhatItGives)
{
    const DeviceWithFile device(
        xml("<key>list</key><array><string>a</string></array><key>n</key><integer>1</integer>"));
    const auto defaults = NSUserDefaults::suite(suite);
    std::string heard;
    const auto observer = defaults->addObserver("list", [&](const id& value) { heard += describe(value) + " "; });
    const auto change = [&](std::string_view key, std::optional<id> next) {
        std::string present;
        const WriteOutcome outcome = defaults->change(key, [&](const id& value) {
            present = describe(value);
            return next;
        });
        return present + (outcome.isDone() ? "" : " refused");
    };
    // What another process has written since counts, and what is pending here counts more.
    device.put(file, xml("<key>list</key><array><string>b</string></array><key>n</key><integer>2</integer>"));
    EXPECT_EQ(change("list", array({ "b", "c" })), R"(["b"])");
    EXPECT_EQ(onDisk(), R"({"list": ["b", "c"], "n": 2})");
    defaults->setInteger(3, "n");
    EXPECT_EQ(change("n", std::nullopt), "3");
    EXPECT_EQ(onDisk(), R"({"list": ["b", "c"], "n": 3})");
    defaults->registerDefaults(dictionary({ { "registered", number(1) } }));
    EXPECT_EQ(change("registered", nil), "nil");
    EXPECT_EQ(change("list", nil), R"(["b", "c"])");
    EXPECT_EQ(onDisk(), R"({"n": 3})");
    EXPECT_EQ(change("n", url("a:b")), "3 refused");
    EXPECT_EQ(change("\xFF", number(1)), " refused");
    EXPECT_EQ(onDisk(), R"({"n": 3})");
    EXPECT_EQ(describe(defaults->dictionaryRepresentation()), R"({"registered": 1, "n": 3})");
    EXPECT_EQ(heard, R"(["b", "c"] nil )");
    defaults->removeObserver(observer);
    const std::string foreign = xml("<key>theirs</key><integer>9223372036854775808</integer>");
    device.put(file, foreign);
    EXPECT_EQ(change("n", number(4)), " refused");
    EXPECT_EQ(device.get(file), foreign);
    EXPECT_FALSE(NSUserDefaults::suite("a/b")->change("n", [](const id& value) { return value; }).isDone());
}

TEST(UserDefaults, NobodyWaitsForALockWhoOnlyReads)
{
    const DeviceWithFile device(xml("<key>n</key><integer>1</integer>"));
    const auto defaults = NSUserDefaults::suite(suite);
    std::optional<FileLock> held(std::in_place, pathByAppending(directory, ".com.example.settings.plist.lock"));
    std::atomic<bool> isWritten { false };
    std::thread writer([&] {
        defaults->setBool(true, "a");
        EXPECT_TRUE(defaults->synchronize()) << "a reader that waited for the writer held the lock for too long";
        isWritten = true;
    });
    const auto start = std::chrono::steady_clock::now();
    while (std::chrono::steady_clock::now() - start < std::chrono::milliseconds(100))
        EXPECT_EQ(NSUserDefaults::suite(suite)->integerForKey("n"), 1);
    EXPECT_LT(std::chrono::steady_clock::now() - start, lockPatience);
    EXPECT_FALSE(isWritten);
    held.reset();
    writer.join();
    EXPECT_EQ(onDisk(), R"({"a": true, "n": 1})");
}

TEST(UserDefaults, AFileTooLargeToReadIsLeftAlone)
{
    const DeviceWithFile device("");
    std::filesystem::resize_file(device.at(file), std::uintmax_t { 65 } << 20);
    const auto defaults = NSUserDefaults::suite(suite);
    defaults->setBool(true, "a");
    EXPECT_FALSE(defaults->synchronize());
    EXPECT_EQ(defaults->lastError(), EFBIG);
    EXPECT_EQ(std::filesystem::file_size(device.at(file)), std::uintmax_t { 65 } << 20);
}

TEST(UserDefaults, OnAFullDiskWritesStayPending)
{
    const DeviceWithFile device(xml("<key>former</key><true/>"));
    const auto defaults = NSUserDefaults::suite(suite);
    defaults->setObject(string(std::string(20'000, 'x')), "large");
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit small { 8192, RLIM_INFINITY };
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    EXPECT_FALSE(defaults->synchronize());
    const rlimit unlimited { RLIM_INFINITY, RLIM_INFINITY };
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &unlimited), 0);

    EXPECT_EQ(defaults->lastError(), EFBIG);
    EXPECT_EQ(onDisk(), R"({"former": true})");
    EXPECT_EQ(directoryEntries(directory),
        (std::vector<std::string> { ".com.example.settings.plist.lock", "com.example.settings.plist" }));
    EXPECT_NE(NSUserDefaults::suite(suite)->objectForKey("large"), nil);
    EXPECT_TRUE(defaults->synchronize());
    EXPECT_EQ(defaults->lastError(), 0);
    EXPECT_NE((*asDictionary(dictionaryWithContentsOfFile(file)))["large"], nil);
}

TEST(UserDefaults, AnUnusableDirectoryIsAnError)
{
    const DeviceRoot device;
    device.put("/var/mobile/Library", "a file where the directory should be");
    const auto defaults = NSUserDefaults::suite(suite);
    defaults->setBool(true, "a");
    EXPECT_FALSE(defaults->synchronize());
    EXPECT_EQ(defaults->lastError(), ENOTDIR);
    EXPECT_TRUE(defaults->boolForKey("a"));
}

TEST(UserDefaults, ANewInstanceRereadsAChangedFileAndNoOther)
{
    const DeviceWithFile device(xml("<key>list</key><array/>"));
    const auto hourAgo = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1);
    std::filesystem::last_write_time(device.at(file), hourAgo);
    const auto first = NSUserDefaults::suite(suite);
    const id list = first->objectForKey("list");
    EXPECT_EQ(NSUserDefaults::suite(suite)->objectForKey("list"), list); // not parsed again

    device.put(file, xml("<key>list</key><true/>"));
    EXPECT_EQ(first->objectForKey("list"), list);
    EXPECT_EQ(describe(CFPreferencesCopyAppValue("list", suite)), "true");
    EXPECT_EQ(first->objectForKey("list"), list);
    EXPECT_EQ(describe(NSUserDefaults::suite(suite)->objectForKey("list")), "true");
    std::filesystem::remove(device.at(file));
    EXPECT_NE(first->objectForKey("list"), nil);
    EXPECT_TRUE(first->synchronize());
    EXPECT_EQ(first->objectForKey("list"), nil);
}

TEST(UserDefaults, ChangesInTheSameInstantAreSeen)
{
    const DeviceWithFile device(xml("<key>n</key><integer>0</integer>"));
    // A time that is still to come is as little past as the present instant, and doesn't pass meanwhile.
    const auto instant = std::filesystem::file_time_type::clock::now() + std::chrono::hours(1);
    for (int round = 0; round < 5; ++round) {
        device.put(file, xml("<key>n</key><integer>" + std::to_string(round) + "</integer>"));
        std::filesystem::last_write_time(device.at(file), instant);
        ASSERT_EQ(NSUserDefaults::suite(suite)->integerForKey("n"), round);
    }
}

TEST(UserDefaults, RegisteredDefaultsAnswerForAbsentKeysOnly)
{
    const DeviceRoot device;
    const auto defaults = NSUserDefaults::suite(suite);
    defaults->registerDefaults(dictionary({ { "a", number(1) }, { "b", number(1) } }));
    defaults->registerDefaults(dictionary({ { "b", number(2) }, { "c", number(2) } }));
    defaults->registerDefaults(nil);
    defaults->setInteger(3, "c");
    EXPECT_EQ(describe(defaults->dictionaryRepresentation()), R"({"a": 1, "b": 2, "c": 3})");
    EXPECT_TRUE(defaults->synchronize());
    EXPECT_EQ(onDisk(), R"({"c": 3})");
    defaults->removeObject("c");
    EXPECT_EQ(defaults->integerForKey("c"), 2);
    EXPECT_EQ(describe(defaults->dictionaryRepresentation()), R"({"a": 1, "b": 2, "c": 2})");
    EXPECT_EQ(NSUserDefaults::suite(suite)->objectForKey("a"), nil) << "they are the instance's own";
    EXPECT_EQ(CFPreferencesCopyAppValue("a", suite), nil);
}

/// Writes down what it is told.
class Listener : public NSObject {
public:
    static const ClassDefinition definition;
    std::string heard;

    void observe(const id& key, const id& object, const id& change, void* context)
    {
        heard += describe(key) + " of " + describe(object) + " " + describe(change)
            + (context == this ? " with context; " : "; ");
    }
};

constexpr MethodDefinition listenerMethods[] {
    method<"observeValueForKeyPath:ofObject:change:context:", &Listener::observe>(),
};
const ClassDefinition Listener::definition { .name = "Listener", .methods = listenerMethods };

TEST(UserDefaults, TellTheObserversOfAKeyWhoeverChangesIt)
{
    constexpr NSUInteger withNew = 1;
    constexpr NSUInteger withNewAndInitial = 5;
    const DeviceRoot device;
    const auto defaults = NSUserDefaults::suite(suite);
    defaults->registerDefaults(dictionary({ { "a", number(1) } }));
    Ref<Listener> listener = make<Listener>();
    const auto observe = [&](const char* key, NSUInteger options, void* context) {
        send<"addObserver:forKeyPath:options:context:", void>(defaults, listener, string(key), options, context);
    };
    const auto heard = [&] { return std::exchange(listener->heard, ""); };
    observe("a", withNewAndInitial, listener.get());
    EXPECT_EQ(heard(), R"("a" of <NSUserDefaults> {"kind": 1, "new": 1} with context; )");
    observe("b", 0, nullptr);

    defaults->setInteger(2, "a");
    EXPECT_EQ(heard(), R"("a" of <NSUserDefaults> {"kind": 1, "new": 2} with context; )");
    NSUserDefaults::suite(suite)->setInteger(3, "b");
    EXPECT_EQ(heard(), R"("b" of <NSUserDefaults> {"kind": 1}; )");
    defaults->setInteger(3, "b");
    defaults->setInteger(3, "c");
    EXPECT_EQ(heard(), "") << "nothing is another than before";
    defaults->synchronize();
    device.put(file, xml("<key>a</key><integer>4</integer>")); // another process
    EXPECT_EQ(heard(), "");
    defaults->synchronize();
    EXPECT_EQ(heard(),
        R"("a" of <NSUserDefaults> {"kind": 1, "new": 4} with context; "b" of <NSUserDefaults> {"kind": 1}; )");
    defaults->removeObject("a");
    EXPECT_EQ(heard(), R"("a" of <NSUserDefaults> {"kind": 1, "new": 1} with context; )") << "the registered default";

    send<"removeObserver:forKeyPath:", void>(defaults, listener, string("a"));
    send<"removeObserver:forKeyPath:", void>(defaults, listener, string("never added"));
    defaults->setInteger(5, "a");
    EXPECT_EQ(heard(), "");
    observe("a", withNew, nullptr);
    listener = nullptr; // nobody kept it
    defaults->setInteger(6, "a");
}

TEST(UserDefaults, RefuseWhatAFileCanNotHold)
{
    const DeviceRoot device;
    const auto defaults = NSUserDefaults::suite(suite);
    defaults->setInteger(1, "a");
    defaults->setObject(url("a:b"), "a");
    defaults->setObject(array(std::vector<id> { url("a:b") }), "a");
    defaults->setInteger(1, std::string_view("n\0l", 3));
    defaults->setInteger(1, "\xFF");
    const id list = mutableArray({ string("x") });
    defaults->setObject(list, "list");
    send<"removeAllObjects", void>(list);
    EXPECT_EQ(describe(defaults->dictionaryRepresentation()), R"({"a": 1, "list": ["x"]})");
    EXPECT_TRUE(defaults->synchronize());
}

TEST(UserDefaults, ANameThatIsNoFileNameGivesAnEmptySuite)
{
    const DeviceRoot device;
    device.put("/var/mobile/Library/secret.plist", xml("<key>a</key><true/>"));
    device.put(pathByAppending(directory, ".plist"), xml("<key>a</key><true/>"));
    for (const std::string& name : { std::string(), std::string("../secret"), std::string("a/b"),
             std::string("a\0b", 3), std::string(201, 'x') }) {
        const auto defaults = NSUserDefaults::suite(name);
        EXPECT_EQ(defaults->objectForKey("a"), nil) << name;
        EXPECT_EQ(CFPreferencesCopyAppValue("a", name), nil) << name;
        defaults->setBool(true, "b");
        EXPECT_EQ(describe(defaults->dictionaryRepresentation()), "{}");
        EXPECT_FALSE(defaults->synchronize());
        EXPECT_EQ(defaults->lastError(), EINVAL);
    }
    EXPECT_EQ(directoryEntries(directory), std::vector<std::string> { ".plist" });
    const auto longest = NSUserDefaults::suite(std::string(200, 'x'));
    longest->setBool(true, "b");
    EXPECT_TRUE(longest->synchronize());
}

TEST(UserDefaults, ObserversHearOfEveryChangeOfTheirKey)
{
    const DeviceWithFile device(xml("<key>a</key><integer>1</integer>"));
    const auto defaults = NSUserDefaults::suite(suite);
    std::string heard;
    const auto number = defaults->addObserver("a", [&](const id& value) {
        heard += describe(value) + " ";
        EXPECT_EQ(describe(defaults->objectForKey("a")), describe(value));
        NSUserDefaults::suite(suite)->setInteger(0, "b"); // an observer may use the defaults
    });
    defaults->setInteger(1, "a"); // no change
    defaults->setInteger(2, "a");
    defaults->setInteger(9, "b");
    defaults->synchronize(); // publishes what was heard of already
    device.put(file, xml("<key>a</key><integer>3</integer>"));
    NSUserDefaults::suite(suite);
    device.put(file, xml(""));
    defaults->synchronize();
    defaults->removeObserver(number);
    defaults->setInteger(4, "a");
    EXPECT_EQ(heard, "2 3 nil ");
}

TEST(UserDefaults, AnswerMessages)
{
    const DeviceRoot device;
    registerClass(NSUserDefaults::definition);
    const id defaults
        = send<"initWithSuiteName:">(send<"alloc">(objc_getClass("NSUserDefaults")), string(std::string(suite)));
    send<"setObject:forKey:", void>(defaults, array({ "x" }), string("list"));
    send<"setBool:forKey:", void>(defaults, true, string("flag"));
    send<"setObject:forKey:", void>(defaults, dictionary({ { "k", number(1) } }), string("pairs"));
    send<"setBool:forKey:", void>(defaults, true, nil);
    send<"setInteger:forKey:", void>(defaults, NSInteger { 5 }, string("five"));
    send<"registerDefaults:", void>(defaults, dictionary({ { "registered", number(6) } }));
    EXPECT_TRUE((send<"synchronize", bool>(defaults)));
    EXPECT_EQ(onDisk(), R"({"five": 5, "flag": true, "list": ["x"], "pairs": {"k": 1}})");
    send<"removeObjectForKey:", void>(defaults, string("list"));
    EXPECT_EQ(describe(send<"dictionaryRepresentation">(defaults)),
        R"({"registered": 6, "five": 5, "flag": true, "pairs": {"k": 1}})");
    EXPECT_TRUE((send<"boolForKey:", bool>(defaults, string("flag"))));
    EXPECT_EQ((send<"integerForKey:", NSInteger>(defaults, string("five"))), 5);
    EXPECT_EQ(describe(send<"stringForKey:">(defaults, string("five"))), "\"5\"");
    EXPECT_EQ(send<"arrayForKey:">(defaults, string("pairs")), nil);
    EXPECT_EQ(describe(send<"dictionaryForKey:">(defaults, string("pairs"))), R"({"k": 1})");
    EXPECT_EQ(send<"objectForKey:">(defaults, nil), nil);
}

} // namespace
} // namespace platform
