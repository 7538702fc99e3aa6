#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/uikit/animation.h"
#include "platform/uikit/layers.h"
#include "platform/uikit/renderer.h"
#include "platform/uikit/screen_picture.h"

namespace platform {

CALayer::~CALayer()
{
    for (const Ref<CALayer>& sublayer : sublayers)
        sublayer->superlayer = nullptr;
}

void CALayer::setCornerRadius(double radius)
{
    if (view)
        noteChange(*view, Animatable::CornerRadius, valuesOf(cornerRadius), valuesOf(radius));
    if (std::exchange(cornerRadius, radius) != radius)
        changed(*this, Asks::Drawing);
}

void CALayer::insertSublayer(const id& sublayer, unsigned index)
{
    const Ref<CALayer> added(as<CALayer>(sublayer));
    if (!added || added.get() == this)
        return;
    added->removeFromSuperlayer();
    added->superlayer = this;
    sublayers.insert(
        sublayers.begin() + static_cast<std::ptrdiff_t>(std::min<std::size_t>(index, sublayers.size())), added);
    changed(*this, Asks::Drawing);
}

void CALayer::addSublayer(const id& sublayer)
{
    insertSublayer(sublayer, static_cast<unsigned>(sublayers.size()));
}

void CALayer::removeFromSuperlayer()
{
    const Ref<CALayer> self(this);
    if (!superlayer)
        return;
    std::erase(superlayer->sublayers, self);
    superlayer = nullptr;
    changed(*this, Asks::Drawing);
}

void changed(CALayer&, Asks)
{
    noteDamage();
}

Path CALayer::outline(const CGRect& bounds, double radius) const
{
    const auto curve = asString(cornerCurve);
    const bool isContinuous = curve && curve->view() == "continuous";
    return Path::roundedRect(bounds,
        { radius, static_cast<unsigned>(maskedCorners),
            isContinuous ? CornerCurve::Continuous : CornerCurve::Circular });
}

CGRect CALayer::bounds() const
{
    return view ? view->bounds : CGRect { {}, frame.size };
}

void CALayer::drawContents(Canvas& canvas, const CGRect& bounds) const
{
    if (const auto* const image = as<UIImage>(contents))
        image->draw(canvas, bounds, Color {});
}

namespace {

CALayer& layerIn(const id& self)
{
    return static_cast<CALayer&>(*self);
}

id layer(const id& self, SEL)
{
    return send<"new">(self);
}

CGRect frame(const id& self, SEL)
{
    return layerIn(self).view ? layerIn(self).view->frame() : layerIn(self).frame;
}

void setFrame(const id& self, SEL, CGRect frame)
{
    if (layerIn(self).view)
        layerIn(self).view->setFrame(frame);
    else if (std::exchange(layerIn(self).frame, frame) != frame)
        changed(layerIn(self), Asks::Drawing);
}

id backgroundColor(const id& self, SEL)
{
    return layerIn(self).view ? layerIn(self).view->backgroundColor : layerIn(self).backgroundColor;
}

void setBackgroundColor(const id& self, SEL, const id& color)
{
    if (layerIn(self).view)
        layerIn(self).view->setBackgroundColor(color);
    else if (!isEqual(std::exchange(layerIn(self).backgroundColor, color), color))
        changed(layerIn(self), Asks::Drawing);
}

float opacity(const id& self, SEL)
{
    return static_cast<float>(layerIn(self).view ? layerIn(self).view->alpha : layerIn(self).opacity);
}

void setOpacity(const id& self, SEL, float opacity)
{
    if (layerIn(self).view)
        layerIn(self).view->setAlpha(opacity);
    else if (std::exchange(layerIn(self).opacity, opacity) != opacity)
        changed(layerIn(self), Asks::Drawing);
}

id sublayers(const id& self, SEL)
{
    return array({ layerIn(self).sublayers.begin(), layerIn(self).sublayers.end() });
}

void renderInContext(const id& self, SEL, const id& context)
{
    const auto* const target = as<GraphicsContext>(context);
    if (target && target->canvas)
        renderLayer(*target->canvas, layerIn(self), layerIn(self).bounds());
}

constexpr MethodDefinition methods[] {
    method<"addSublayer:", &CALayer::addSublayer>(),
    method<"backgroundColor", &backgroundColor>(),
    getter<"borderColor", &CALayer::borderColor>(),
    getter<"borderWidth", &CALayer::borderWidth>(),
    method<"bounds", &CALayer::bounds>(),
    getter<"contents", &CALayer::contents>(),
    getter<"cornerCurve", &CALayer::cornerCurve>(),
    getter<"cornerRadius", &CALayer::cornerRadius>(),
    method<"frame", &frame>(),
    method<"insertSublayer:atIndex:", &CALayer::insertSublayer>(),
    classMethod<"layer", &layer>(),
    getter<"maskedCorners", &CALayer::maskedCorners>(),
    getter<"masksToBounds", &CALayer::masksToBounds>(),
    method<"opacity", &opacity>(),
    method<"removeFromSuperlayer", &CALayer::removeFromSuperlayer>(),
    method<"renderInContext:", &renderInContext>(),
    method<"setBackgroundColor:", &setBackgroundColor>(),
    setterThatAsks<"setBorderColor:", &CALayer::borderColor, Asks::Drawing>(),
    setterThatAsks<"setBorderWidth:", &CALayer::borderWidth, Asks::Drawing>(),
    setterThatAsks<"setContents:", &CALayer::contents, Asks::Drawing>(),
    setterThatAsks<"setCornerCurve:", &CALayer::cornerCurve, Asks::Drawing>(),
    method<"setCornerRadius:", &CALayer::setCornerRadius>(),
    method<"setFrame:", &setFrame>(),
    setterThatAsks<"setHidden:", &CALayer::hidden, Asks::Drawing>(),
    setterThatAsks<"setMaskedCorners:", &CALayer::maskedCorners, Asks::Drawing>(),
    setterThatAsks<"setMasksToBounds:", &CALayer::masksToBounds, Asks::Drawing>(),
    method<"setOpacity:", &setOpacity>(),
    setterThatAsks<"setShadowColor:", &CALayer::shadowColor, Asks::Drawing>(),
    setterThatAsks<"setShadowOffset:", &CALayer::shadowOffset, Asks::Drawing>(),
    setterThatAsks<"setShadowOpacity:", &CALayer::shadowOpacity, Asks::Drawing>(),
    setterThatAsks<"setShadowRadius:", &CALayer::shadowRadius, Asks::Drawing>(),
    getter<"shadowColor", &CALayer::shadowColor>(),
    getter<"shadowOffset", &CALayer::shadowOffset>(),
    getter<"shadowOpacity", &CALayer::shadowOpacity>(),
    getter<"shadowRadius", &CALayer::shadowRadius>(),
    method<"sublayers", &sublayers>(),
};

/// Colours that run into each other, from the start point to the end point, in shares of the layer's sides.
class CAGradientLayer : public CALayer {
public:
    id colors {};
    id locations {};
    CGPoint startPoint { 0.5, 0 };
    CGPoint endPoint { 0.5, 1 };

