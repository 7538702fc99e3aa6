#pragma once

#include "platform/runtime/object.h"

/// The functions of the framework that keeps what applications may use of the owner's: his photos, his camera.

namespace phone {

/// The service that stands for all.
inline constexpr const char* everyService = "kTCCServiceAll";

/// An array with a dictionary for each decision about the bundle's application: `kTCCInfoService` and
/// `kTCCInfoGranted`. The caller owns it. Nil for a bundle without an identifier.
platform::id TCCAccessCopyInformationForBundle(const platform::id& bundle);

/// Forgets the decision about that service, or about all. 1 when that is kept.
int TCCAccessResetForBundle(const platform::id& service, const platform::id& bundle);

} // namespace phone
