#include "platform/uikit/animation.h"

#include "platform/dispatch/clock.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/block.h"
#include "platform/runtime/message.h"
#include "platform/uikit/screen_picture.h"

#include <map>
#include <memory>
#include <vector>

namespace platform {

namespace {

using std::chrono::nanoseconds;

enum class Curve { EaseInOut = 0, EaseIn = 1, EaseOut = 2, Linear = 3, Spring = 4 };

/// What one animating call has started.
struct AnimationGroup {
    nanoseconds start {};
    nanoseconds duration {};
    Curve curve = Curve::EaseInOut;
    double damping = 1;
    double velocity = 0; ///< of a spring at the start, in ways to go a second
    id completion {};
    std::size_t running = 0;
    bool finished = true;
};

struct Animation {
    std::shared_ptr<AnimationGroup> group;
    AnimatedValues from;
};

using AnimationKey = std::pair<const ViewObject*, Animatable>;

std::map<AnimationKey, Animation>& animations()
{
    static auto* const running = new std::map<AnimationKey, Animation>;
    return *running;
}

std::shared_ptr<AnimationGroup>& currentGroup()
{
    static auto* const group = new std::shared_ptr<AnimationGroup>;
    return *group;
}

bool& animationsEnabled()
{
    static bool enabled = true;
    return enabled;
}

nanoseconds fromSeconds(double seconds)
{
    constexpr double longest = 1e9;
    return std::chrono::duration_cast<nanoseconds>(
        std::chrono::duration<double>(seconds > 0 ? std::min(seconds, longest) : 0));
}

/// Where a cubic curve from (0, 0) to (1, 1) with these control points stands at x.
double bezierAt(double x, CGPoint control1, CGPoint control2)
{
    const auto along = [](double t, double first, double second) {
        return 3 * (1 - t) * (1 - t) * t * first + 3 * (1 - t) * t * t * second + t * t * t;
    };
    double low = 0;
    double high = 1;
    constexpr int steps = 40;
    for (int step = 0; step < steps; ++step) {
        const double middle = (low + high) / 2;
        (along(middle, control1.x, control2.x) < x ? low : high) = middle;
    }
    return along(low, control1.y, control2.y);
}

/// `velocity` at x = 0, in ways to go for each 1 of x.
double springAt(double x, double damping, double velocity)
{
    // So stiff that the motion has died away at the end.
    constexpr double settled = 7;
    if (damping >= 1)
        return 1 - std::exp(-settled * x) * (1 + (settled - velocity) * x);
    const double frequency = settled / damping * std::sqrt(1 - damping * damping);
    return 1
        - std::exp(-settled * x)
        * (std::cos(frequency * x) + (settled - velocity) / frequency * std::sin(frequency * x));
}

double progressOf(const AnimationGroup& group, nanoseconds now)
{
    if (now <= group.start)
        return 0;
    if (now >= group.start + group.duration)
        return 1;
    const double x = std::chrono::duration<double>(now - group.start) / std::chrono::duration<double>(group.duration);
    switch (group.curve) {
    case Curve::EaseInOut:
        return bezierAt(x, { 0.42, 0 }, { 0.58, 1 });
    case Curve::EaseIn:
        return bezierAt(x, { 0.42, 0 }, { 1, 1 });
    case Curve::EaseOut:
        return bezierAt(x, { 0, 0 }, { 0.58, 1 });
    case Curve::Linear:
        return x;
    case Curve::Spring:
        return springAt(x, group.damping, group.velocity * std::chrono::duration<double>(group.duration).count());
    }
    return x;
}

/// Called later, since it may change what is being walked through here.
void complete(const std::shared_ptr<AnimationGroup>& group)
{
    if (!group->completion)
        return;
    dispatch_async(
        dispatch_get_main_queue(), [completion = std::exchange(group->completion, nil), finished = group->finished] {
            callBlock(completion, finished);
        });
}

void takeAway(const std::shared_ptr<AnimationGroup>& group, bool finished)
{
    group->finished = group->finished && finished;
    if (--group->running == 0)
        complete(group);
}

void interrupt(const AnimationKey& key)
{
    const auto found = animations().find(key);
    if (found == animations().end())
        return;
    const std::shared_ptr<AnimationGroup> group = found->second.group;
    animations().erase(found);
    takeAway(group, false);
}

void end(const std::shared_ptr<AnimationGroup>& group)
{
    const std::size_t count
        = std::erase_if(animations(), [&](const auto& entry) { return entry.second.group == group; });
    for (std::size_t index = 0; index < count; ++index)
        takeAway(group, true);
}

void runAnimations(const std::shared_ptr<AnimationGroup>& group, const id& block)
{
    const std::shared_ptr<AnimationGroup> outer = std::exchange(currentGroup(), group);
    struct Restore {
        const std::shared_ptr<AnimationGroup>& outer;
        ~Restore() { currentGroup() = outer; }
    } const restore { outer };
    callBlock(block);
}

struct Timing {
    double duration;
    double delay = 0;
    Curve curve = Curve::EaseInOut;
    double damping = 1;
    double velocity = 0;
};

void animate(const Timing& timing, const id& block, const id& completion)
{
    const auto group = std::make_shared<AnimationGroup>();
    group->start = clockNow() + fromSeconds(timing.delay);
    group->duration = fromSeconds(timing.duration);
    group->curve = timing.curve;
    group->damping = timing.damping;
    group->velocity = timing.velocity;
    group->completion = completion;
    const bool animated
        = animationsEnabled() && group->start + group->duration > clockNow() && group->duration > nanoseconds::zero();
    // The group counts as running until the block is done, so that it can't end in its midst.
    group->running = 1;
    runAnimations(animated ? group : nullptr, block);
    if (group->running > 1)
        dispatch_after(group->start + group->duration - clockNow(), dispatch_get_main_queue(), [group] { end(group); });
    takeAway(group, true);
}

void animateWithOptions(
    const id&, SEL, double duration, double delay, NSUInteger options, const id& block, const id& completion)
{
    constexpr NSUInteger curveShift = 16;
    animate({ .duration = duration, .delay = delay, .curve = static_cast<Curve>(options >> curveShift & 3) }, block,
        completion);
}

void animateWithSpring(const id&, SEL, double duration, double delay, double damping, double velocity, NSUInteger,
    const id& block, const id& completion)
{
    constexpr double least = 0.05;
    animate({ duration, delay, Curve::Spring, std::clamp(damping, least, 1.0), velocity }, block, completion);
}

void animateWithCompletion(const id&, SEL, double duration, const id& block, const id& completion)
{
    animate({ .duration = duration }, block, completion);
}

void animateAlone(const id&, SEL, double duration, const id& block)
{
    animate({ .duration = duration }, block, nil);
}

/// What is animated within the block isn't either.
void performWithoutAnimation(const id&, SEL, const id& block)
{
    struct Restore {
        const bool outer;
        ~Restore() { animationsEnabled() = outer; }
    } const restore { std::exchange(animationsEnabled(), false) };
    runAnimations(nullptr, block);
}

bool areAnimationsEnabled(const id&, SEL)
{
    return animationsEnabled();
}

void setAnimationsEnabled(const id&, SEL, bool enabled)
{
    animationsEnabled() = enabled;
}

constexpr MethodDefinition methods[] {
    classMethod<"animateWithDuration:animations:", &animateAlone>(),
    classMethod<"animateWithDuration:animations:completion:", &animateWithCompletion>(),
    classMethod<"animateWithDuration:delay:options:animations:completion:", &animateWithOptions>(),
    classMethod<"animateWithDuration:delay:usingSpringWithDamping:initialSpringVelocity:options:animations:completion:",
        &animateWithSpring>(),
    classMethod<"areAnimationsEnabled", &areAnimationsEnabled>(),
    classMethod<"performWithoutAnimation:", &performWithoutAnimation>(),
    classMethod<"setAnimationsEnabled:", &setAnimationsEnabled>(),
};

} // namespace

constinit const std::span<const MethodDefinition> animationMethods { methods };

void noteChange(ViewObject& view, Animatable property, const AnimatedValues& former, const AnimatedValues& value)
{
    if (former == value)
        return;
    noteDamage();
    const AnimationKey key { &view, property };
    const std::shared_ptr<AnimationGroup> group = currentGroup();
    if (!group) {
        interrupt(key);
        return;
    }
    if (const auto running = animations().find(key); running != animations().end() && running->second.group == group)
        return;
    const AnimatedValues from = presentedValues(view, property, former);
    interrupt(key);
    animations()[key] = { group, from };
    ++group->running;
}

AnimatedValues presentedValues(const ViewObject& view, Animatable property, const AnimatedValues& value)
{
    if (animations().empty())
        return value;
    const auto found = animations().find({ &view, property });
    if (found == animations().end())
        return value;
    const double progress = progressOf(*found->second.group, clockNow());
    AnimatedValues presented;
    for (std::size_t index = 0; index < value.size(); ++index)
        presented[index] = std::lerp(found->second.from[index], value[index], progress);
    return presented;
}

void cancelAnimations(const ViewObject& view)
{
    if (animations().empty())
        return;
    forgetAnimations(view);
    for (const Ref<ViewObject>& subview : view.subviews)
        cancelAnimations(*subview);
}

void forgetAnimations(const ViewObject& view) noexcept
{
    if (animations().empty())
        return;
    for (const Animatable property : { Animatable::Bounds, Animatable::Center, Animatable::Transform, Animatable::Alpha,
             Animatable::BackgroundColor, Animatable::CornerRadius })
        interrupt({ &view, property });
}

bool animationsRun() noexcept
{
    return !animations().empty();
}

AnimatedValues valuesOf(const CGRect& rect)
{
    return { rect.origin.x, rect.origin.y, rect.size.width, rect.size.height };
}

AnimatedValues valuesOf(const CGPoint& point)
{
    return { point.x, point.y };
}

AnimatedValues valuesOf(const CGAffineTransform& t)
{
    return { t.a, t.b, t.c, t.d, t.tx, t.ty };
}

AnimatedValues valuesOf(double value)
{
    return { value };
}

AnimatedValues valuesOfColor(const id& color)
{
    const Color parts = asColor(color).value_or(Color { 0, 0, 0, 0 });
    return { parts.red, parts.green, parts.blue, parts.alpha };
}

CGRect Presentation::frame() const
{
    const CGRect aroundCenter
        = CGRectMake(-bounds.size.width / 2, -bounds.size.height / 2, bounds.size.width, bounds.size.height);
    const CGRect box
        = CGAffineTransformIsIdentity(transform) ? aroundCenter : CGRectApplyAffineTransform(aroundCenter, transform);
    return CGRectOffset(box, center.x, center.y);
}

Presentation presentationOf(const ViewObject& view)
{
    const LayerObject* const layer = view.layerIfMade();
    const double cornerRadius = layer ? layer->cornerRadius : 0;
    if (animations().empty())
        return { view.bounds, view.center, view.transform, view.alpha, asColor(view.backgroundColor), cornerRadius };
    const auto presented
        = [&](Animatable property, const AnimatedValues& value) { return presentedValues(view, property, value); };
    const AnimatedValues bounds = presented(Animatable::Bounds, valuesOf(view.bounds));
    const AnimatedValues center = presented(Animatable::Center, valuesOf(view.center));
    const AnimatedValues t = presented(Animatable::Transform, valuesOf(view.transform));
    const AnimatedValues color = presented(Animatable::BackgroundColor, valuesOfColor(view.backgroundColor));
    return { CGRectMake(bounds[0], bounds[1], bounds[2], bounds[3]), { center[0], center[1] },
        { t[0], t[1], t[2], t[3], t[4], t[5] }, presented(Animatable::Alpha, valuesOf(view.alpha))[0],
        color[3] > 0 ? std::optional(Color { color[0], color[1], color[2], color[3] }) : std::nullopt,
        presented(Animatable::CornerRadius, valuesOf(cornerRadius))[0] };
}

} // namespace platform
