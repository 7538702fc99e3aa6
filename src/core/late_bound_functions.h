#pragma once

#include "platform/runtime/object.h"

/// Private functions of the system that are looked up by name at load. Each does nothing, and returns
/// null, nil or zero, where the system doesn't have it or before it is bound.

namespace appledger {

using SBSApplicationTerminationAssertionRef = void*;

SBSApplicationTerminationAssertionRef SBSApplicationTerminationAssertionCreateWithError(
    const void* allocator, const platform::id& bundleIdentifier, int reason, int* error);
void SBSApplicationTerminationAssertionInvalidate(SBSApplicationTerminationAssertionRef assertion);

int TCCAccessResetForBundle(const platform::id& service, const platform::id& bundle);
platform::id TCCAccessCopyInformationForBundle(const platform::id& bundle); ///< a copy of what the system gave

/// Opens the image that holds the functions on this version, and looks them up. The image stays open.
void bindTerminationAssertionFunctions();
void bindTCCFunctions();

} // namespace appledger
