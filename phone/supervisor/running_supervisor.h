#pragma once

#include "phone/supervisor/phone_directory.h"
#include "platform/foundation/descriptor.h"

#include <chrono>
#include <optional>
#include <sys/types.h>

namespace phone {

/// The supervisor of a phone that is up, as another process of the same account sees it. Whoever holds the phone's lock
/// is known by the kernel's word and not by what a file says, and is checked to be a supervisor; from then on its
/// process is held by a descriptor, so that a number that was given anew is never signalled.
class RunningSupervisor {
public:
    /// Empty when the phone isn't up.
    static std::optional<RunningSupervisor> find(const PhoneDirectory& directory);

    /// False when it is gone.
    bool signal(int number) const;

    /// False when it hasn't ended within the limit.
    bool waitUntilEnded(std::chrono::milliseconds limit) const;

private:
    explicit RunningSupervisor(platform::detail::Descriptor process);

    platform::detail::Descriptor process_;
};

} // namespace phone
