#pragma once

#include <string>

namespace phone {

enum class Encryption { Absent, Unset, Set };

/// The bytes of a small executable for 64-bit ARM in the Mach-O format: header, a __PAGEZERO and a __TEXT
/// segment, the dynamic linker's name, and, unless absent, the encryption information with its flag as
/// given. (Magic numbers, command numbers and structures are those of the format's public description.)
std::string machOExecutable(Encryption encryption);

} // namespace phone
