#include "platform/dispatch/clock.h"
#include "platform/runtime/message.h"
#include "platform/uikit/screen_picture.h"
#include "platform/uikit/shades.h"
#include "platform/uikit/views.h"

#include <cmath>
#include <numbers>

namespace platform {

namespace {

/// By the system's numbers.
enum class IndicatorStyle : long { WhiteLarge = 0, White = 1, Gray = 2, Medium = 100, Large = 101 };

constexpr double smallSide = 20;
constexpr double largeSide = 37;
constexpr Color white { 1, 1, 1, 1 };

/// A wheel of spokes that says that something is under way. It turns with the clock, spoke by spoke: what is seen is
/// computed when someone looks.
class ActivityIndicatorViewObject : public ViewObject {
public:
    bool isAnimating = false;
    bool hidesWhenStopped = true;
    id color {};

    id initWithStyle(NSInteger newStyle)
    {
        style_ = static_cast<IndicatorStyle>(newStyle);
        userInteractionEnabled = false;
        return send<"initWithFrame:">(id(this), CGRect { {}, sizeThatFits({}) });
    }

    NSInteger style() const { return static_cast<NSInteger>(style_); }
    void startAnimating() { setAnimating(true); }
    void stopAnimating() { setAnimating(false); }

    CGSize sizeThatFits(CGSize) const override
    {
        const bool isLarge = style_ == IndicatorStyle::WhiteLarge || style_ == IndicatorStyle::Large;
        return isLarge ? CGSize { largeSide, largeSide } : CGSize { smallSide, smallSide };
    }

    CGSize intrinsicContentSize() const override { return sizeThatFits({}); }

    void drawContent(Canvas& canvas, const CGRect& seen) const override
    {
        if (hidesWhenStopped && !isAnimating)
            return;
        constexpr int spokes = 8;
        const bool isWhite = style_ == IndicatorStyle::White || style_ == IndicatorStyle::WhiteLarge;
        const Color full = asColor(color).value_or(isWhite ? white : shade::wheel.color());
        int first = 0; ///< the spoke that is brightest
        if (isAnimating) {
            noteMotion();
            constexpr double turnDuration = 1;
            first = static_cast<int>(std::fmod(CACurrentMediaTime() - start_, turnDuration) / turnDuration * spokes);
        }
        const double radius = std::min(seen.size.width, seen.size.height) / 2;
        const CGPoint center { seen.origin.x + seen.size.width / 2, seen.origin.y + seen.size.height / 2 };
        for (int spoke = 0; spoke < spokes; ++spoke) {
            const double angle = 2 * std::numbers::pi * spoke / spokes;
            const auto at = [&](double part) {
                return CGPoint { center.x + radius * part * std::sin(angle),
                    center.y - radius * part * std::cos(angle) };
            };
            Path line;
            line.moveTo(at(0.45));
            line.lineTo(at(0.9));
            Color spokeColor = full;
            spokeColor.alpha *= 1 - 0.8 * ((first - spoke + spokes) % spokes) / spokes;
            canvas.stroke(line, spokeColor, radius * 0.2);
        }
    }

private:
    void setAnimating(bool animating)
    {
        if (std::exchange(isAnimating, animating) == animating)
            return;
        start_ = CACurrentMediaTime();
        changed(*this, Asks::Drawing);
    }

    double start_ = 0; ///< of its turning
    IndicatorStyle style_ = IndicatorStyle::Medium;
};

constexpr MethodDefinition methods[] {
    method<"activityIndicatorViewStyle", &ActivityIndicatorViewObject::style>(),
    getter<"color", &ActivityIndicatorViewObject::color>(),
    getter<"hidesWhenStopped", &ActivityIndicatorViewObject::hidesWhenStopped>(),
    method<"initWithActivityIndicatorStyle:", &ActivityIndicatorViewObject::initWithStyle>(),
    getter<"isAnimating", &ActivityIndicatorViewObject::isAnimating>(),
    setterThatAsks<"setColor:", &ActivityIndicatorViewObject::color, Asks::Drawing>(),
    setterThatAsks<"setHidesWhenStopped:", &ActivityIndicatorViewObject::hidesWhenStopped, Asks::Drawing>(),
    method<"startAnimating", &ActivityIndicatorViewObject::startAnimating>(),
    method<"stopAnimating", &ActivityIndicatorViewObject::stopAnimating>(),
};

} // namespace

const ClassDefinition UIActivityIndicatorView_class { .name = "UIActivityIndicatorView",
    .superclass = &ViewObject::definition,
    .allocate = allocate<ActivityIndicatorViewObject>,
    .methods = methods };

} // namespace platform
