#include "platform/uikit/traits.h"

#include "platform/dispatch/queue.h"
#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/graphics/appearance.h"
#include "platform/runtime/message.h"
#include "platform/uikit/device.h"
#include "platform/uikit/keyboard.h"
#include "platform/uikit/screen_picture.h"
#include "platform/uikit/transitions.h"
#include "platform/uikit/views.h"

#include <algorithm>

namespace platform {

long styleAskedBy(const ViewObject& view)
{
    if (view.overrideStyle != 0)
        return view.overrideStyle;
    const id owner = view.controller;
    const auto* const known = asController(owner);
    return known ? known->overrideStyle : 0;
}

InterfaceStyle styleIn(const ViewObject& view)
{
    for (const ViewObject* place = &view; place; place = place->superview)
        if (const long asked = styleAskedBy(*place); asked != 0)
            return static_cast<InterfaceStyle>(asked);
    return screenFacts().style;
}

namespace {

enum class SizeClass : long { Unspecified = 0, Compact = 1, Regular = 2 };

/// The environment in which things are shown. It doesn't change.
class TraitCollectionObject : public NSObject {
public:
    NSInteger style = 0; ///< 0, as of the others: unspecified
    double scale = 0;
    NSInteger idiom = -1;
    SizeClass horizontal = SizeClass::Unspecified;
    SizeClass vertical = SizeClass::Unspecified;
    NSInteger direction = -1;

    NSInteger horizontalClass() const { return static_cast<NSInteger>(horizontal); }
    NSInteger verticalClass() const { return static_cast<NSInteger>(vertical); }

