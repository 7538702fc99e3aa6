#pragma once

#include "platform/runtime/object.h"

#include <cstddef>

/// Loops of sends, compiled once into the executable (inExecutable) and once into a shared library
/// (inLibrary). Each returns the sum of the answers.

#define DECLARE_LOOPS(where)                                                                                           \
    namespace where {                                                                                                  \
    [[gnu::visibility("default")]] long sendVolume(const platform::id& receiver, std::size_t times);                   \
    [[gnu::visibility("default")]] long sendLevel(const platform::id& receiver, std::size_t times);                    \
    [[gnu::visibility("default")]] long askVolume(const platform::id& receiver, std::size_t times);                    \
    [[gnu::visibility("default")]] long askUnknown(const platform::id& receiver, std::size_t times);                   \
    [[gnu::visibility("default")]] void hookLevel(platform::Class cls, int levels);                                    \
    }

DECLARE_LOOPS(inExecutable)
DECLARE_LOOPS(inLibrary)
