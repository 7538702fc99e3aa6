#include "entry/load_time_initialisers.h"

#include "core/late_bound_functions.h"
#include "entry/library_classes.h"
#include "entry/process_role.h"
#include "platform/darwin/images.h"
#include "platform/dispatch/queue.h"
#include "platform/runtime/class.h"

#include <cstddef>
#include <cstdint>

namespace appledger {

using namespace platform;

namespace {

bool isSpringBoard()
{
    return processRole(processFacts()).isSpringBoard;
}

void liftMemoryLimit()
{
    using MemorystatusControl
        = int (*)(std::uint32_t command, int pid, std::uint32_t flags, void* buffer, std::size_t size);
    constexpr std::uint32_t setJetsamTaskLimit = 6;
    const ImageHandle image = dlopen("/usr/lib/libSystem.B.dylib", RTLD_LAZY_MODE);
    if (const auto control = reinterpret_cast<MemorystatusControl>(dlsym(image, "memorystatus_control")))
        control(setJetsamTaskLimit, processIdentifier(), 0, nullptr, 0);
}

} // namespace

LoadFacts currentLoadFacts()
{
    return { processFacts(), [](std::string_view name) { return NSClassFromString(name) != nullptr; } };
}

void initializeTerminationAssertion()
{
    if (isSpringBoard())
        bindTerminationAssertionFunctions();
}

void initializeLibrary()
{
    registerLibraryClasses();
    carryOut(planLoad(currentLoadFacts()));
}

void AL_BypassSpringBoardMemoryLimit()
{
    if (isSpringBoard())
        dispatch_async(dispatch_get_global_queue(QueuePriority::Default), liftMemoryLimit);
}

void initializeTCC()
{
    if (isSpringBoard())
        bindTCCFunctions();
}

void runInitialisers()
{
    initializeTerminationAssertion();
    initializeLibrary();
    AL_BypassSpringBoardMemoryLimit();
    initializeTCC();
}

} // namespace appledger
