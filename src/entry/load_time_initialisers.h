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

} // namespace appledger
