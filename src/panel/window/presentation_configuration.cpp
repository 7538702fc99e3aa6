#include "panel/window/presentation_configuration.h"

#include "platform/handles/UIColor.h"

namespace appledger {

using namespace platform;

namespace {

using Configuration = ALDataPresentationConfiguration;

constexpr MethodDefinition methods[] {
    getter<"animationDuration", &Configuration::animationDuration>(),
    getter<"customFrameHandler", &Configuration::customFrameHandler>(),
    getter<"dimmingViewBackgroundColor", &Configuration::dimmingViewBackgroundColor>(),
    getter<"direction", &Configuration::direction>(),
    getter<"fadeAnimation", &Configuration::fadeAnimation>(),
    getter<"fadeAnimationAlpha", &Configuration::fadeAnimationAlpha>(),
    getter<"screenPercentage", &Configuration::screenPercentage>(),
    setter<"setAnimationDuration:", &Configuration::animationDuration>(),
    setter<"setCustomFrameHandler:", &Configuration::customFrameHandler>(),
    setter<"setDimmingViewBackgroundColor:", &Configuration::dimmingViewBackgroundColor>(),
    setter<"setDirection:", &Configuration::direction>(),
    setter<"setFadeAnimation:", &Configuration::fadeAnimation>(),
    setter<"setFadeAnimationAlpha:", &Configuration::fadeAnimationAlpha>(),
    setter<"setScreenPercentage:", &Configuration::screenPercentage>(),
    setter<"setSourceRect:", &Configuration::sourceRect>(),
    getter<"sourceRect", &Configuration::sourceRect>(),
};

} // namespace

const ClassDefinition ALDataPresentationConfiguration::definition {
    .name = "ALDataPresentationConfiguration", .allocate = allocate<ALDataPresentationConfiguration>, .methods = methods
};

ALDataPresentationConfiguration::ALDataPresentationConfiguration()
    : dimmingViewBackgroundColor(askObject<"colorWithWhite:alpha:">(id(UIColor::classObject()), 0.0, 0.3))
{
}

Ref<ALDataPresentationConfiguration> configurationOrDefault(const id& object)
{
    if (auto* const configuration = as<ALDataPresentationConfiguration>(object))
        return Ref<ALDataPresentationConfiguration>(configuration);
    return make<ALDataPresentationConfiguration>();
}

} // namespace appledger
