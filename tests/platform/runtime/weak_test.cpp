#include "platform/runtime/weak.h"

#include "platform/runtime/association.h"
#include "platform/runtime/instruments.h"

#include <gtest/gtest.h>

#include <atomic>
#include <barrier>
#include <latch>
#include <thread>
#include <vector>

using namespace platform;
using namespace instruments;

namespace {

Weak<NSObject> watched;
Weak<NSObject> takenInDealloc;
Original<void()> original_dealloc;

void Instrument_dealloc(const id& self, SEL cmd)
{
    note(watched.get() ? "seen" : "nil");
    takenInDealloc = Weak<NSObject>(self);
    note(takenInDealloc == Weak<NSObject>() ? "to nobody" : "to a ghost");
    original_dealloc(self, cmd);
}

TEST(Weak, KeepsNothingAndIsNilBeforeDealloc)
{
    MSHookMessageEx(
        instrumentClass(), sel_registerName("dealloc"), code<&Instrument_dealloc>(), &original_dealloc.implementation);
    id guitar = newGuitar();
    watched = Weak<NSObject>(guitar);
    const Weak<NSObject> copy = watched;
    EXPECT_EQ(watched.get(), guitar);
    EXPECT_EQ(count(), 1);
    id another = watched;
    guitar = nil;
    EXPECT_EQ(copy.get(), another) << "a reference that was read keeps the object";
    another = nil;
    EXPECT_EQ(journal(), "nil | to nobody");
    EXPECT_FALSE(copy.get());
    EXPECT_FALSE(takenInDealloc.get());
    EXPECT_EQ(count(), 0);
}

TEST(Weak, KnowsItsObjectFromTheNextOneAtItsAddress)
{
    id object = newInstrument();
    const Weak<NSObject> former(object);
    EXPECT_TRUE(former == Weak<NSObject>(object));
    object = nil;
    std::vector<id> later;
    for (int index = 0; index < 100; ++index) {
        later.push_back(newInstrument());
        EXPECT_FALSE(former == Weak<NSObject>(later.back()));
    }
    EXPECT_FALSE(former.get());
    EXPECT_TRUE(Weak<NSObject>() == Weak<NSObject>(nullptr));
}

TEST(Weak, ClassesNeverGo)
{
    const Weak<NSObject> cls { id(instrumentClass()) };
    id(instrumentClass())->release();
    EXPECT_EQ(cls.get(), id(instrumentClass()));
}

TEST(Weak, IsReadWhileAnotherThreadDropsTheLastReference)
{
    constexpr int rounds = 3000;
    std::vector<id> objects(rounds);
    std::vector<Weak<NSObject>> references;
    for (id& object : objects) {
        object = newGuitar();
        references.emplace_back(object);
    }
    std::atomic<int> wrong = 0;
    std::atomic<int> seen = 0;
    std::barrier together(3);
    const auto reader = [&] {
        for (const auto& reference : references) {
            together.arrive_and_wait();
            while (const id object = reference) {
                wrong += send<"volume", NSInteger>(object) == 3 ? 0 : 1;
                ++seen;
            }
        }
    };
    std::thread first(reader);
    std::thread second(reader);
    for (id& object : objects) {
        together.arrive_and_wait();
        object = nil;
    }
    first.join();
    second.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(count(), 0) << "what a reader held last is released by it";
}

TEST(Weak, IsMadeFromSeveralThreadsAtOnce)
{
    for (int round = 0; round < 200; ++round) {
        id object = newGuitar();
        std::latch together(2);
        Weak<NSObject> left;
        const auto make = [&together, object](Weak<NSObject>& reference) {
            together.arrive_and_wait();
            reference = Weak<NSObject>(object);
        };
        std::thread other([&] { make(left); });
        Weak<NSObject> right;
        make(right);
        other.join();
        EXPECT_TRUE(left == right);
        object = nil;
    }
    EXPECT_EQ(count(), 0);
}

} // namespace
