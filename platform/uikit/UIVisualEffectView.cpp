#include "platform/graphics/appearance.h"
#include "platform/runtime/message.h"
#include "platform/uikit/visual_effects.h"
#include "platform/uikit/window.h"

#include <algorithm>

namespace platform {

namespace {

/// By the system's numbers.
enum class BlurStyle : long { ExtraLight = 0, Light = 1, Dark = 2, Regular = 4, Prominent = 5 };

constexpr long firstMaterial = 6;
constexpr long materials = 5; ///< from ultra-thin to chrome, in each of following, light, dark

/// How a style lets through what lies behind it.
struct Material {
    double radius; ///< points
    double saturation;
    Color tint;
};

constexpr double usualSaturation = 1.8;
constexpr Material extraLight { 20, usualSaturation, { 0.97, 0.97, 0.97, 0.82 } };
constexpr Material light { 30, usualSaturation, { 1, 1, 1, 0.3 } };
constexpr Material dark { 20, usualSaturation, { 0.11, 0.11, 0.11, 0.73 } };
constexpr double lightThickness[materials] { 0.44, 0.6, 0.75, 0.88, 0.8 };
constexpr double darkThickness[materials] { 0.5, 0.64, 0.76, 0.88, 0.82 };

Material materialOf(long style, bool isDark)
{
    switch (static_cast<BlurStyle>(style)) {
    case BlurStyle::ExtraLight:
        return extraLight;
    case BlurStyle::Light:
        return light;
    case BlurStyle::Dark:
        return dark;
    case BlurStyle::Regular:
        return isDark ? dark : light;
    case BlurStyle::Prominent:
        return isDark ? dark : extraLight;
    }
    if (style < firstMaterial || style >= firstMaterial + 3 * materials)
        return isDark ? dark : light;
    const long thickness = (style - firstMaterial) % materials;
    const long look = (style - firstMaterial) / materials;
    const bool shownDark = look == 0 ? isDark : look == 2;
    return shownDark ? Material { 30, usualSaturation, { 0.15, 0.15, 0.155, darkThickness[thickness] } }
                     : Material { 30, usualSaturation, { 0.965, 0.965, 0.965, lightThickness[thickness] } };
}

class BlurEffectObject : public NSObject {
public:
    NSInteger style = 0;
};

id effectWithStyle(const id& self, SEL, NSInteger style)
{
    id effect = send<"new">(self);
    static_cast<BlurEffectObject&>(*effect).style = style;
    return effect;
}

constexpr MethodDefinition effectMethods[] {
    getter<"_style", &BlurEffectObject::style>(),
    classMethod<"effectWithStyle:", &effectWithStyle>(),
};

/// Shows what lies behind it, blurred; content stands in a view of its own.
class VisualEffectViewObject : public ViewObject {
public:
    id effect {};

    id initWithEffect(const id& newEffect)
    {
        effect = newEffect;
        return send<"initWithFrame:">(id(this), CGRect {});
    }

    id contentView()
    {
        if (!content_) {
            content_ = make<ViewObject>();
            content_->setFrame(bounds);
            constexpr NSUInteger flexibleWidthAndHeight = 2 | 16;
            content_->autoresizingMask = flexibleWidthAndHeight;
            insertSubview(content_, 0);
        }
        return content_;
    }

    void drawContent(Canvas& canvas, const CGRect& seen) const override
    {
        const auto* const blur = as<BlurEffectObject>(effect);
        if (!blur)
            return;
        const Material material = materialOf(blur->style, isDarkNow());
        const LayerObject* const own = layerIfMade();
        canvas.fillWithBackdrop(own ? own->outline(seen, own->cornerRadius) : Path::roundedRect(seen, 0),
            material.radius, material.saturation, material.tint);
    }

private:
    Ref<ViewObject> content_ {};
};

constexpr MethodDefinition methods[] {
    method<"contentView", &VisualEffectViewObject::contentView>(),
    getter<"effect", &VisualEffectViewObject::effect>(),
    method<"initWithEffect:", &VisualEffectViewObject::initWithEffect>(),
    setterThatAsks<"setEffect:", &VisualEffectViewObject::effect, Asks::Drawing>(),
};

} // namespace

const ClassDefinition UIVisualEffect_class { .name = "UIVisualEffect" };
const ClassDefinition UIBlurEffect_class { .name = "UIBlurEffect",
    .superclass = &UIVisualEffect_class,
    .allocate = allocate<BlurEffectObject>,
    .methods = effectMethods };
const ClassDefinition UIVisualEffectView_class { .name = "UIVisualEffectView",
    .superclass = &ViewObject::definition,
    .allocate = allocate<VisualEffectViewObject>,
    .methods = methods };

} // namespace platform
