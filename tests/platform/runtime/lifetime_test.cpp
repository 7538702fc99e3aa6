#include "platform/foundation/values.h"
#include "platform/runtime/association.h"
#include "platform/runtime/instruments.h"
#include "platform/runtime/weak.h"

#include <gtest/gtest.h>

#include <vector>

using namespace platform;
using namespace instruments;

namespace {

const int key = 0;
const int otherKey = 0;

Original<void()> original_dealloc;

void Instrument_dealloc(const id& self, SEL cmd)
{
    const id reference = self; // a reference taken here keeps nothing alive
    note("dealloc " + std::to_string(send<"volume", NSInteger>(reference)));
    note(objc_getAssociatedObject(self, &key) ? "associated" : "alone");
    original_dealloc(self, cmd);
    note("still " + std::to_string(send<"volume", NSInteger>(self)));
}

TEST(Lifetime, ObjectsGoWithTheirLastReference)
{
    id first = newInstrument();
    id second = first;
    EXPECT_EQ(count(), 1);
    first = second;
    first = nil;
    EXPECT_EQ(count(), 1);
    id third = std::move(second);
    EXPECT_FALSE(second);
    third = nil;
    EXPECT_EQ(count(), 0);
}

TEST(Lifetime, ASendCountsNoReferences)
{
    const id parent = newInstrument();
    send<"setName:", void>(parent, newGuitar());
    EXPECT_EQ(count(), 2);
    send<"setName:", void>(parent, nil);
    EXPECT_EQ(count(), 1);
}

TEST(Lifetime, DeallocCanBeReplacedAndTheObjectOutlivesEveryReplacement)
{
    MSHookMessageEx(
        instrumentClass(), sel_registerName("dealloc"), code<&Instrument_dealloc>(), &original_dealloc.implementation);
    {
        const id guitar = newGuitar();
        objc_setAssociatedObject(guitar, &key, guitarClass(), AssociationPolicy::Retain);
    }
    EXPECT_EQ(journal(), "dealloc 3 | associated | still 3");
    EXPECT_EQ(count(), 0);
}

TEST(Lifetime, ClassesAreNeverDeleted)
{
    id cls = instrumentClass();
    for (int i = 0; i < 3; ++i)
        cls->release();
    cls = nil;
    EXPECT_EQ((send<"family", NSInteger>(instrumentClass())), 7);
}

TEST(Lifetime, ALongChainGoesWithoutADeepStack)
{
    constexpr int links = 300'000;
    id instruments = newInstrument();
    id arrays = array({});
    for (int link = 1; link < links; ++link) {
        const id outer = newInstrument();
        send<"setName:", void>(outer, std::exchange(instruments, outer));
        arrays = array({ arrays });
    }
    EXPECT_EQ(count(), links);
    instruments = nil;
    EXPECT_EQ(count(), 0) << "all have gone when the release returns";
    arrays = nil;
}

Original<void()> original_touchingDealloc;

void touchingDealloc(const id& self, SEL cmd)
{
    NSObject* const held = send<"name">(self).get();
    const int before = count();
    send<"setName:", void>(self, nil);
    if (held && count() == before) {
        note("waits");
        const id touched(held);
        EXPECT_FALSE(Weak<NSObject>(touched).get());
    }
    original_touchingDealloc(self, cmd);
}

TEST(Lifetime, AnObjectThatWaitsForItsTurnInAChainGoesOnce)
{
    MSHookMessageEx(
        guitarClass(), sel_registerName("dealloc"), code<&touchingDealloc>(), &original_touchingDealloc.implementation);
    id chain = newGuitar();
    constexpr int links = 100;
    for (int link = 1; link < links; ++link) {
        const id outer = newGuitar();
        send<"setName:", void>(outer, std::exchange(chain, outer));
    }
    chain = nil;
    EXPECT_EQ(count(), 0);
    EXPECT_NE(journal(), "");
}

/// Answers `copy` with a new object.
class Score final : public NSObject {
public:
    static const ClassDefinition definition;
    int copies = 0;
};

id Score_copy(const id& self, SEL)
{
    const Ref<Score> copied = make<Score>();
    copied->copies = as<Score>(self)->copies + 1;
    return copied;
}

constexpr MethodDefinition scoreMethods[] { method<"copy", &Score_copy>() };
const ClassDefinition Score::definition { .name = "Score", .methods = scoreMethods };

TEST(Association, HoldsByItsPolicy)
{
    const struct {
        AssociationPolicy policy;
        int copies;
        bool held;
    } cases[] {
        { AssociationPolicy::Retain, 0, true },
        { AssociationPolicy::RetainNonatomic, 0, true },
        { AssociationPolicy::Copy, 1, true },
        { AssociationPolicy::CopyNonatomic, 1, true },
        { AssociationPolicy::Assign, 0, false },
    };
    for (const auto& each : cases) {
        const id object = newGuitar();
        const id score = make<Score>();
        objc_setAssociatedObject(object, &key, score, each.policy);
        EXPECT_EQ(as<Score>(objc_getAssociatedObject(object, &key))->copies, each.copies);

        id instrument = newInstrument(); // doesn't answer `copy`
        objc_setAssociatedObject(object, &otherKey, instrument, each.policy);
        EXPECT_EQ(objc_getAssociatedObject(object, &otherKey), instrument);
        EXPECT_EQ(count(), 2);
        instrument = nil;
        EXPECT_EQ(count(), each.held ? 2 : 1);
    }
    EXPECT_EQ(count(), 0);
}

TEST(Association, IsReplacedEndedAndGoesWithTheObject)
{
    id object = newGuitar();
    objc_setAssociatedObject(object, &key, newInstrument(), AssociationPolicy::Retain);
    objc_setAssociatedObject(object, &otherKey, newInstrument(), AssociationPolicy::Retain);
    EXPECT_EQ(count(), 3);
    objc_setAssociatedObject(object, &key, newInstrument(), AssociationPolicy::Retain);
    EXPECT_EQ(count(), 3);
    objc_setAssociatedObject(object, &key, nil, AssociationPolicy::Retain);
    EXPECT_EQ(count(), 2);
    EXPECT_EQ(objc_getAssociatedObject(object, &key), nil);
    EXPECT_NE(objc_getAssociatedObject(object, &otherKey), nil);
    objc_setAssociatedObject(object, &key, nil, AssociationPolicy::Retain);
    object = nil;
    EXPECT_EQ(count(), 0);

    objc_setAssociatedObject(nil, &key, newInstrument(), AssociationPolicy::Retain);
    EXPECT_EQ(objc_getAssociatedObject(nil, &key), nil);
    EXPECT_EQ(count(), 0);
}

Original<void()> original_reenteringDealloc;
id witness;

void reenteringDealloc(const id& self, SEL cmd)
{
    // The runtime must hold no lock of its own here.
    objc_setAssociatedObject(witness, &otherKey, newInstrument(), AssociationPolicy::Retain);
    note(objc_getAssociatedObject(witness, &key) ? "held" : "gone");
    original_reenteringDealloc(self, cmd);
}

TEST(Association, AFormerValuesDeallocMayAssociate)
{
    witness = newInstrument();
    objc_setAssociatedObject(witness, &key, newGuitar(), AssociationPolicy::Retain);
    MSHookMessageEx(guitarClass(), sel_registerName("dealloc"), code<&reenteringDealloc>(),
        &original_reenteringDealloc.implementation);
    objc_setAssociatedObject(witness, &key, newInstrument(), AssociationPolicy::Retain);
    EXPECT_EQ(journal(), "held");

    id holder = newInstrument();
    objc_setAssociatedObject(holder, &key, newGuitar(), AssociationPolicy::Retain);
    holder = nil;
    EXPECT_EQ(journal(), "held | held");
    witness = nil;
    EXPECT_EQ(count(), 0);
}

NSObject* owner = nullptr;

void associatingDealloc(const id& self, SEL cmd)
{
    objc_setAssociatedObject(id(owner), &otherKey, newInstrument(), AssociationPolicy::Retain);
    original_reenteringDealloc(self, cmd);
}

TEST(Association, WhatAValuesDeallocSetsOnItsOwnerGoesWithTheOwner)
{
    MSHookMessageEx(guitarClass(), sel_registerName("dealloc"), code<&associatingDealloc>(),
        &original_reenteringDealloc.implementation);
    id holder = newInstrument();
    owner = holder.get();
    objc_setAssociatedObject(holder, &key, newGuitar(), AssociationPolicy::Retain);
    holder = nil;
    EXPECT_EQ(count(), 0);
    std::vector<id> later;
    for (int index = 0; index < 100; ++index) {
        later.push_back(newInstrument());
        EXPECT_FALSE(objc_getAssociatedObject(later.back(), &otherKey)) << "passed on with the address";
    }
}

} // namespace
