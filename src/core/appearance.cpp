#include "core/appearance.h"

#include "core/notification_names.h"
#include "core/settings.h"
#include "platform/darwin/system.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/notification_center.h"
#include "platform/foundation/values.h"
#include "platform/graphics/geometry.h"
#include "platform/runtime/message.h"

namespace appledger {

using namespace platform;

namespace {

// The system's numbers.
constexpr NSInteger systemIsDark = 2;
constexpr NSInteger rightToLeft = 1;
constexpr NSInteger blurDark = 2;
constexpr NSInteger blurLight = 1;
constexpr NSInteger blurSystemChromeMaterialLight = 13;
constexpr NSInteger indicatorMedium = 100;
constexpr NSInteger indicatorWhite = 1;

bool isSystem13OrNewer()
{
    return isOperatingSystemAtLeastVersion(13, 0, 0);
}

/// How strongly the text's colour, white when dark and black when light, shows through.
struct Strength {
    CGFloat dark;
    CGFloat light;
};

constexpr Strength primaryText { 1, 1 };
constexpr Strength secondaryText { 0.6, 0.55 };
constexpr Strength headerText { 0.6, 0.5 };
constexpr Strength actionIcon { 0.9, 0.85 };
constexpr Strength separator { 0.15, 0.12 };
constexpr Strength selection { 0.14, 0.08 };

id colorOf(bool isDark, const Strength& strength)
{
    return askObject<"colorWithWhite:alpha:">(
        id(classNamed<"UIColor">()), isDark ? CGFloat { 1 } : CGFloat { 0 }, isDark ? strength.dark : strength.light);
}

id sharedInstance(const id&, SEL)
{
    return &ALAppearance::sharedInstance();
}

void applyStyles(const id&, SEL, const id& cell)
{
    ALAppearance::applyStylesToCell(cell);
}

constexpr MethodDefinition methods[] {
    method<"actionsBarIconTintColor", &ALAppearance::actionsBarIconTintColor>(),
    method<"activityIndicatorView", &ALAppearance::activityIndicatorView>(),
    method<"appLedgerAppearanceChanged:", &ALAppearance::appLedgerAppearanceChanged>(),
    classMethod<"applyStylesToCell:", &applyStyles>(),
    method<"blurEffectStyle", &ALAppearance::blurEffectStyle>(),
    getter<"currentStyle", &ALAppearance::currentStyle>(),
    method<"initialize", &ALAppearance::initialize>(),
    method<"isDarkStyle", &ALAppearance::isDarkStyle>(),
    method<"primaryTextColor", &ALAppearance::primaryTextColor>(),
    method<"secondaryTextColor", &ALAppearance::secondaryTextColor>(),
    setter<"setCurrentStyle:", &ALAppearance::currentStyle>(),
    classMethod<"sharedInstance", &sharedInstance>(),
    method<"tableCellChevronImageView", &ALAppearance::tableCellChevronImageView>(),
    method<"tableCellSelectedBackgroundView", &ALAppearance::tableCellSelectedBackgroundView>(),
    method<"tableHeaderTextColor", &ALAppearance::tableHeaderTextColor>(),
    method<"tableSeparatorColor", &ALAppearance::tableSeparatorColor>(),
};

} // namespace

const ClassDefinition ALAppearance::definition {
    .name = "ALAppearance", .allocate = allocate<ALAppearance>, .methods = methods
};

ALAppearance& ALAppearance::sharedInstance()
{
    static dispatch_once_t once;
    static ALAppearance* shared;
    dispatch_once(once, [] {
        const Ref<ALAppearance> appearance = make<ALAppearance>();
        appearance->initialize();
        shared = static_cast<ALAppearance*>(id(appearance).leak());
    });
    return *shared;
}

void ALAppearance::initialize()
{
    currentStyle = ALSettings::appearanceStyle();
    addLocalObserver(notification::appearanceChanged, [self = id(this)](std::string_view name, const id& object) {
        send<"appLedgerAppearanceChanged:", void>(self, platform::notification(name, object));
    });
}

void ALAppearance::appLedgerAppearanceChanged(const id&)
{
    currentStyle = ALSettings::appearanceStyle();
}

bool ALAppearance::isDarkStyle() const
{
    const auto style = static_cast<AppearanceStyle>(currentStyle);
    if (style != AppearanceStyle::Auto || !isSystem13OrNewer())
        return style == AppearanceStyle::Dark;
    const id traits = askObject<"currentTraitCollection">(id(classNamed<"UITraitCollection">()));
    return ask<"userInterfaceStyle", NSInteger>(traits) == systemIsDark;
}

NSInteger ALAppearance::blurEffectStyle() const
{
    if (isDarkStyle())
        return blurDark;
    return isSystem13OrNewer() ? blurSystemChromeMaterialLight : blurLight;
}

id ALAppearance::primaryTextColor() const
{
    return colorOf(isDarkStyle(), primaryText);
}

id ALAppearance::secondaryTextColor() const
{
    return colorOf(isDarkStyle(), secondaryText);
}

id ALAppearance::actionsBarIconTintColor() const
{
    return colorOf(isDarkStyle(), actionIcon);
}

id ALAppearance::tableSeparatorColor() const
{
    if (ALSettings::hidePanelSeparatorsEnabled())
        return askObject<"clearColor">(id(classNamed<"UIColor">()));
    return colorOf(isDarkStyle(), separator);
}

id ALAppearance::tableHeaderTextColor() const
{
    return colorOf(isDarkStyle(), headerText);
}

id ALAppearance::tableCellSelectedBackgroundView() const
{
    const id view = askObject<"new">(id(classNamed<"UIView">()));
    ask<"setBackgroundColor:", void>(view, colorOf(isDarkStyle(), selection));
    return view;
}

id ALAppearance::tableCellChevronImageView() const
{
    const id application = askObject<"sharedApplication">(id(classNamed<"UIApplication">()));
    const bool isRightToLeft = ask<"userInterfaceLayoutDirection", NSInteger>(application) == rightToLeft;
    const id image = askObject<"imageNamed:">(
        id(classNamed<"ALHelper">()), string(isRightToLeft ? "ChevronLeft" : "ChevronRight"));
    id view = askObject<"initWithImage:">(askObject<"alloc">(id(classNamed<"UIImageView">())), image);
    ask<"setTintColor:", void>(view, secondaryTextColor());
    return view;
}

id ALAppearance::activityIndicatorView() const
{
    id view
        = askObject<"initWithActivityIndicatorStyle:">(askObject<"alloc">(id(classNamed<"UIActivityIndicatorView">())),
            isSystem13OrNewer() ? indicatorMedium : indicatorWhite);
    ask<"setColor:", void>(view, secondaryTextColor());
    return view;
}

void ALAppearance::applyStylesToCell(const id& cell)
{
    const ALAppearance& appearance = sharedInstance();
    ask<"setBackgroundColor:", void>(cell, askObject<"clearColor">(id(classNamed<"UIColor">())));
    ask<"setTextColor:", void>(askObject<"textLabel">(cell), appearance.primaryTextColor());
    ask<"setTextColor:", void>(askObject<"detailTextLabel">(cell), appearance.secondaryTextColor());
    ask<"setTintColor:", void>(cell, appearance.primaryTextColor());
    ask<"setSelectedBackgroundView:", void>(cell, appearance.tableCellSelectedBackgroundView());
}

} // namespace appledger
