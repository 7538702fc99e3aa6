#include "core/policy_cache.h"
#include "platform/foundation/values.h"

#include <benchmark/benchmark.h>

#include <atomic>
#include <string>
#include <vector>

/// Whether a list holds an application: the policy cache, beside a raw atomic pointer to the same hash set
/// that is never freed. Time is that of one question, half of them about applications that are listed.

using namespace appledger;
using namespace platform;

namespace {

struct Identifiers {
    explicit Identifiers(std::size_t count)
    {
        for (std::size_t index = 0; index < 2 * count; ++index)
            texts.push_back("com.example.application" + std::to_string(index * 7919));
        for (std::size_t index = 0; index < texts.size(); index += 2)
            listed.emplace_back(texts[index]);
    }

    std::vector<std::string> texts;
    std::vector<std::string_view> listed;
};

template <class Contains> void ask(benchmark::State& state, const Identifiers& identifiers, const Contains& contains)
{
    std::size_t next = static_cast<std::size_t>(state.thread_index()) * 13;
    for (auto _ : state) {
        if (++next >= identifiers.texts.size())
            next = 0;
        benchmark::DoNotOptimize(contains(identifiers.texts[next]));
    }
}

const Identifiers& identifiersOf(std::int64_t count)
{
    static const Identifiers ten(10);
    static const Identifiers hundred(100);
    static const Identifiers thousand(1000);
    return count == 10 ? ten : count == 100 ? hundred : thousand;
}

void policyCache(benchmark::State& state)
{
    const Identifiers& identifiers = identifiersOf(state.range(0));
    static PolicyCache cache;
    if (state.thread_index() == 0) {
        std::vector<id> items;
        for (const std::string_view identifier : identifiers.listed)
            items.push_back(string(identifier));
        cache.assign(array(std::move(items)));
    }
    ask(state, identifiers, [](const std::string& identifier) { return cache.contains(identifier); });
}

void rawPointer(benchmark::State& state)
{
    const Identifiers& identifiers = identifiersOf(state.range(0));
    static std::atomic<const StringSet*> pointer;
    if (state.thread_index() == 0)
        pointer.store(new StringSet(identifiers.listed), std::memory_order_release);
    ask(state, identifiers,
        [](const std::string& identifier) { return pointer.load(std::memory_order_acquire)->contains(identifier); });
}

BENCHMARK(policyCache)->Arg(10)->Arg(100)->Arg(1000)->Threads(1)->Threads(2);
BENCHMARK(rawPointer)->Arg(10)->Arg(100)->Arg(1000)->Threads(1)->Threads(2);

} // namespace
