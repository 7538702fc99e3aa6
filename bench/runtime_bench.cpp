#include "gnu_peer.h"
#include "send_loops.h"

#include "platform/runtime/class_definition.h"
#include "platform/runtime/message.h"

#include <benchmark/benchmark.h>

#include <string>

/// One message: by selector here, beside the GNU Objective-C runtime's lookup and call; with 200 other
/// methods in the class; and through replacements. Time is that of one send.

using namespace platform;

namespace {

constexpr std::size_t batch = 4096;

class Speaker final : public NSObject {
public:
    NSInteger volume = 3;
};

constexpr MethodDefinition speakerMethods[] {
    getter<"volume", &Speaker::volume>(),
    getter<"level", &Speaker::volume>(),
};

Class newClass(bool crowded)
{
    static int number = 0;
    const auto* const name = new std::string("Speaker" + std::to_string(number++));
    const auto* const definition
        = new ClassDefinition { .name = *name, .allocate = allocate<Speaker>, .methods = speakerMethods };
    const Class cls = registerClass(*definition);
    if (crowded)
        for (int i = 0; i < 200; ++i)
            class_addMethod(
                cls, sel_registerName("other" + std::to_string(i)), speakerMethods[0].implementation(), "q@:");
    return cls;
}

template <class Loop> void measure(benchmark::State& state, const Loop& loop)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(loop());
    state.counters["each"]
        = benchmark::Counter(batch, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

using Loop = long (*)(const id&, std::size_t);

void sends(benchmark::State& state, Loop loop, bool crowded)
{
    const id receiver = send<"new">(newClass(crowded));
    measure(state, [&] { return loop(receiver, batch); });
}

void gnuSends(benchmark::State& state, bool crowded)
{
    void* const receiver = gnuPeerObject(crowded);
    measure(state, [&] { return gnuPeerSendVolume(receiver, batch); });
}

void hookedSends(benchmark::State& state, Loop loop, void (*hook)(Class, int))
{
    const Class cls = newClass(true);
    hook(cls, static_cast<int>(state.range(0)));
    const id receiver = send<"new">(cls);
    measure(state, [&] { return loop(receiver, batch); });
}

BENCHMARK_CAPTURE(gnuSends, alone, false);
BENCHMARK_CAPTURE(gnuSends, crowded, true);
BENCHMARK_CAPTURE(sends, executable_alone, inExecutable::sendVolume, false);
BENCHMARK_CAPTURE(sends, executable_crowded, inExecutable::sendVolume, true);
BENCHMARK_CAPTURE(sends, library_alone, inLibrary::sendVolume, false);
BENCHMARK_CAPTURE(sends, library_crowded, inLibrary::sendVolume, true);
BENCHMARK_CAPTURE(sends, library_ask, inLibrary::askVolume, true);
BENCHMARK_CAPTURE(sends, library_ask_unanswered, inLibrary::askUnknown, true);
BENCHMARK_CAPTURE(hookedSends, executable, inExecutable::sendLevel, inExecutable::hookLevel)
    ->Arg(0)
    ->Arg(1)
    ->Arg(2)
    ->Arg(4);
BENCHMARK_CAPTURE(hookedSends, library, inLibrary::sendLevel, inLibrary::hookLevel)->Arg(0)->Arg(1)->Arg(2)->Arg(4);

} // namespace
