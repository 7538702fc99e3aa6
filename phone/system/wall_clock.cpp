#include "phone/system/wall_clock.h"

#include "platform/dispatch/clock.h"
#include "platform/dispatch/queue.h"

#include <algorithm>
#include <chrono>
#include <ctime>

namespace phone {

using namespace platform;

LocalTime localTime()
{
    if (clockIsHeld()) {
        const long seconds = std::chrono::duration_cast<std::chrono::seconds>(clockNow()).count();
        constexpr long secondsOfDay = 86400;
        const long days = seconds / secondsOfDay;
        return { seconds / 3600 % 24, seconds / 60 % 60, seconds % 60, static_cast<int>((22 + days) % 31) + 1,
            static_cast<int>((1 + days) % 7) };
    }
    const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    std::tm local {};
    localtime_r(&now, &local);
    return { local.tm_hour, local.tm_min, local.tm_sec, local.tm_mday, local.tm_wday };
}

void everyMinute(std::function<void()> work)
{
    work();
    constexpr long minute = 60;
    const long left = minute - std::min(localTime().second, minute - 1);
    dispatch_after(std::chrono::seconds { left }, dispatch_get_main_queue(),
        [work = std::move(work)]() mutable { everyMinute(std::move(work)); });
}

} // namespace phone
