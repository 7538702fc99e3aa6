#include "platform/runtime/instruments.h"

#include <gtest/gtest.h>

using namespace platform;
using namespace instruments;

namespace {

Original<void()> original_first;
Original<void()> original_second;
Original<void()> original_third;

void first_play(const id& self, SEL cmd)
{
    note("first");
    original_first(self, cmd);
    note("first done");
}

void second_play(const id& self, SEL cmd)
{
    note("second");
    original_second(self, cmd);
    note("second done");
}

void third_play(const id&, SEL)
{
    note("third swallows it");
}

const SEL playSelector = sel_registerName("play");

TEST(Hook, ReplacementsStackAndTheLastRunsFirst)
{
    const id instrument = newInstrument();
    send<"play", void>(instrument);
    MSHookMessageEx(instrumentClass(), playSelector, code<&first_play>(), &original_first.implementation);
    MSHookMessageEx(instrumentClass(), playSelector, code<&second_play>(), &original_second.implementation);
    note("-");
    send<"play", void>(instrument);
    MSHookMessageEx(instrumentClass(), playSelector, code<&third_play>(), &original_third.implementation);
    note("-");
    send<"play", void>(instrument);
    note("-");
    original_third(instrument, playSelector);
    EXPECT_EQ(journal(),
        "play | - | second | first | play | first done | second done | - | third swallows it | - | "
        "second | first | play | first done | second done");
}

TEST(Hook, OnTheSuperclassReachesSubclassesThatInherit)
{
    const id guitar = newGuitar();
    MSHookMessageEx(instrumentClass(), playSelector, code<&first_play>(), &original_first.implementation);
    send<"play", void>(guitar);
    EXPECT_EQ(journal(), "first | play | first done");
}

TEST(Hook, OnASubclassLeavesTheSuperclassAlone)
{
    const id guitar = newGuitar();
    const id instrument = newInstrument();
    MSHookMessageEx(guitarClass(), playSelector, code<&first_play>(), &original_first.implementation);
    send<"play", void>(instrument);
    send<"play", void>(guitar);
    EXPECT_EQ(journal(), "play | first | play | first done");

    // The subclass has a method of its own now.
    MSHookMessageEx(instrumentClass(), playSelector, code<&third_play>(), &original_third.implementation);
    send<"play", void>(instrument);
    send<"play", void>(guitar);
    EXPECT_EQ(journal(), "play | first | play | first done | third swallows it | first | play | first done");
    EXPECT_FALSE(class_addMethod(guitarClass(), playSelector, code<&second_play>(), "v@:"));
}

TEST(Hook, OnASubclassThatIsMadeLaterHasTheHookedMethod)
{
    MSHookMessageEx(instrumentClass(), playSelector, code<&first_play>(), &original_first.implementation);
    send<"play", void>(newGuitar());
    EXPECT_EQ(journal(), "first | play | first done");
}

TEST(Hook, DoesNothingWithoutAClassASelectorOrAMethod)
{
    const IMP untouched = code<&third_play>();
    const struct {
        const char* why;
        Class cls;
        SEL selector;
        IMP replacement;
    } cases[] {
        { "a nil class", nullptr, playSelector, code<&first_play>() },
        { "no selector", instrumentClass(), nullptr, code<&first_play>() },
        { "a selector that it doesn't answer", instrumentClass(), sel_registerName("hum"), code<&first_play>() },
        { "an instance method asked of the metaclass", object_getClass(instrumentClass()), playSelector,
            code<&first_play>() },
        { "no replacement", instrumentClass(), playSelector, nullptr },
    };
    for (const auto& each : cases) {
        IMP original = untouched;
        MSHookMessageEx(each.cls, each.selector, each.replacement, &original);
        EXPECT_EQ(original, untouched) << each.why;
    }
    EXPECT_FALSE(respondsTo<"hum">(newInstrument()));
    send<"play", void>(newInstrument());
    EXPECT_EQ(journal(), "play");
}

Original<bool(id)> original_isLouderThan;
id lastCompared;

bool Instrument_isLouderThan(const id& self, SEL cmd, const id& other)
{
    lastCompared = other;
    return !original_isLouderThan(self, cmd, other);
}

Original<double(double, NSUInteger)> original_scale;

double Instrument_scale(const id& self, SEL cmd, double factor, NSUInteger times)
{
    return original_scale(self, cmd, factor + 1, times) + 0.5;
}

Original<NSInteger()> original_family;

NSInteger Instrument_family(const id& self, SEL cmd)
{
    return original_family(self, cmd) + 1;
}

TEST(Hook, PassesArgumentsAndResultsThrough)
{
    const id quiet = newInstrument();
    const id loud = newInstrument();
    send<"setVolume:", void>(loud, NSInteger { 5 });
    MSHookMessageEx(instrumentClass(), sel_registerName("isLouderThan:"), code<&Instrument_isLouderThan>(),
        &original_isLouderThan.implementation);
    MSHookMessageEx(
        instrumentClass(), sel_registerName("scale:times:"), code<&Instrument_scale>(), &original_scale.implementation);
    EXPECT_FALSE((send<"isLouderThan:", bool>(loud, quiet)));
    EXPECT_EQ(lastCompared, quiet);
    EXPECT_DOUBLE_EQ((send<"scale:times:", double>(loud, 1.0, NSUInteger { 2 })), 20.5);
    EXPECT_EQ(class_getMethodTypes(instrumentClass(), sel_registerName("isLouderThan:")), "B@:@");
    lastCompared = nil;
}

TEST(Hook, ReplacesMethodsOfTheClassThroughItsMetaclass)
{
    guitarClass();
    MSHookMessageEx(object_getClass(instrumentClass()), sel_registerName("family"), code<&Instrument_family>(),
        &original_family.implementation);
    EXPECT_EQ((send<"family", NSInteger>(instrumentClass())), 8);
    EXPECT_EQ((send<"family", NSInteger>(guitarClass())), 8);
}

TEST(Hook, SurvivesTheGrowthOfTheTable)
{
    MSHookMessageEx(instrumentClass(), playSelector, code<&first_play>(), &original_first.implementation);
    for (int i = 0; i < 100; ++i)
        class_addMethod(instrumentClass(), sel_registerName("added" + std::to_string(i)), code<&third_play>(), "v@:");
    MSHookMessageEx(instrumentClass(), playSelector, code<&second_play>(), &original_second.implementation);
    send<"play", void>(newInstrument());
    EXPECT_EQ(journal(), "second | first | play | first done | second done");
}

} // namespace
