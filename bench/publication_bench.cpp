#include "platform/runtime/reclamation.h"

#include <benchmark/benchmark.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <shared_mutex>

/// Reading a value that another thread may replace: Published in a read section, beside a raw atomic
/// pointer (which can't be freed), a shared count and a lock. One reader and two.

using namespace platform;

namespace {

const int* const value = new int(3);
std::atomic<const int*> rawPointer { value };
std::atomic<std::shared_ptr<const int>> sharedPointer { std::make_shared<const int>(3) };
std::shared_mutex mutex;

Published<int>& published()
{
    static Published<int> instance;
    static const bool assigned = (instance.assign(new int(3)), true);
    static_cast<void>(assigned);
    return instance;
}

void readRawPointer(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(*rawPointer.load(std::memory_order_acquire));
}

void readPublished(benchmark::State& state)
{
    Published<int>& instance = published();
    for (auto _ : state) {
        const ReadSection section;
        benchmark::DoNotOptimize(*instance.load());
    }
}

void readPublishedInsideASection(benchmark::State& state)
{
    Published<int>& instance = published();
    const ReadSection outer;
    for (auto _ : state) {
        const ReadSection section;
        benchmark::DoNotOptimize(*instance.load());
    }
}

void readSharedPointer(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(*sharedPointer.load(std::memory_order_acquire));
}

void readUnderSharedLock(benchmark::State& state)
{
    for (auto _ : state) {
        const std::shared_lock lock(mutex);
        benchmark::DoNotOptimize(*value);
    }
}

void replacePublished(benchmark::State& state)
{
    Published<int>& instance = published();
    for (auto _ : state)
        instance.assign(new int(4));
}

BENCHMARK(readRawPointer)->Threads(1)->Threads(2)->UseRealTime();
BENCHMARK(readPublished)->Threads(1)->Threads(2)->UseRealTime();
BENCHMARK(readPublishedInsideASection)->Threads(1)->Threads(2)->UseRealTime();
BENCHMARK(readSharedPointer)->Threads(1)->Threads(2)->UseRealTime();
BENCHMARK(readUnderSharedLock)->Threads(1)->Threads(2)->UseRealTime();
BENCHMARK(replacePublished);

} // namespace
