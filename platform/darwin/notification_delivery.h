#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Between the notify center and the bus.

namespace platform::detail {

/// A post's place among this process's posts and its observers' beginnings.
using PostNumber = std::uint64_t;

/// The number of a post that is made, or that comes in, now. Any thread.
PostNumber nextPostNumber();

/// Queues the callbacks of the observers of that name that were there before the post. Any thread.
void deliverNotification(std::string name, PostNumber number);

/// Posts to all processes, this one included; false without a connection. Any thread.
bool postOnBus(const std::string& name, PostNumber number);

/// True for the names that can be posted.
bool isPostableName(std::string_view name) noexcept;

} // namespace platform::detail
