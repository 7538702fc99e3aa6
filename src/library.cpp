#include "entry/load_time_initialisers.h"

// The one file that only the dynamic library holds.

__attribute__((constructor)) static void loadAppLedger()
{
    appledger::runInitialisers();
}
