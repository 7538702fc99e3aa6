#pragma once

#include "platform/runtime/object.h"

#include <string>

/// Applications that are kept from running, by whoever holds an assertion for it.

namespace phone {

/// Ends the application, and keeps it from coming up until the assertion is taken back; it has ended when this returns.
/// Any thread; from another than the main thread it waits for that one. `error`, if it isn't null, gets 0.
void* createTerminationAssertion(const void* allocator, const platform::id& bundleIdentifier, int reason, int* error);
void invalidateTerminationAssertion(void* assertion);

/// Assertions end what runs in this process, from here on: it is SpringBoard's main thread that calls.
void enforceTerminationAssertions();

/// Why the application can't run now, for people: it is held down, or only its data are left. "" when it can. Main
/// thread.
std::string whyNotRunnable(const platform::id& application);

} // namespace phone
