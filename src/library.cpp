#include "entry/load_time_initialisers.h"

// The one file that only the dynamic library holds: loading it runs the initialisers. One entry calls all
// four, so that their order is the code's and not the linker's.

__attribute__((constructor)) static void loadAppLedger()
{
    appledger::initializeTerminationAssertion();
    appledger::initializeLibrary();
    appledger::AL_BypassSpringBoardMemoryLimit();
    appledger::initializeTCC();
}
