#pragma once

#include "entry/load_plan.h"

namespace appledger {

/// The facts of this process and of the classes in it.
LoadFacts currentLoadFacts();

// The four initialisers, in the order in which they run.
void initializeTerminationAssertion();
void initializeLibrary();
void AL_BypassSpringBoardMemoryLimit();
void initializeTCC();

/// All four, when the library is loaded: one call, so that their order is the code's and not the linker's.
void runInitialisers();

} // namespace appledger