    bool isEqualTo(const NSObject& object) const noexcept override
    {
        const auto* const other = dynamic_cast<const TraitCollectionObject*>(&object);
        return other && style == other->style && scale == other->scale && idiom == other->idiom
            && horizontal == other->horizontal && vertical == other->vertical && direction == other->direction;
    }
    std::size_t hashValue() const noexcept override { return static_cast<std::size_t>(style * 31 + idiom); }
};

Ref<TraitCollectionObject> makeTraits()
{
    const id object = send<"new">(id(classNamed<"UITraitCollection">()));
    return Ref<TraitCollectionObject>(as<TraitCollectionObject>(object));
}

id traitsWith(InterfaceStyle style)
{
    const Ref<TraitCollectionObject> traits = makeTraits();
    const CGSize size = screenFacts().size;
    constexpr double largePhone = 414;
    const bool lies = size.width > size.height;
    traits->style = static_cast<NSInteger>(style);
    traits->scale = screenFacts().scale;
    traits->idiom = isPad() ? 1 : 0;
    traits->horizontal = isPad() || (lies && size.height >= largePhone) ? SizeClass::Regular : SizeClass::Compact;
    traits->vertical = isPad() || !lies ? SizeClass::Regular : SizeClass::Compact;
    traits->direction
        = send<"userInterfaceLayoutDirection", NSInteger>(send<"sharedApplication">(id(classNamed<"UIApplication">())));
    return traits;
}

id currentTraitCollection(const id&, SEL)
{
    return traitsWith(isDarkNow() ? InterfaceStyle::Dark : InterfaceStyle::Light);
}

id traitsWithStyle(const id&, SEL, NSInteger style)
{
    const Ref<TraitCollectionObject> traits = makeTraits();
    traits->style = style;
    return traits;
}

/// Of two that specify one thing, the later counts.
id joined(const id&, SEL, const id& collections)
{
    const Ref<TraitCollectionObject> all = makeTraits();
    const ArrayValue items = itemsOf(collections);
    for (const id& item : items) {
        const auto* const traits = as<TraitCollectionObject>(item);
        if (!traits)
            continue;
        all->style = traits->style != 0 ? traits->style : all->style;
        all->scale = traits->scale > 0 ? traits->scale : all->scale;
        all->idiom = traits->idiom >= 0 ? traits->idiom : all->idiom;
        all->horizontal = traits->horizontal != SizeClass::Unspecified ? traits->horizontal : all->horizontal;
        all->vertical = traits->vertical != SizeClass::Unspecified ? traits->vertical : all->vertical;
        all->direction = traits->direction >= 0 ? traits->direction : all->direction;
    }
    return all;
}

bool hasDifferentColors(const id& self, SEL, const id& other)
{
    const auto* const traits = as<TraitCollectionObject>(other);
    return !traits || static_cast<const TraitCollectionObject&>(*self).style != traits->style;
}

void performAsCurrent(const id& self, SEL, const id& actions)
{
    const auto style = static_cast<InterfaceStyle>(static_cast<const TraitCollectionObject&>(*self).style);
    const AppearanceScope scope(style == InterfaceStyle::Dark);
    callBlock(actions);
}

constexpr MethodDefinition methods[] {
    classMethod<"currentTraitCollection", &currentTraitCollection>(),
    getter<"displayScale", &TraitCollectionObject::scale>(),
    method<"hasDifferentColorAppearanceComparedToTraitCollection:", &hasDifferentColors>().since(13),
    method<"horizontalSizeClass", &TraitCollectionObject::horizontalClass>(),
    getter<"layoutDirection", &TraitCollectionObject::direction>(),
    method<"performAsCurrentTraitCollection:", &performAsCurrent>().since(13),
    classMethod<"traitCollectionWithTraitsFromCollections:", &joined>(),
    classMethod<"traitCollectionWithUserInterfaceStyle:", &traitsWithStyle>().since(12),
    getter<"userInterfaceIdiom", &TraitCollectionObject::idiom>(),
    getter<"userInterfaceStyle", &TraitCollectionObject::style>().since(12),
    method<"verticalSizeClass", &TraitCollectionObject::verticalClass>(),
};

ViewObject& viewIn(const id& self)
{
    return static_cast<ViewObject&>(*self);
}

/// The view, then its controller, then what stands in it.
void tellOfTraits(const Ref<ViewObject>& view, InterfaceStyle former)
{
    if (styleAskedBy(*view) != 0)
        return;
    const id was = traitsWith(former);
    send<"traitCollectionDidChange:", void>(id(view), was);
    const id owner = view->controller;
    send<"traitCollectionDidChange:", void>(owner, was);
    const std::vector<Ref<ViewObject>> present = view->subviews;
    for (const Ref<ViewObject>& subview : present)
        tellOfTraits(subview, former);
}

id traitCollection(const id& self, SEL)
{
    return traitsWith(styleIn(viewIn(self)));
}

void setOverride(const id& self, SEL, NSInteger style)
{
    ViewObject& view = viewIn(self);
    const InterfaceStyle former = styleIn(view);
    view.overrideStyle = 0;
    const InterfaceStyle next = style != 0 ? static_cast<InterfaceStyle>(style) : styleIn(view);
    if (former != next)
        tellOfTraits(Ref<ViewObject>(&view), former);
    view.overrideStyle = style;
    changed(view, Asks::Layout);
}

void nothingWith(const id&, SEL, const id&) { }

NSInteger directionForAttribute(const id&, SEL, NSInteger attribute)
{
    constexpr NSInteger leftToRight = 0;
    constexpr NSInteger rightToLeft = 1;
    enum : NSInteger { Playback = 1, Spatial = 2, ForceLeftToRight = 3, ForceRightToLeft = 4 };
    if (attribute == Playback || attribute == Spatial || attribute == ForceLeftToRight)
        return leftToRight;
    if (attribute == ForceRightToLeft)
        return rightToLeft;
    return send<"userInterfaceLayoutDirection", NSInteger>(
        send<"sharedApplication">(id(classNamed<"UIApplication">())));
}

NSInteger layoutDirection(const id& self, SEL cmd)
{
    return directionForAttribute(self, cmd, viewIn(self).semanticContentAttribute);
}

constexpr MethodDefinition viewRows[] {
    method<"effectiveUserInterfaceLayoutDirection", &layoutDirection>(),
    getter<"overrideUserInterfaceStyle", &ViewObject::overrideStyle>(),
    getter<"semanticContentAttribute", &ViewObject::semanticContentAttribute>(),
    method<"setOverrideUserInterfaceStyle:", &setOverride>().since(13),
    setterThatAsks<"setSemanticContentAttribute:", &ViewObject::semanticContentAttribute, Asks::Layout>(),
    method<"traitCollection", &traitCollection>(),
    method<"traitCollectionDidChange:", &nothingWith>(),
    classMethod<"userInterfaceLayoutDirectionForSemanticContentAttribute:", &directionForAttribute>(),
};

} // namespace

constinit const std::span<const MethodDefinition> traitMethods { viewRows };

const ClassDefinition UITraitCollection_class {
    .name = "UITraitCollection", .allocate = allocate<TraitCollectionObject>, .methods = methods
};

void changeScreenStyle(InterfaceStyle style)
{
    const InterfaceStyle former = std::exchange(screenFacts().style, style);
    setScreenDark(style == InterfaceStyle::Dark);
    noteDamage();
    if (former == style)
        return;
    for (const Ref<WindowObject>& window : allWindows())
        tellOfTraits(window, former);
}

void changeScreenSize(CGSize size, double scale)
{
    const CGRect former { {}, screenFacts().size };
    screenFacts().size = size;
    screenFacts().scale = scale;
    noteDamage();
    if (former.size == size)
        return;
    constexpr double turn = 0.4;
    for (const Ref<WindowObject>& window : allWindows()) {
        if (!window->rootViewController || window->frame() != former)
            continue;
        const Ref<CoordinatorObject> coordinator = make<CoordinatorObject>();
        coordinator->duration = window->hidden ? 0 : turn;
        ask<"viewWillTransitionToSize:withTransitionCoordinator:", void>(
            window->rootViewController, size, id(coordinator));
        send<"setFrame:", void>(id(window), CGRect { {}, size });
        window->layoutTree();
        coordinator->start();
        dispatch_after(std::chrono::milliseconds(static_cast<int>(coordinator->duration * 1000)),
            dispatch_get_main_queue(), [coordinator] { coordinator->finish(); });
    }
    keyboardScreenChanged();
}

} // namespace platform
