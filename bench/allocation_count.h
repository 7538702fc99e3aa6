#pragma once

#include <cstddef>

/// How often this program has called operator new.
std::size_t allocationCount() noexcept;
