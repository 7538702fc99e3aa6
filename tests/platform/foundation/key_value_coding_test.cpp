#include "platform/foundation/key_value_coding.h"

#include "platform/foundation/values.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/exception.h"
#include "platform/runtime/message.h"

#include <gtest/gtest.h>

namespace platform {
namespace {

struct Size {
    double width = 1;
    double height = 2;
};

} // namespace

template <> inline constexpr std::string_view typeEncoding<Size> = "{Size=dd}";

namespace {

/// An object with a value behind each of the ways that a key can lead.
class Sample final : public NSObject {
public:
    static const ClassDefinition definition;

    id title = string("title");
    bool enabled = true;
    double scale = 1.5;
    float ratio = 0.5F;
    int count = -7;
    unsigned long mask = 8;
    long offset = 9;
    short small = 3;
    id secret = string("secret");
    id flagged = string("flagged");

    id gotten() { return string("gotten"); }
    Class kind() { return isa(); }
    id argument(bool) { return string("not a getter"); }
    Size size() const { return {}; }
    void doNothing() { }
};

constexpr MethodDefinition methods[] {
    getter<"_private", &Sample::count>(),
    method<"argument", &Sample::argument>(),
    getter<"count", &Sample::count>(),
    method<"doNothing", &Sample::doNothing>(),
    method<"getGotten", &Sample::gotten>(),
    getter<"isEnabled", &Sample::enabled>(),
    method<"kind", &Sample::kind>(),
    getter<"mask", &Sample::mask>(),
    getter<"offset", &Sample::offset>(),
    getter<"ratio", &Sample::ratio>(),
    getter<"scale", &Sample::scale>(),
    setter<"_setOffset:", &Sample::offset>(),
    setter<"setCount:", &Sample::count>(),
    setter<"setEnabled:", &Sample::enabled>(),
    setter<"setMask:", &Sample::mask>(),
    setter<"setRatio:", &Sample::ratio>(),
    setter<"setScale:", &Sample::scale>(),
    setter<"setSmall:", &Sample::small>(),
    setter<"setTitle:", &Sample::title>(),
    method<"size", &Sample::size>(),
    getter<"small", &Sample::small>(),
    getter<"title", &Sample::title>(),
};

constexpr InstanceVariableDefinition variables[] {
    instanceVariable<"_isFlagged", &Sample::flagged>(),
    instanceVariable<"_secret", &Sample::secret>(),
    instanceVariable<"_title", &Sample::secret>(),
};

const ClassDefinition Sample::definition { .name = "Sample", .methods = methods, .instanceVariables = variables };

std::string valueOrException(const id& object, std::string_view key)
{
    try {
        return describe(valueForKey(object, key));
    } catch (const NSException& exception) {
        return exception.name();
    }
}

std::string afterSetting(const id& object, std::string_view key, const id& value)
{
    try {
        setValueForKey(object, value, key);
    } catch (const NSException& exception) {
        return exception.name();
    }
    return valueOrException(object, key);
}

TEST(KeyValueCoding, FindsAValueByGetterOrVariable)
{
    const id sample = make<Sample>();
    const std::pair<std::string_view, std::string_view> cases[] {
        { "title", "\"title\"" }, // the getter before the variable
        { "enabled", "true" },
        { "scale", "1.5" },
        { "ratio", "0.5" },
        { "count", "-7" },
        { "mask", "8" },
        { "small", "3" },
        { "private", "-7" },
        { "gotten", "\"gotten\"" },
        { "secret", "\"secret\"" },
        { "_secret", "\"secret\"" },
        { "flagged", "\"flagged\"" },
        { "argument", "NSUndefinedKeyException" },
        { "size", "NSUndefinedKeyException" },
        { "doNothing", "NSUndefinedKeyException" },
        { "absent", "NSUndefinedKeyException" },
        { "", "NSUndefinedKeyException" },
    };
    for (const auto& [key, expected] : cases)
        EXPECT_EQ(valueOrException(sample, key), expected) << key;
    EXPECT_EQ(valueForKey(sample, "kind"), id(objc_getClass("Sample")));
    EXPECT_EQ(numberKind(valueForKey(sample, "enabled")), NumberKind::Boolean);
    EXPECT_EQ(numberKind(valueForKey(sample, "scale")), NumberKind::Real);
    EXPECT_EQ(valueOrException(nil, "title"), "nil");
}

TEST(KeyValueCoding, SetsAValueBySetterOrVariable)
{
    struct Case {
        std::string_view key;
        id value;
        std::string_view expected;
    };
    const Case cases[] {
        { "title", string("new"), "\"new\"" },
        { "title", nil, "nil" },
        { "enabled", number(0), "false" },
        { "scale", number(4), "4" },
        { "ratio", real(0.25), "0.25" },
        { "count", real(2.9), "2" },
        { "mask", number(5), "5" },
        { "offset", number(-6), "-6" },
        { "small", number(12), "12" },
        { "secret", number(1), "1" },
        { "flagged", number(2), "2" },
        { "scale", string("4"), "NSInvalidArgumentException" },
        { "enabled", nil, "NSInvalidArgumentException" },
        { "gotten", string("x"), "NSUndefinedKeyException" },
    };
    for (const auto& [key, value, expected] : cases)
        EXPECT_EQ(afterSetting(make<Sample>(), key, value), expected) << key;
    EXPECT_EQ(afterSetting(nil, "title", number(1)), "nil");
}

TEST(KeyValueCoding, ReadsAndWritesTheEntriesOfADictionary)
{
    const id pairs = mutableDictionary({ { string("count"), number(5) } });
    EXPECT_EQ(valueOrException(pairs, "count"), "5");
    EXPECT_EQ(valueOrException(pairs, "absent"), "nil");
    EXPECT_EQ(afterSetting(pairs, "new", number(1)), "1");
    EXPECT_EQ(afterSetting(pairs, "new", nil), "nil");
    EXPECT_EQ(afterSetting(dictionary({}), "new", number(1)), "NSUndefinedKeyException");
}

} // namespace
} // namespace platform
