#pragma once

#include <algorithm>

/// How a list moves by itself, on one axis. Values alone: points, seconds from the moment of the lift.

namespace platform {

/// Of the speed, what is left after a millisecond.
inline constexpr double decelerationNormal = 0.998;
inline constexpr double decelerationFast = 0.99;

/// Where a movement that is let go at that speed (points a second) ends when nothing stops it.
double projectedEnd(double offset, double velocity, double rate);

/// How far a list is seen beyond its end when a finger has pulled it `distance` beyond, in a view of that length. Never
/// more than the view's length; with the distance's sign.
double rubberBand(double distance, double length);

/// How far a finger has pulled a list that is seen `seen` beyond its end.
double pulledBy(double seen, double length);

/// The offsets between which a list rests.
struct ScrollLimits {
    double low = 0;
    double high = 0;
    bool bounces = true; ///< else the ends stop it at once

    /// The nearest of them.
    double held(double offset) const { return std::clamp(offset, low, high); }
};

/// A list that has been let go: it slows down, and where it runs past an end it springs back to it. It comes to rest
/// when it is nearer to its end than half of `pixel`.
class AxisMotion {
public:
    /// At rest.
    explicit AxisMotion(double offset = 0);
    /// `target` is where it would come to rest without limits.
    static AxisMotion gliding(double offset, double target, double rate, const ScrollLimits& limits, double pixel);
    /// Straight to a resting place, as on a spring that doesn't overshoot.
    static AxisMotion springing(double offset, double velocity, double target, double pixel);

    double at(double seconds) const;
    double duration() const noexcept { return glide_ + spring_; }
    double end() const noexcept { return rest_; }

private:
    void springFrom(double offset, double velocity, double target, double pixel);
    double glideAt(double seconds) const;

    double start_ = 0;
    double way_ = 0; ///< of the glide, were it not cut off
    double logRate_ = 0; ///< for each second
    double glide_ = 0; ///< seconds that it glides
    double spring_ = 0; ///< and springs then
    double displacement_ = 0; ///< of the spring at its start, from where it rests
    double speed_ = 0; ///< likewise
    double rest_ = 0;
};

} // namespace platform