    void drawContents(Canvas& canvas, const CGRect& bounds) const override
    {
        const ArrayValue items = itemsOf(colors);
        const ArrayValue places = itemsOf(locations);
        std::vector<GradientStop> stops;
        for (std::size_t index = 0; index < items.size(); ++index) {
            const double even
                = items.size() > 1 ? static_cast<double>(index) / static_cast<double>(items.size() - 1) : 0;
            stops.push_back({ index < places.size() ? asDouble(places[index]).value_or(even) : even,
                asColor(items[index]).value_or(Color { 0, 0, 0, 0 }) });
        }
        const auto at = [&](CGPoint share) {
            return CGPointMake(
                bounds.origin.x + share.x * bounds.size.width, bounds.origin.y + share.y * bounds.size.height);
        };
        canvas.fillGradient(outline(bounds, cornerRadius), at(startPoint), at(endPoint), stops);
    }
};

constexpr MethodDefinition gradientMethods[] {
    getter<"colors", &CAGradientLayer::colors>(),
    setterThatAsks<"setColors:", &CAGradientLayer::colors, Asks::Drawing>(),
    setterThatAsks<"setEndPoint:", &CAGradientLayer::endPoint, Asks::Drawing>(),
    setterThatAsks<"setLocations:", &CAGradientLayer::locations, Asks::Drawing>(),
    setterThatAsks<"setStartPoint:", &CAGradientLayer::startPoint, Asks::Drawing>(),
};

} // namespace

const ClassDefinition CALayer::definition { .name = "CALayer", .allocate = allocate<CALayer>, .methods = methods };
const ClassDefinition CAGradientLayer_class { .name = "CAGradientLayer",
    .superclass = &CALayer::definition,
    .allocate = allocate<CAGradientLayer>,
    .methods = gradientMethods };

} // namespace platform
