#include "platform/uikit/scroll_motion.h"

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

/// Of the spring, which is damped critically: how fast it dies away, for each second.
constexpr double stiffness = 12;
/// Of a rubber band: what a small pull shows of itself.
constexpr double give = 0.55;

double logOfSecond(double rate)
{
    constexpr double milliseconds = 1000;
    return std::log(rate) * milliseconds;
}

double springAt(double displacement, double speed, double seconds)
{
    return std::exp(-stiffness * seconds) * (displacement + (speed + stiffness * displacement) * seconds);
}

} // namespace

double projectedEnd(double offset, double velocity, double rate)
{
    constexpr double milliseconds = 1000;
    return offset + velocity / milliseconds * rate / (1 - rate);
}

double pulledBy(double seen, double length)
{
    if (length <= 0 || std::abs(seen) >= length)
        return seen;
    return std::copysign((1 / (1 - std::abs(seen) / length) - 1) * length / give, seen);
}

double rubberBand(double distance, double length)
{
    if (length <= 0)
        return 0;
    const double seen = (1 - 1 / (std::abs(distance) * give / length + 1)) * length;
    return std::copysign(seen, distance);
}

AxisMotion::AxisMotion(double offset)
    : start_(offset)
    , rest_(offset)
{
}

AxisMotion AxisMotion::gliding(double offset, double target, double rate, const ScrollLimits& limits, double pixel)
{
    AxisMotion motion(offset);
    motion.way_ = target - offset;
    motion.rest_ = target;
    motion.logRate_ = logOfSecond(rate);
    if (std::abs(motion.way_) <= pixel / 2) {
        motion.way_ = 0;
        motion.rest_ = offset;
        return motion;
    }
    const double edge = std::clamp(target, limits.low, limits.high);
    if (edge == target) {
        motion.glide_ = std::log(pixel / 2 / std::abs(motion.way_)) / motion.logRate_;
        return motion;
    }
    // The end stops it, or takes over what speed is left.
    const double left = (target - edge) / motion.way_;
    motion.glide_ = left >= 1 ? 0 : std::log(left) / motion.logRate_;
    motion.rest_ = edge;
    if (limits.bounces)
        motion.springFrom(
            motion.glideAt(motion.glide_), -motion.logRate_ * (target - motion.glideAt(motion.glide_)), edge, pixel);
    return motion;
}

AxisMotion AxisMotion::springing(double offset, double velocity, double target, double pixel)
{
    AxisMotion motion(offset);
    motion.rest_ = target;
    motion.springFrom(offset, velocity, target, pixel);
    return motion;
}

void AxisMotion::springFrom(double offset, double velocity, double target, double pixel)
{
    displacement_ = offset - target;
    speed_ = velocity;
    // After the last turn of its way the spring only comes nearer.
    const double turning = speed_ + stiffness * displacement_;
    double low = turning != 0 ? std::max(0.0, speed_ / (stiffness * turning)) : 0;
    if (std::abs(springAt(displacement_, speed_, low)) <= pixel / 2) {
        spring_ = low;
        return;
    }
    double high = low + 1;
    while (std::abs(springAt(displacement_, speed_, high)) > pixel / 2)
        high += 1;
    constexpr int steps = 40;
    for (int step = 0; step < steps; ++step) {
        const double middle = (low + high) / 2;
        (std::abs(springAt(displacement_, speed_, middle)) > pixel / 2 ? low : high) = middle;
    }
    spring_ = high;
}

double AxisMotion::glideAt(double seconds) const
{
    return start_ + way_ * (1 - std::exp(logRate_ * seconds));
}

double AxisMotion::at(double seconds) const
{
    if (seconds >= duration())
        return rest_;
    if (seconds < glide_)
        return glideAt(std::max(seconds, 0.0));
    return rest_ + springAt(displacement_, speed_, seconds - glide_);
}

} // namespace platform
