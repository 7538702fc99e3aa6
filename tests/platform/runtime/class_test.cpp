#include "platform/runtime/instruments.h"

#include <gtest/gtest.h>

using namespace platform;
using namespace instruments;

namespace {

void loudPlay(const id&, SEL)
{
    note("loud");
}

void softPlay(const id&, SEL)
{
    note("soft");
}

NSInteger eleven(const id&, SEL)
{
    return 11;
}

TEST(Class, IsFoundByNameOnceItIsRegistered)
{
    EXPECT_EQ(objc_getClass("Guitar"), nullptr);
    EXPECT_EQ(classNamed<"Guitar">(), nullptr);
    const Class guitar = guitarClass();
    EXPECT_EQ(objc_getClass("Guitar"), guitar);
    EXPECT_EQ(classNamed<"Guitar">(), guitar);
    EXPECT_EQ(NSClassFromString("Guitars"), nullptr);
    EXPECT_EQ(class_getName(guitar), "Guitar");
    EXPECT_EQ(class_getName(nullptr), "");
    EXPECT_EQ(guitar->superclass(), objc_getClass("Instrument"));
    EXPECT_EQ(guitar->superclass()->superclass(), objc_getClass("NSObject"));
    EXPECT_EQ(guitar->superclass()->superclass()->superclass(), nullptr);
}

TEST(Class, KeepsItsNameAgainstAnotherDefinition)
{
    const Class guitar = guitarClass();
    const ClassDefinition impostor { .name = "Guitar" };
    EXPECT_EQ(registerClass(impostor), nullptr);
    EXPECT_EQ(registerClass(Guitar_class), guitar);
    EXPECT_EQ(objc_getClass("Guitar"), guitar);
}

TEST(Class, InheritsMethodsAndFields)
{
    const id guitar = newGuitar();
    const id instrument = newInstrument();
    send<"setVolume:", void>(guitar, NSInteger { 9 });
    send<"setName:", void>(guitar, instrument);
    EXPECT_EQ((send<"volume", NSInteger>(guitar)), 9);
    EXPECT_EQ(send<"name">(guitar), instrument);
    EXPECT_TRUE((send<"isLouderThan:", bool>(guitar, instrument)));
    EXPECT_DOUBLE_EQ((send<"scale:times:", double>(guitar, 0.5, NSUInteger { 4 })), 18.0);
    EXPECT_TRUE(isKindOfClass(guitar, instrumentClass()));
    EXPECT_FALSE(isKindOfClass(instrument, guitarClass()));
    EXPECT_TRUE((send<"isKindOfClass:", bool>(guitar, objc_getClass("NSObject"))));
    EXPECT_FALSE(isKindOfClass(nil, instrumentClass()));
    EXPECT_FALSE(isKindOfClass(guitar, nullptr));
}

TEST(Class, IsAnObjectOfItsMetaclass)
{
    const Class guitar = guitarClass();
    const Class root = objc_getClass("NSObject");
    const Class metaclass = object_getClass(guitar);
    EXPECT_TRUE(metaclass->isMetaclass());
    EXPECT_FALSE(guitar->isMetaclass());
    EXPECT_EQ(metaclass->superclass(), object_getClass(instrumentClass()));
    EXPECT_EQ(object_getClass(metaclass), object_getClass(root)) << "every metaclass belongs to the root's";
    EXPECT_EQ(object_getClass(object_getClass(root)), object_getClass(root));
    EXPECT_EQ(object_getClass(root)->superclass(), root);
    EXPECT_EQ(object_getClass(nil), nullptr);

    EXPECT_EQ((send<"class", Class>(guitar)), guitar);
    EXPECT_EQ((send<"class", Class>(newGuitar())), guitar);
    EXPECT_TRUE(isEqual(guitar, guitar));
}

TEST(Class, MethodsOfTheClassAreNotThoseOfItsInstances)
{
    const id guitar = newGuitar();
    EXPECT_EQ((send<"family", NSInteger>(guitarClass())), 7) << "inherited through the metaclasses";
    EXPECT_FALSE(respondsTo<"family">(guitar));
    EXPECT_FALSE(respondsTo<"play">(guitarClass()));
    EXPECT_TRUE(respondsTo<"respondsToSelector:">(guitarClass())) << "the root's instance methods are everyone's";
    EXPECT_TRUE((send<"respondsToSelector:", bool>(guitarClass(), sel_registerName("family"))));
}

TEST(Class, AnInstanceMethodAddedToTheRootReachesEveryClassObject)
{
    guitarClass();
    ASSERT_TRUE(class_addMethod(objc_getClass("NSObject"), sel_registerName("eleven"), code<&eleven>(), "q@:"));
    EXPECT_EQ((send<"eleven", NSInteger>(newGuitar())), 11);
    EXPECT_EQ((send<"eleven", NSInteger>(guitarClass())), 11);
    EXPECT_EQ((send<"eleven", NSInteger>(object_getClass(guitarClass()))), 11);
}

TEST(Class, AMethodIsOverriddenAfterTheSubclassExists)
{
    const id guitar = newGuitar();
    const id instrument = newInstrument();
    const SEL play = sel_registerName("play");
    ASSERT_TRUE(class_addMethod(guitarClass(), play, code<&loudPlay>(), "v@:"));
    send<"play", void>(guitar);
    send<"play", void>(instrument);
    EXPECT_EQ(journal(), "loud | play");

    // The superclass changes now; the subclass has its own.
    MSHookMessageEx(instrumentClass(), play, code<&softPlay>(), nullptr);
    send<"play", void>(guitar);
    send<"play", void>(instrument);
    EXPECT_EQ(journal(), "loud | play | loud | soft");
}

TEST(Class, AddMethodRefusesWhatItCannotAdd)
{
    const SEL play = sel_registerName("play");
    const Class cls = instrumentClass();
    const struct {
        const char* why;
        Class cls;
        SEL selector;
        IMP implementation;
        bool added;
    } cases[] {
        { "a nil class", nullptr, play, code<&loudPlay>(), false },
        { "no selector", cls, nullptr, code<&loudPlay>(), false },
        { "no code", cls, sel_registerName("tune"), nullptr, false },
        { "its own method", cls, play, code<&loudPlay>(), false },
        { "a new one", cls, sel_registerName("tune"), code<&loudPlay>(), true },
        { "the same again", cls, sel_registerName("tune"), code<&softPlay>(), false },
        { "an inherited one", guitarClass(), play, code<&loudPlay>(), true },
    };
    for (const auto& each : cases)
        EXPECT_EQ(class_addMethod(each.cls, each.selector, each.implementation, "v@:"), each.added) << each.why;
    send<"play", void>(newInstrument());
    send<"tune", void>(newGuitar());
    EXPECT_EQ(journal(), "play | loud");
}

TEST(Class, AddMethodCopiesTheTypes)
{
    std::string types = "q@:";
    ASSERT_TRUE(class_addMethod(instrumentClass(), sel_registerName("eleven"), code<&eleven>(), types.c_str()));
    types.assign(3, 'x');
    EXPECT_EQ(class_getMethodTypes(guitarClass(), sel_registerName("eleven")), "q@:");
    EXPECT_EQ(class_getMethodTypes(guitarClass(), sel_registerName("scale:times:")), "d@:dQ");
    EXPECT_EQ(class_getMethodTypes(guitarClass(), sel_registerName("unknown")), std::nullopt);
    EXPECT_EQ(class_getMethodTypes(nullptr, sel_registerName("play")), std::nullopt);
    EXPECT_EQ(class_getMethodTypes(guitarClass(), nullptr), std::nullopt);
}

TEST(Class, PropertiesAreDeclaredOnceAndInherited)
{
    const objc_property_attribute_t attributes[] { { "T", "@" }, { "&", "" } };
    EXPECT_FALSE(class_addProperty(nullptr, "label", attributes));
    EXPECT_FALSE(class_addProperty(instrumentClass(), "", attributes));
    EXPECT_TRUE(class_addProperty(instrumentClass(), "label", attributes));
    EXPECT_FALSE(class_addProperty(instrumentClass(), "label", {}));

    const std::optional<Property> inherited = class_getProperty(guitarClass(), "label");
    ASSERT_TRUE(inherited);
    ASSERT_EQ(inherited->attributes.size(), 2U);
    EXPECT_EQ(inherited->attributes[0].name + inherited->attributes[0].value, "T@");

    EXPECT_TRUE(class_addProperty(guitarClass(), "label", {})) << "a subclass may declare it anew";
    EXPECT_TRUE(class_getProperty(guitarClass(), "label")->attributes.empty());
    EXPECT_EQ(class_getProperty(objc_getClass("NSObject"), "label"), std::nullopt);
    EXPECT_EQ(class_getProperty(nullptr, "label"), std::nullopt);
}

TEST(Class, InstanceVariablesAreReadAndWrittenByName)
{
    const id guitar = newGuitar();
    const id tuning = newInstrument();
    EXPECT_EQ(object_getInstanceVariable(guitar, "_tuning"), std::optional<id>(nil)) << "there, and nil";
    EXPECT_TRUE(object_setInstanceVariable(guitar, "_tuning", tuning));
    EXPECT_EQ(object_getInstanceVariable(guitar, "_tuning"), std::optional<id>(tuning));
    EXPECT_EQ(as<Instrument>(guitar)->tuning, tuning);
    EXPECT_EQ(object_getInstanceVariable(guitar, "tuning"), std::nullopt);
    EXPECT_FALSE(object_setInstanceVariable(guitar, "tuning", tuning));
    EXPECT_EQ(object_getInstanceVariable(nil, "_tuning"), std::nullopt);
    EXPECT_FALSE(object_setInstanceVariable(nil, "_tuning", tuning));
    EXPECT_EQ(object_getInstanceVariable(guitarClass(), "_tuning"), std::nullopt) << "a class isn't an instance";
}

NSInteger oldTempo(const id&, SEL)
{
    return 60;
}

NSInteger newTempo(const id&, SEL)
{
    return 120;
}

constexpr MethodDefinition metronomeMethods[] {
    method<"always", &eleven>(),
    method<"tempo", &oldTempo>().until(15),
    method<"tempo", &newTempo>().since(16),
    method<"shake", &eleven>().since(15).until(15),
    classMethod<"shared", &eleven>().since(16),
};
const ClassDefinition Metronome_class { .name = "Metronome", .methods = metronomeMethods, .versions = { 15, 16 } };
const ClassDefinition Pendulum_class { .name = "Pendulum", .superclass = &Metronome_class };

TEST(Class, HasTheMethodsOfItsVersion)
{
    const Class metronome = registerClass(Metronome_class, 15);
    const id object = send<"new">(metronome);
    EXPECT_EQ((send<"tempo", NSInteger>(object)), 60);
    EXPECT_TRUE(respondsTo<"always">(object));
    EXPECT_TRUE(respondsTo<"shake">(object));
    EXPECT_FALSE(respondsTo<"shared">(metronome));
    EXPECT_EQ(registerClass(Metronome_class, 16), metronome) << "what is registered stays as it is";
    EXPECT_EQ((send<"tempo", NSInteger>(object)), 60);
}

TEST(Class, HasTheMethodsOfALaterVersion)
{
    const Class metronome = registerClass(Metronome_class, 16);
    const id object = send<"new">(metronome);
    EXPECT_EQ((send<"tempo", NSInteger>(object)), 120);
    EXPECT_FALSE(respondsTo<"shake">(object));
    EXPECT_TRUE(respondsTo<"shared">(metronome));
}

TEST(Class, DoesNotExistOutsideItsVersionsNorDoItsSubclasses)
{
    EXPECT_EQ(registerClass(Metronome_class, 14), nullptr);
    EXPECT_EQ(registerClass(Metronome_class, 17), nullptr);
    EXPECT_EQ(registerClass(Pendulum_class, 14), nullptr);
    EXPECT_EQ(objc_getClass("Metronome"), nullptr);
    EXPECT_EQ(objc_getClass("Pendulum"), nullptr);
    EXPECT_NE(registerClass(Pendulum_class, 15), nullptr);
    EXPECT_NE(objc_getClass("Metronome"), nullptr) << "the superclass comes with it";
}

TEST(Class, GrowsWithHundredsOfMethods)
{
    const Class cls = instrumentClass();
    const Class subclass = guitarClass();
    for (int i = 0; i < 500; ++i)
        ASSERT_TRUE(class_addMethod(
            cls, sel_registerName("added" + std::to_string(i)), i % 2 ? code<&eleven>() : code<&oldTempo>(), "q@:"));
    const id guitar = newGuitar();
    for (int i = 0; i < 500; ++i) {
        const SEL selector = sel_registerName("added" + std::to_string(i));
        ASSERT_EQ(sendSelector<NSInteger>(guitar, selector), i % 2 ? 11 : 60) << i;
        ASSERT_EQ(class_getMethodTypes(subclass, selector), "q@:");
    }
    EXPECT_FALSE(respondsToSelector(guitar, sel_registerName("added500")));
    send<"play", void>(guitar);
    EXPECT_EQ(journal(), "play");
}

constexpr MethodDefinition strings[] {
    classMethod<"strings", &eleven>(),
    method<"pluck", &softPlay>(),
    method<"strum", &softPlay>().since(13),
};

TEST(Class, TakesOverTheMethodsOfACategoryOnce)
{
    const ClassDefinition category { .name = "Guitar", .methods = strings, .isCategory = true };
    EXPECT_EQ(registerClass(category), nullptr) << "before there is such a class";
    const Class guitar = guitarClass();
    EXPECT_EQ(registerClass(category, 12), guitar);
    EXPECT_EQ((send<"strings", NSInteger>(id(guitar))), 11);
    EXPECT_FALSE(class_respondsToSelector(guitar, sel_registerName("strum")));
    const id one = newGuitar();
    send<"pluck", void>(one);
    MSHookMessageEx(guitar, sel_registerName("pluck"), code<&loudPlay>(), nullptr);
    EXPECT_EQ(registerClass(category, 12), guitar);
    send<"pluck", void>(one);
    EXPECT_EQ(journal(), "soft | loud") << "what was hooked since then stays hooked";
    const ClassDefinition later {
        .name = "Guitar", .methods = strings, .versions = { .first = 14 }, .isCategory = true
    };
    EXPECT_EQ(registerClass(later, 13), nullptr);
}

} // namespace
