#pragma once

#include "platform/runtime/encoding.h"

#include <set>

namespace platform {

struct NSRange {
    NSUInteger location = 0;
    NSUInteger length = 0;
    friend bool operator==(const NSRange&, const NSRange&) = default;
};
template <> inline constexpr std::string_view typeEncoding<NSRange> = "{_NSRange=QQ}";

/// An NSIndexSet.
id indexSet(std::set<NSUInteger> indexes);

/// In their order; none of nil and of what is no index set.
std::set<NSUInteger> indexesOf(const id& object);

} // namespace platform
