#include "state/running_indicator_hooks.h"

#include "core/bundle_identifier.h"
#include "core/hex_color.h"
#include "core/policies.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/block.h"
#include "platform/foundation/key_value_coding.h"
#include "platform/foundation/values.h"
#include "platform/runtime/exception.h"
#include "platform/runtime/message.h"
#include "platform/screen/framework.h"
#include "state/running_dot.h"

namespace appledger {

using namespace platform;

namespace {

using RunningDot = AddedProperty<"SBIconView", "al_runningDot", R"(@"UIView")">;

constexpr double animationTime = 0.3;
constexpr CGFloat smallScale = 0.1;
constexpr CGFloat fallbackFontSize = 12;

// The system's animation options.
constexpr NSUInteger curveIn = 0x20000;
constexpr NSUInteger curveOut = 0x10000;

void animate(NSUInteger curve, const id& animations, const id& completion = nil)
{
    send<"animateWithDuration:delay:options:animations:completion:", void>(
        id(classNamed<"UIView">()), animationTime, 0.0, curve, animations, completion);
}

void show(const id& dot, CGFloat alpha, CGFloat scale)
{
    send<"setAlpha:", void>(dot, alpha);
    send<"setTransform:", void>(dot, CGAffineTransform { .a = scale, .d = scale });
}

void hideDot(const id& iconView)
{
    if (const id dot = RunningDot::get(iconView))
        send<"setHidden:", void>(dot, true);
}

void fadeOut(const id& dot)
{
    if (!dot || send<"isHidden", bool>(dot) || send<"alpha", CGFloat>(dot) <= 0)
        return;
    animate(curveOut, block([dot] { show(dot, 0, smallScale); }), block([dot](bool isFinished) {
        if (isFinished)
            send<"setHidden:", void>(dot, true);
    }));
}

id makeDot(const id& iconView)
{
    id dot = send<"initWithFrame:">(
        send<"alloc">(id(classNamed<"UIView">())), CGRectMake(0, 0, runningDotSize, runningDotSize));
    const id layer = send<"layer">(dot);
    send<"setCornerRadius:", void>(layer, runningDotSize / 2);
    send<"setMasksToBounds:", void>(layer, true);
    send<"addSubview:", void>(iconView, dot);
    show(dot, 0, smallScale);
    RunningDot::set(iconView, nullptr, dot);
    return dot;
}

/// Of this layout: a new colour shows as soon as the icons are laid out anew.
id dotColor()
{
    const ReadSection section;
    const std::string* const text = g_RunningIndicatorColorHex.load();
    return colorFromHex(text ? *text : "");
}

bool isRunning(const StringValue& bundleIdentifier)
{
    const id controller = askObject<"sharedInstance">(id(classNamed<"SBApplicationController">()));
    const id application = askObject<"applicationWithBundleIdentifier:">(controller, bundleIdentifier.object());
    return ask<"isRunning", bool>(askObject<"processState">(application)).value_or(false);
}

id labelViewOf(const id& iconView)
{
    if (const auto label = ask<"labelView">(iconView))
        return *label;
    if (const auto label = ask<"_labelView">(iconView))
        return *label;
    try {
        return valueForKey(iconView, "_labelView");
    } catch (const NSException&) {
        return nil; // a view that has no such key
    }
}

std::optional<ImageBox> imageBoxOf(const id& iconView)
{
    auto view = ask<"iconImageView">(iconView);
    if (!view)
        view = ask<"_iconImageView">(iconView);
    if (!view || !*view)
        return std::nullopt;
    return ImageBox { send<"center", CGPoint>(*view), send<"bounds", CGRect>(*view).size };
}

bool isInDock(const id& iconView)
{
    const auto location = asString(ask<"location">(iconView));
    return location && isDockLocation(*location);
}

id fontOf(const id& label)
{
    if (const auto font = ask<"font">(label))
        return *font;
    if (const auto font = ask<"font">(askObject<"legibilitySettings">(label)))
        return *font;
    return askObject<"systemFontOfSize:">(id(classNamed<"UIFont">()), fallbackFontSize);
}

CGFloat nameWidth(const id& icon, const id& label)
{
    const id name = askObject<"displayName">(icon);
    if (!name)
        return 0;
    const id attributes = dictionary(std::vector { std::pair { NSFontAttributeName(), fontOf(label) } });
    return ask<"sizeWithAttributes:", CGSize>(name, attributes).value_or(CGSize {}).width;
}

LabelBox labelBoxOf(const id& label)
{
    return { send<"center", CGPoint>(label), send<"bounds", CGRect>(label).size.width, send<"alpha", CGFloat>(label),
        send<"isHidden", bool>(label) };
}

struct Placement {
    CGPoint center;
    CGFloat strength = 1;
};

/// Empty when the dot hides with its label.
std::optional<Placement> placementOf(const id& iconView, const id& icon, const id& label, bool inDock)
{
    const CGSize size = send<"bounds", CGRect>(iconView).size;
    if (inDock)
        return Placement { dotCenterInDock(size, imageBoxOf(iconView)) };
    const LabelBox box = labelBoxOf(label);
    const auto strength = dotStrength(box);
    if (!strength)
        return std::nullopt;
    return Placement { dotCenterBesideLabel(size, box, nameWidth(icon, label)), *strength };
}

void showDot(const id& iconView, const id& dot, const Placement& placement)
{
    // It stands outside of the icon view's bounds.
    send<"setClipsToBounds:", void>(iconView, false);
    send<"setCenter:", void>(dot, placement.center);
    switch (dotAppearance(placement.strength, send<"alpha", CGFloat>(dot))) {
    case DotAppearance::FollowsLabel:
        show(dot, placement.strength, 1);
        break;
    case DotAppearance::FadesIn:
        animate(curveIn, block([dot] { show(dot, 1, 1); }));
        break;
    case DotAppearance::Stands:
        show(dot, 1, 1);
        break;
    }
}

void layOutDot(const id& iconView)
{
    const id icon = g_RunningIndicatorEnabled ? askObject<"icon">(iconView) : nil;
    const auto identifier = applicationOfIcon(icon);
    if (!identifier)
        return hideDot(iconView);
    const id label = labelViewOf(iconView);
    const bool inDock = isInDock(iconView);
    if (!inDock && (!label || send<"frame", CGRect>(label).size.height == 0))
        return hideDot(iconView);
    id dot = RunningDot::get(iconView);
    if (!isRunning(*identifier))
        return fadeOut(dot);
    if (!dot)
        dot = makeDot(iconView);
    send<"setBackgroundColor:", void>(dot, dotColor());
    send<"setHidden:", void>(dot, false);
    if (const auto placement = placementOf(iconView, icon, label, inDock))
        showDot(iconView, dot, *placement);
    else
        hideDot(iconView);
}

struct LayoutSubviews : Hook<LayoutSubviews, "SBIconView", "layoutSubviews", void()> {
    static void replacement(const id& self, SEL cmd)
    {
        original(self, cmd);
        layOutDot(self);
    }
};

void layOutIconsOf(const StringValue& bundleIdentifier)
{
    const id manager = askObject<"iconManager">(askObject<"sharedInstance">(id(classNamed<"SBIconController">())));
    const id layOut = block([bundleIdentifier](const id& iconView) {
        const auto identifier = applicationOfIcon(askObject<"icon">(iconView));
        if (!identifier || *identifier != bundleIdentifier)
            return;
        send<"setNeedsLayout", void>(iconView);
        animate(curveIn, block([iconView] { send<"layoutIfNeeded", void>(iconView); }));
    });
    if (!ask<"enumerateKnownIconViewsUsingBlock:", void>(manager, layOut))
        ask<"enumerateDisplayedIconViewsUsingBlock:", void>(manager, layOut);
}

struct ProcessStateDidChange
    : Hook<ProcessStateDidChange, "SpringBoard", "_handleApplicationProcessStateDidChangeNotification:", void(id)> {
    static void replacement(const id& self, SEL cmd, const id& notification)
    {
        original(self, cmd, notification);
        if (!g_RunningIndicatorEnabled)
            return;
        try {
            const id application = askObject<"object">(notification);
            if (const auto identifier = asString(ask<"bundleIdentifier">(application)))
                dispatch_async(dispatch_get_main_queue(), [identifier = *identifier] { layOutIconsOf(identifier); });
        } catch (const std::exception&) {
            // raised by the system's objects: a dot that comes late is no reason to disturb them
        }
    }
};

constexpr HookRow rows[] {
    RunningDot::row(),
    LayoutSubviews::row(),
    ProcessStateDidChange::row(),
};

} // namespace

const HookGroup RunningIndicatorHooks { "RunningIndicatorHooks", rows };

} // namespace appledger
