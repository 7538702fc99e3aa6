#pragma once

#include "platform/runtime/class_definition.h"

#include <span>

namespace platform {

/// Every class of this folder, sorted by name, for a host that registers its classes before anything can
/// look them up. (A value that is made registers its own class.)
std::span<const ClassDefinition* const> foundationClasses() noexcept;

} // namespace platform
