#include "entry/library_classes.h"

#include "record/app_ledger.h"

namespace appledger {

using namespace platform;

namespace {

constexpr const ClassDefinition* classes[] {
    // sorted
    &ALAppLedger::definition, &ALAppLedgerGroup::definition,
    // end sorted
};

} // namespace

void registerLibraryClasses()
{
    for (const ClassDefinition* definition : classes)
        registerClass(*definition);
}

} // namespace appledger
