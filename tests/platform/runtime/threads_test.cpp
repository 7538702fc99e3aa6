#include "platform/runtime/association.h"
#include "platform/runtime/instruments.h"
#include "platform/runtime/reclamation.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <latch>
#include <thread>
#include <vector>

using namespace platform;
using namespace instruments;

namespace {

constexpr int levels = 40;
std::array<Original<NSInteger()>, levels> originals;

/// Level N adds 100 to what it replaced.
template <int N> NSInteger louder(const id& self, SEL cmd)
{
    return originals[N](self, cmd) + 100;
}

template <int... N> std::array<IMP, levels> louderFunctions(std::integer_sequence<int, N...>)
{
    return { reinterpret_cast<IMP>(&louder<N>)... };
}

NSInteger one(const id&, SEL)
{
    return 1;
}

TEST(Threads, SendWhileMethodsAreReplacedAndAdded)
{
    const id guitar = newGuitar();
    const SEL late = sel_registerName("added39");
    std::atomic<bool> done = false;
    std::atomic<int> wrong = 0;
    std::latch started(3);
    const auto sender = [&] {
        started.count_down();
        NSInteger last = 0;
        while (!done) {
            const NSInteger volume = send<"volume", NSInteger>(guitar);
            if (volume % 100 != 3 || volume < last)
                ++wrong;
            last = volume;
            if (respondsToSelector(guitar, late) && sendSelector<NSInteger>(guitar, late) != 1)
                ++wrong;
            if (class_getMethodTypes(guitarClass(), selector<"volume">()) != "q@:")
                ++wrong;
        }
    };
    std::thread first(sender);
    std::thread second(sender);
    started.arrive_and_wait();
    const auto functions = louderFunctions(std::make_integer_sequence<int, levels>());
    for (int level = 0; level < levels; ++level) {
        MSHookMessageEx(instrumentClass(), selector<"volume">(), functions[level], &originals[level].implementation);
        class_addMethod(instrumentClass(), sel_registerName("added" + std::to_string(level)), code<&one>(), "q@:");
        std::this_thread::yield();
    }
    done = true;
    first.join();
    second.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ((send<"volume", NSInteger>(guitar)), 3 + 100 * levels);
}

TEST(Threads, RegisterAndLookUpClassesAndSelectors)
{
    const auto worker = [](int number) {
        for (int i = 0; i < 100; ++i) {
            const Class guitar = guitarClass();
            EXPECT_EQ(objc_getClass("Guitar"), guitar);
            EXPECT_EQ(sel_registerName("shared" + std::to_string(i)), sel_registerName("shared" + std::to_string(i)));
            class_addMethod(guitar, sel_registerName("shared" + std::to_string(i)), code<&one>(), "q@:");
            class_addProperty(guitar, "property" + std::to_string(i * 2 + number), {});
        }
    };
    std::thread first(worker, 0);
    std::thread second(worker, 1);
    first.join();
    second.join();
    EXPECT_EQ((send<"shared99", NSInteger>(newGuitar())), 1);
    EXPECT_TRUE(class_getProperty(guitarClass(), "property199"));
}

TEST(Threads, ShareObjectsAndTheirAssociations)
{
    static const int key = 0;
    {
        const id shared = newInstrument();
        const auto worker = [shared] {
            for (int i = 0; i < 500; ++i) {
                objc_setAssociatedObject(shared, &key, newGuitar(), AssociationPolicy::Retain);
                const id present = objc_getAssociatedObject(shared, &key);
                EXPECT_EQ((ask<"volume", NSInteger>(present)), 3);
            }
        };
        std::thread first(worker);
        std::thread second(worker);
        first.join();
        second.join();
    }
    EXPECT_EQ(count(), 0);
}

std::atomic<int> living = 0;

/// Two fields that agree as long as the value lives.
struct Value {
    explicit Value(int number)
        : number(number)
        , again(number)
    {
        ++living;
    }
    ~Value()
    {
        number = -1;
        again = -2;
        --living;
    }
    int number;
    int again;
};

TEST(Reclamation, AValueStaysWhileASectionMayHoldIt)
{
    {
        Published<Value> published;
        published.assign(new Value(1));
        {
            const ReadSection outer;
            const Value* const held = published.load();
            {
                const ReadSection inner;
                published.assign(new Value(2));
            }
            EXPECT_EQ(living, 2) << "the inner section's end isn't the outer one's";
            {
                const ReadSection inner;
                published.assign(new Value(3));
            }
            EXPECT_EQ(living, 3) << "the inner section's beginning isn't the outer one's";
            EXPECT_EQ(held->number, 1);
            EXPECT_EQ(published.load()->number, 3);
        }
        published.assign(new Value(4));
        EXPECT_EQ(living, 1);
        published.assign(nullptr);
        EXPECT_EQ(living, 0);
        EXPECT_EQ(published.load(), nullptr);
    }
    EXPECT_EQ(living, 0);
}

TEST(Reclamation, ASectionThatBeganLaterHoldsNothingBack)
{
    Published<Value> published;
    std::latch entered(1);
    std::latch replaced(1);
    published.assign(new Value(1));
    std::thread reader([&] {
        {
            const ReadSection section;
            EXPECT_EQ(published.load()->number, 1);
            entered.count_down();
            replaced.wait();
        }
        const ReadSection later;
        EXPECT_EQ(published.load()->number, 2);
        published.assign(new Value(3)); // in a section of its own that can still reach value 2, not value 1
        EXPECT_EQ(living, 2);
    });
    entered.wait();
    published.assign(new Value(2));
    EXPECT_EQ(living, 2);
    replaced.count_down();
    reader.join();
    published.assign(nullptr);
    EXPECT_EQ(living, 0);
}

/// Two readers in loops while a writer replaces.
void readWhileAWriterReplaces()
{
    constexpr int enough = 3000;
    int replaced = 0;
    std::atomic<bool> done = false;
    std::atomic<int> wrong = 0;
    {
        Published<Value> published;
        published.assign(new Value(0));
        std::latch started(3);
        const auto reader = [&] {
            started.count_down();
            int last = 0;
            while (!done) {
                const ReadSection section;
                const Value* const value = published.load();
                if (value->number != value->again || value->number < last)
                    ++wrong;
                last = value->number;
            }
        };
        std::thread first(reader);
        std::thread second(reader);
        started.arrive_and_wait();
        // At least until a value has been freed while the readers read.
        while (replaced < enough || living > replaced)
            published.assign(new Value(++replaced));
        done = true;
        first.join();
        second.join();
        EXPECT_EQ(published.load()->number, replaced);
        published.assign(nullptr);
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(living, 0);
}

TEST(Reclamation, ReadersNeverSeeAFreedValueAndEverythingIsFreed)
{
    readWhileAWriterReplaces();
}

TEST(Reclamation, WorksWhereTheKernelDoesNotOrderReaders)
{
    detail::writersFenceReaders = false;
    readWhileAWriterReplaces();
}

TEST(Reclamation, ThreadsThatEndHoldNothingBack)
{
    Published<Value> published;
    published.assign(new Value(0));
    for (int i = 1; i <= 50; ++i) {
        std::thread([&] {
            const ReadSection section;
            EXPECT_EQ(published.load()->number, i - 1);
        }).join();
        published.assign(new Value(i));
        EXPECT_EQ(living, 1);
    }
    published.assign(nullptr);
}

/// A value whose destructor retires another.
struct Chained {
    ~Chained()
    {
        if (next)
            retire(next, [](const void* value) { delete static_cast<const Chained*>(value); });
        --living;
    }
    Chained* next = nullptr;
};

TEST(Reclamation, ADestructorMayRetireInTurn)
{
    living = 2;
    Published<Chained> published;
    published.assign(new Chained { new Chained });
    published.assign(nullptr);
    EXPECT_EQ(living, 0);
}

} // namespace
