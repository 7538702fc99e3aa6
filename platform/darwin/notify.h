#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// A Darwin notification has a name and nothing else, so its callback is told nothing: it rereads whatever
/// the name is about.
using CFNotificationCallback = void (*)();

/// How a notification is delivered to a process that is suspended. No process of this platform is ever
/// suspended: the value is kept as a fact of the observer.
enum class CFNotificationSuspensionBehavior { Drop = 1, Coalesce = 2, Hold = 3, DeliverImmediately = 4 };

/// Adds an observer to the Darwin notify center: from now on the callback runs on this process's main run
/// loop, once for every post of that name by any process of the device, this one included, in the order of
/// the posts and, for one post, of the observers. A name may have many observers. Any thread.
void CFNotificationCenterAddObserver(
    CFNotificationCallback callback, std::string_view name, CFNotificationSuspensionBehavior suspensionBehavior);

struct DarwinObserver {
    std::string name;
    CFNotificationCallback callback;
    CFNotificationSuspensionBehavior suspensionBehavior;
};

/// The observers of this process in the order in which they were added. For hosts and tests. Any thread.
std::vector<DarwinObserver> darwinObservers();

/// Posts to every observer of the name in every process of the device, without waiting for them. Names
/// are UTF-8 without NUL bytes and at most 1,024 bytes long; any other is not posted. Without a
/// connection to the device's bus only this process's observers hear of it. Any thread.
void CFNotificationCenterPostNotification(std::string_view name);

} // namespace platform
