#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"
#include "platform/runtime/weak.h"

#include <benchmark/benchmark.h>

/// What an object's life costs: one reference more and less, an object that is made and goes, and the same where weak
/// references look on.

using namespace platform;

namespace {

class Plain final : public NSObject {
public:
    static const ClassDefinition definition;
};

const ClassDefinition Plain::definition { .name = "Plain", .allocate = allocate<Plain> };

void retainAndRelease(benchmark::State& state)
{
    const id object = make<Plain>();
    for (auto _ : state) {
        id another = object;
        benchmark::DoNotOptimize(another);
    }
}

void makeAndRelease(benchmark::State& state)
{
    for (auto _ : state) {
        Ref<Plain> object = make<Plain>();
        benchmark::DoNotOptimize(object);
    }
}

void readWeakReference(benchmark::State& state)
{
    const id object = make<Plain>();
    const Weak<NSObject> reference(object);
    for (auto _ : state) {
        id read = reference;
        benchmark::DoNotOptimize(read);
    }
}

void makeReferToWeaklyAndRelease(benchmark::State& state)
{
    for (auto _ : state) {
        Ref<Plain> object = make<Plain>();
        const Weak<Plain> reference(object);
        benchmark::DoNotOptimize(object);
    }
}

BENCHMARK(retainAndRelease);
BENCHMARK(makeAndRelease);
BENCHMARK(readWeakReference);
BENCHMARK(makeReferToWeaklyAndRelease);

} // namespace
