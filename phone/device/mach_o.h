#pragma once

#include "platform/runtime/object.h"

#include <string>
#include <string_view>

namespace phone {

enum class Encryption { Absent, Unset, Set };

/// The bytes of a small executable for 64-bit ARM in the Mach-O format: header, a __PAGEZERO and a __TEXT
/// segment, the dynamic linker's name, unless absent, the encryption information with its flag as
/// given, and a signature that holds the entitlements, an XML property list, and nothing else. (Magic numbers, command
/// numbers and structures are those of the format's public description.)
std::string machOExecutable(Encryption encryption, std::string_view entitlements);

/// The entitlements in the signature of an executable of the device: of a universal one, of its first slice. Nil when
/// it has none or can't be followed. Little-endian files alone, as all phones have them.
platform::id entitlementsOfExecutable(std::string_view path);

} // namespace phone
