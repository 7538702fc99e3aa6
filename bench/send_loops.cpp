#include "send_loops.h"

#include "platform/runtime/hook.h"
#include "platform/runtime/message.h"

using namespace platform;

namespace {

/// What most replacements are that let a call through: the original, called last.
template <int Level> struct Pass {
    static inline Original<NSInteger()> original;
    static NSInteger level(const id& self, SEL cmd) { return original(self, cmd); }

    static void install(Class cls)
    {
        MSHookMessageEx(cls, selector<"level">(), reinterpret_cast<IMP>(&level), &original.implementation);
    }
};

/// A replacement that works on the answer, so that the call isn't its last step.
template <int Level> struct Add {
    static inline Original<NSInteger()> original;
    static NSInteger level(const id& self, SEL cmd) { return original(self, cmd) + Level; }

    static void install(Class cls)
    {
        MSHookMessageEx(cls, selector<"level">(), reinterpret_cast<IMP>(&level), &original.implementation);
    }
};

} // namespace

namespace LOOPS {

long sendVolume(const id& receiver, std::size_t times)
{
    long sum = 0;
    for (std::size_t i = 0; i < times; ++i)
        sum += send<"volume", NSInteger>(receiver);
    return sum;
}

long sendLevel(const id& receiver, std::size_t times)
{
    long sum = 0;
    for (std::size_t i = 0; i < times; ++i)
        sum += send<"level", NSInteger>(receiver);
    return sum;
}

long askVolume(const id& receiver, std::size_t times)
{
    long sum = 0;
    for (std::size_t i = 0; i < times; ++i)
        sum += ask<"volume", NSInteger>(receiver).value_or(1);
    return sum;
}

long askUnknown(const id& receiver, std::size_t times)
{
    long sum = 0;
    for (std::size_t i = 0; i < times; ++i)
        sum += ask<"unknownToAll", NSInteger>(receiver).value_or(1);
    return sum;
}

void hookLevel(Class cls, int levels)
{
    // Half of them pass the call on, half work on the answer.
    void (*const installers[])(Class) { Add<1>::install, Pass<2>::install, Add<3>::install, Pass<4>::install };
    for (int i = 0; i < levels; ++i)
        installers[i](cls);
}

} // namespace LOOPS
