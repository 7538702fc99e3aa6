#pragma once

#include <span>
#include <string_view>

namespace appledger {

enum class ObserverRole { EveryProcess, Store, SpringBoard };

struct Observer {
    std::string_view notification;
    std::string_view callbackName;
    void (*callback)();
    ObserverRole role;
};

/// Every Darwin notification that the library observes, and in which processes.
std::span<const Observer> observers() noexcept;

} // namespace appledger
