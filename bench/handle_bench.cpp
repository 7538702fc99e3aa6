#include "platform/handles/UILabel.h"
#include "platform/runtime/class_definition.h"

#include <benchmark/benchmark.h>

/// One message, sent by its selector and through a handle: a number's getter, a structure's, an object's, and a setter.
/// The class answers from fields, so that the call itself is what is measured. Time is that of one message.

using namespace platform;

namespace {

constexpr std::size_t batch = 4096;

class Peer final : public NSObject {
public:
    CGFloat alpha = 0.5;
    CGRect bounds { { 1, 2 }, { 3, 4 } };
    id text {};
    NSInteger lines = 1;
};

constexpr MethodDefinition methods[] {
    getter<"alpha", &Peer::alpha>(),
    getter<"bounds", &Peer::bounds>(),
    setter<"setNumberOfLines:", &Peer::lines>(),
    getter<"text", &Peer::text>(),
};
const ClassDefinition Peer_class { .name = "UILabel", .allocate = allocate<Peer>, .methods = methods };

template <class Message> void measure(benchmark::State& state, const Message& message)
{
    const id object = send<"new">(registerClass(Peer_class));
    static_cast<Peer&>(*object).text = send<"new">(registerClass(Peer_class));
    const UILabel label(object);
    for (auto _ : state)
        for (std::size_t count = 0; count < batch; ++count)
            message(object, label);
    state.counters["each"]
        = benchmark::Counter(batch, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

#define SENT(name, expression)                                                                                         \
    void name(benchmark::State& state)                                                                                 \
    {                                                                                                                  \
        measure(state, [](const id& object, const UILabel&) { expression; });                                          \
    }                                                                                                                  \
    BENCHMARK(name)
#define HANDLED(name, expression)                                                                                      \
    void name(benchmark::State& state)                                                                                 \
    {                                                                                                                  \
        measure(state, [](const id&, const UILabel& label) { expression; });                                           \
    }                                                                                                                  \
    BENCHMARK(name)

SENT(numberSent, benchmark::DoNotOptimize(send<"alpha", CGFloat>(object)));
HANDLED(numberThroughHandle, benchmark::DoNotOptimize(label.alpha()));
SENT(structureSent, benchmark::DoNotOptimize(send<"bounds", CGRect>(object)));
HANDLED(structureThroughHandle, benchmark::DoNotOptimize(label.bounds()));
SENT(objectSent, benchmark::DoNotOptimize(send<"text">(object).get()));
HANDLED(objectThroughHandle, benchmark::DoNotOptimize(label.text().get()));
SENT(setterSent, (send<"setNumberOfLines:", void>(object, NSInteger { 2 })));
HANDLED(setterThroughHandle, label.setNumberOfLines(2));

} // namespace
