#pragma once

#include "phone/supervisor/phone_directory.h"

#include <optional>

/// When something about a phone ends by itself: a file in the phone's folder, written by the command that knows what,
/// and watched by the supervisor, which starts that command again when it is time.

namespace phone {

/// Seconds since 1970. Empty when nothing is to end, or when the file can't be read.
std::optional<double> readPolicyDeadline(const PhoneDirectory& directory);

/// 0, or an `errno`.
[[nodiscard]] int writePolicyDeadline(const PhoneDirectory& directory, std::optional<double> deadline);

} // namespace phone
