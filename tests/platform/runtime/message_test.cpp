#include "platform/runtime/exception.h"
#include "platform/runtime/instruments.h"

#include <gtest/gtest.h>

using namespace platform;
using namespace instruments;

namespace {

enum class Pedal : NSUInteger { Up, Down = 4 };

std::string raisedBy(const std::function<void()>& body)
{
    try {
        body();
    } catch (const NSException& exception) {
        return exception.what();
    }
    return "nothing";
}

TEST(Message, NilAnswersNilZeroOrFalse)
{
    EXPECT_EQ(send<"name">(nil), nil);
    EXPECT_EQ((send<"volume", NSInteger>(nil)), 0);
    EXPECT_EQ((send<"scale:times:", double>(nil, 2.0, NSUInteger { 3 })), 0.0);
    EXPECT_FALSE((send<"isLouderThan:", bool>(nil, newInstrument())));
    EXPECT_EQ((send<"class", Class>(nil)), nullptr);
    send<"play", void>(nil);
    EXPECT_EQ(sendSelector(nil, sel_registerName("name")), nil);
    EXPECT_EQ(sendSelector(newInstrument(), nullptr), nil);
    EXPECT_EQ(journal(), "");
    EXPECT_FALSE(isEqual(nil, newInstrument()));
    EXPECT_TRUE(isEqual(nil, nil));
}

TEST(Message, AnUnrecognizedSelectorRaisesAndNamesReceiverAndSelector)
{
    const id guitar = newGuitar();
    EXPECT_EQ(raisedBy([&] { send<"hum">(guitar); }),
        "NSInvalidArgumentException: -[Guitar hum]: unrecognized selector sent to instance");
    EXPECT_EQ(raisedBy([&] { send<"play">(guitarClass()); }),
        "NSInvalidArgumentException: +[Guitar play]: unrecognized selector sent to class");
    EXPECT_EQ(raisedBy([&] { sendSelector(guitar, sel_registerName("sing:"), nil); }),
        "NSInvalidArgumentException: -[Guitar sing:]: unrecognized selector sent to instance");
    EXPECT_EQ(raisedBy([&] { send<"performSelector:">(guitar, sel_registerName("hum")); }),
        "NSInvalidArgumentException: -[Guitar hum]: unrecognized selector sent to instance");
}

TEST(Message, AProbeIsEmptyWhereASendWouldRaise)
{
    const id guitar = newGuitar();
    send<"setName:", void>(guitar, newInstrument());
    EXPECT_EQ((ask<"volume", NSInteger>(guitar)), 3);
    EXPECT_EQ((ask<"hum", NSInteger>(guitar)), std::nullopt);
    EXPECT_EQ((ask<"volume", NSInteger>(nil)), std::nullopt);
    EXPECT_EQ(ask<"name">(guitar), send<"name">(guitar));
    EXPECT_EQ(ask<"name">(newGuitar()), std::optional<id>(nil)) << "an answer that is nil is an answer";

    EXPECT_TRUE((ask<"play", void>(guitar)));
    EXPECT_FALSE((ask<"hum", void>(guitar)));
    EXPECT_FALSE((ask<"play", void>(nil)));
    EXPECT_EQ(journal(), "play");

    EXPECT_EQ((ask<"volume", NSInteger>(askObject<"name">(guitar))), 3);
    EXPECT_EQ((ask<"volume", NSInteger>(askObject<"name">(askObject<"name">(guitar)))), std::nullopt);
    EXPECT_EQ((ask<"volume", NSInteger>(askObject<"hum">(guitar))), std::nullopt);
}

TEST(Message, SelectorsOfOneNameAreOne)
{
    EXPECT_EQ(sel_registerName("play"), selector<"play">());
    EXPECT_NE(sel_registerName("play"), sel_registerName("play:"));
    EXPECT_EQ(sel_getName(selector<"scale:times:">()), "scale:times:");
    EXPECT_EQ(sel_getName(nullptr), "");
    EXPECT_EQ(sel_registerName("")->name, "");
}

TEST(Message, EncodingsFollowTheTypes)
{
    const struct {
        std::string_view encoding;
        std::string_view expected;
    } cases[] {
        { methodEncoding<void>, "v@:" },
        { methodEncoding<bool, id, id>, "B@:@@" },
        { methodEncoding<id, NSInteger, NSUInteger, int, double, float>, "@@:qQidf" },
        { methodEncoding<Class, SEL, Class>, "#@::#" },
        { methodEncoding<NSUInteger, Pedal>, "Q@:Q" },
        { blockEncoding<void, bool>, "v@?B" },
    };
    for (const auto& each : cases)
        EXPECT_EQ(each.encoding, each.expected);
}

NSUInteger pressed(const id&, SEL, NSUInteger pedal)
{
    return pedal;
}

TEST(Message, AnEnumerationTravelsAsItsNumber)
{
    ASSERT_TRUE(class_addMethod(
        instrumentClass(), sel_registerName("press:"), code<&pressed>(), methodEncoding<NSUInteger, Pedal>));
    EXPECT_EQ((send<"press:", NSUInteger>(newInstrument(), Pedal::Down)), 4U);
}

id answerArgument(const id&, SEL, const id& argument)
{
    return argument;
}

TEST(Message, ObjectsOfEveryStaticTypeTravelAsObjects)
{
    ASSERT_TRUE(class_addMethod(instrumentClass(), sel_registerName("echo:"), code<&answerArgument>(), "@@:@"));
    const id receiver = newInstrument();
    const id object = newGuitar();
    const Ref<Guitar> typed = as<Guitar>(object);
    EXPECT_EQ(send<"echo:">(receiver, object), object);
    EXPECT_EQ(send<"echo:">(receiver, typed), object);
    EXPECT_EQ(send<"echo:">(receiver, id(guitarClass())), id(guitarClass()));
    EXPECT_EQ(send<"echo:">(receiver, nil), nil);
    EXPECT_EQ(send<"echo:">(receiver, nullptr), nil);
}

using MessageDeathTest = testing::Test;

TEST(MessageDeathTest, AnotherEncodingEndsTheProcessAndPrintsBoth)
{
    if constexpr (!PLATFORM_CHECKS_ENCODINGS)
        GTEST_SKIP() << "the release build doesn't compare encodings";
    const id guitar = newGuitar();
    EXPECT_DEATH((send<"setVolume:", void>(guitar, 3)),
        "-\\[Guitar setVolume:\\]: the method is \"v@:q\", the caller sends \"v@:i\"");
    EXPECT_DEATH((ask<"volume", int>(guitar)), "-\\[Guitar volume\\]: the method is \"q@:\", the caller sends \"i@:\"");
    EXPECT_DEATH(
        (send<"family">(guitarClass())), "\\+\\[Guitar family\\]: the method is \"q@:\", the caller sends \"@@:\"");
    EXPECT_DEATH((sendSelector<void>(guitar, sel_registerName("setName:"), true)),
        "-\\[Guitar setName:\\]: the method is \"v@:@\", the caller sends \"v@:B\"");
}

} // namespace
