#pragma once

#include <functional>

namespace phone {

/// The owner's time. With the clock held, it counts from midnight of Monday the 23rd of March 2026.
struct LocalTime {
    long hour = 0;
    long minute = 0;
    long second = 0;
    int day = 0; ///< of the month, from 1
    int weekday = 0; ///< from Sunday, 0
};

LocalTime localTime();

/// Runs `work` now and then at the beginning of each minute, on the main queue, for the life of the process.
void everyMinute(std::function<void()> work);

} // namespace phone
