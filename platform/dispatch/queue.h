#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <string_view>

namespace platform {

using Work = std::function<void()>;

/// A queue: the main queue (its work runs on the main thread's run loop, in order), a global queue (work
/// runs on threads of a pool, in no order), or a serial queue (one piece of work at a time, in order, on
/// threads of the pool).
class DispatchQueue;
using dispatch_queue_t = std::shared_ptr<DispatchQueue>;

/// The identifiers of the global queues' priorities, as the platform numbers them.
enum class QueuePriority : long { High = 2, Default = 0, Low = -2, Background = -32768 };

dispatch_queue_t dispatch_get_main_queue();
dispatch_queue_t dispatch_get_global_queue(QueuePriority priority);

/// A serial queue. It lives until its last work is done, even when nobody else holds it.
dispatch_queue_t dispatch_queue_create(std::string_view label);
std::string_view dispatch_queue_get_label(const dispatch_queue_t& queue) noexcept;

/// Queues the work behind what is queued already. Any thread; never runs it before returning. An exception
/// that leaves the work ends the process, as on the platform.
void dispatch_async(const dispatch_queue_t& queue, Work work);

/// Queues the work once that time has passed on the clock; of two with the same time, the first asked for
/// goes first.
void dispatch_after(std::chrono::nanoseconds delay, const dispatch_queue_t& queue, Work work);

using dispatch_once_t = std::atomic<int>;

/// Runs the work the first time that it is reached with that token; other threads wait until it has run.
/// The token starts at 0.
void dispatch_once(dispatch_once_t& token, const Work& work);

} // namespace platform
