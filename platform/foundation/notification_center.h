#pragma once

#include "platform/runtime/object.h"

#include <cstdint>
#include <functional>
#include <string_view>

namespace platform {

/// The default NSNotificationCenter: notifications inside one process, delivered at once, on the posting
/// thread, in the order in which the observers were added. An observer may add and remove observers.
///
/// `[NSNotificationCenter defaultCenter]` is the same by messages: `addObserver:selector:name:object:` (a nil name or
/// object stands for any), `removeObserver:`, `removeObserver:name:object:`, `postNotificationName:object:`,
/// `postNotificationName:object:userInfo:`. It doesn't keep its observers, and one that has gone is told nothing more.
/// A selector without an argument is sent without the notification. Any thread.
using LocalObserver = std::function<void(std::string_view name, const id& object)>;
std::uint64_t addLocalObserver(std::string_view name, LocalObserver observer);
void removeLocalObserver(std::uint64_t number);
/// The user information, a dictionary or nil, reaches those who are told by message.
void postLocalNotification(std::string_view name, const id& object = nil, const id& userInfo = nil);

/// An NSNotification, for who is handed one as an argument: it answers `name`, `object` and `userInfo`.
id notification(std::string_view name, const id& object, const id& userInfo = nil);

} // namespace platform
