#include "platform/runtime/instruments.h"

#include <atomic>

using namespace platform;

namespace instruments {

namespace {

std::atomic<int> destroyed = 0;
std::atomic<int> made = 0;

NSInteger Instrument_family(const id&, SEL)
{
    return 7;
}

NSObject* allocateInstrument()
{
    ++made;
    return new Instrument;
}

NSObject* allocateGuitar()
{
    ++made;
    return new Guitar;
}

constexpr MethodDefinition instrumentMethods[] {
    classMethod<"family", &Instrument_family>(),
    method<"isLouderThan:", &Instrument::isLouderThan>(),
    getter<"name", &Instrument::name>(),
    method<"play", &Instrument::play>(),
    method<"scale:times:", &Instrument::scale>(),
    setter<"setName:", &Instrument::name>(),
    setter<"setVolume:", &Instrument::volume>(),
    getter<"volume", &Instrument::volume>(),
};

constexpr InstanceVariableDefinition instrumentVariables[] { instanceVariable<"_tuning", &Instrument::tuning>() };

} // namespace

std::string& journal()
{
    static std::string text;
    return text;
}

void note(std::string_view what)
{
    if (!journal().empty())
        journal() += " | ";
    journal() += what;
}

Instrument::~Instrument()
{
    ++destroyed;
}

void Instrument::play()
{
    note("play");
}

bool Instrument::isLouderThan(const id& other) const
{
    return volume > send<"volume", NSInteger>(other);
}

double Instrument::scale(double factor, NSUInteger times) const
{
    return static_cast<double>(volume) * factor * static_cast<double>(times);
}

const ClassDefinition Instrument_class {
    .name = "Instrument",
    .allocate = allocateInstrument,
    .methods = instrumentMethods,
    .instanceVariables = instrumentVariables,
};

const ClassDefinition Guitar_class { .name = "Guitar", .superclass = &Instrument_class, .allocate = allocateGuitar };

Class instrumentClass()
{
    return registerClass(Instrument_class);
}

Class guitarClass()
{
    return registerClass(Guitar_class);
}

id newInstrument()
{
    return send<"new">(instrumentClass());
}

id newGuitar()
{
    return send<"new">(guitarClass());
}

int count()
{
    return made - destroyed;
}

} // namespace instruments
