#include "platform/darwin/bus_pump.h"

#include "platform/dispatch/queue.h"

#include <cstdint>
#include <sys/epoll.h>
#include <sys/timerfd.h>
#include <systemd/sd-bus.h>
#include <unistd.h>
#include <utility>

namespace platform::detail {

namespace {

/// Messages handled in one go, so that a flood leaves the main thread time for its other work.
constexpr int batchSize = 64;

} // namespace

std::shared_ptr<BusPump> BusPump::make(sd_bus* bus, Events events)
{
    const int pollDescriptor = epoll_create1(EPOLL_CLOEXEC);
    const int timerDescriptor = timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK);
    std::shared_ptr<BusPump> pump(new BusPump(bus, std::move(events), pollDescriptor, timerDescriptor));
    epoll_event event {};
    if (epoll_ctl(pollDescriptor, EPOLL_CTL_ADD, sd_bus_get_fd(bus), &event) != 0)
        return nullptr;
    event.events = EPOLLIN;
    if (epoll_ctl(pollDescriptor, EPOLL_CTL_ADD, timerDescriptor, &event) != 0)
        return nullptr;
    pump->source_ = addRunLoopSource(pollDescriptor, [raw = pump.get()] { raw->serve(); });
    pump->arm();
    return pump;
}

BusPump::BusPump(sd_bus* bus, Events events, int pollDescriptor, int timerDescriptor)
    : bus_(bus)
    , events_(std::move(events))
    , pollDescriptor_(pollDescriptor)
    , timerDescriptor_(timerDescriptor)
{
}

BusPump::~BusPump()
{
    if (source_ != 0)
        removeRunLoopSource(source_);
    for (const int descriptor : { pollDescriptor_, timerDescriptor_ })
        if (descriptor >= 0)
            close(descriptor);
}

void BusPump::arm()
{
    const int events = sd_bus_get_events(bus_);
    std::uint64_t time = 0;
    if (events < 0 || sd_bus_get_timeout(bus_, &time) < 0) {
        serveSoon();
        return;
    }
    if (const auto wanted = static_cast<unsigned>(events); wanted != awaited_) {
        epoll_event event {};
        event.events = wanted;
        epoll_ctl(pollDescriptor_, EPOLL_CTL_MOD, sd_bus_get_fd(bus_), &event);
        awaited_ = wanted;
    }
    // A time of zero: messages were read and wait inside, where no descriptor shows them.
    if (time == 0) {
        serveSoon();
        return;
    }
    const bool wantsTimer = time != UINT64_MAX;
    if (wantsTimer || timerIsSet_) {
        itimerspec setting {};
        if (wantsTimer) {
            setting.it_value.tv_sec = static_cast<time_t>(time / 1'000'000);
            setting.it_value.tv_nsec = static_cast<long>(time % 1'000'000) * 1000 + 1;
        }
        timerfd_settime(timerDescriptor_, TFD_TIMER_ABSTIME, &setting, nullptr);
        timerIsSet_ = wantsTimer;
    }
}

void BusPump::handleReceived()
{
    while (sd_bus_is_open(bus_) > 0 && sd_bus_process(bus_, nullptr) > 0) { }
}

void BusPump::serve()
{
    const std::shared_ptr<BusPump> self = shared_from_this();
    // A connection that is over isn't processed further: that would answer what still waits for a reply as
    // if the peers had failed.
    int result = 1;
    for (int count = 0; count < batchSize && result > 0 && sd_bus_is_open(bus_) > 0; ++count)
        result = sd_bus_process(bus_, nullptr);
    if (result < 0 || sd_bus_is_open(bus_) <= 0) {
        events_.ended();
        return;
    }
    events_.served();
    arm();
}

void BusPump::serveSoon()
{
    if (std::exchange(servesSoon_, true))
        return;
    dispatch_async(dispatch_get_main_queue(), [weak = weak_from_this()] {
        if (const std::shared_ptr<BusPump> self = weak.lock()) {
            self->servesSoon_ = false;
            self->serve();
        }
    });
}

} // namespace platform::detail
