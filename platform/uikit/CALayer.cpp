#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/uikit/animation.h"
#include "platform/uikit/layers.h"
#include "platform/uikit/renderer.h"
#include "platform/uikit/screen_picture.h"

namespace platform {

LayerObject::~LayerObject()
{
    for (const Ref<LayerObject>& sublayer : sublayers)
        sublayer->superlayer = nullptr;
}

void LayerObject::setCornerRadius(double radius)
{
    if (view)
        noteChange(*view, Animatable::CornerRadius, valuesOf(cornerRadius), valuesOf(radius));
    if (std::exchange(cornerRadius, radius) != radius)
        changed(*this, Asks::Drawing);
}

void LayerObject::insertSublayer(const id& sublayer, unsigned index)
{
    const Ref<LayerObject> added(as<LayerObject>(sublayer));
    if (!added || added.get() == this)
        return;
    added->removeFromSuperlayer();
    added->superlayer = this;
    sublayers.insert(
        sublayers.begin() + static_cast<std::ptrdiff_t>(std::min<std::size_t>(index, sublayers.size())), added);
    changed(*this, Asks::Drawing);
}

void LayerObject::addSublayer(const id& sublayer)
{
    insertSublayer(sublayer, static_cast<unsigned>(sublayers.size()));
}

void LayerObject::removeFromSuperlayer()
{
    const Ref<LayerObject> self(this);
    if (!superlayer)
        return;
    std::erase(superlayer->sublayers, self);
    superlayer = nullptr;
    changed(*this, Asks::Drawing);
}

void changed(LayerObject&, Asks)
{
    noteDamage();
}

Path LayerObject::outline(const CGRect& bounds, double radius) const
{
    const auto curve = asString(cornerCurve);
    const bool isContinuous = curve && curve->view() == "continuous";
    return Path::roundedRect(bounds,
        { radius, static_cast<unsigned>(maskedCorners),
            isContinuous ? CornerCurve::Continuous : CornerCurve::Circular });
}

CGRect LayerObject::bounds() const
{
    return view ? view->bounds : CGRect { {}, frame.size };
}

void LayerObject::drawContents(Canvas& canvas, const CGRect& bounds) const
{
    if (const auto* const image = as<ImageObject>(contents))
        image->draw(canvas, bounds, Color {});
}

namespace {

LayerObject& layerIn(const id& self)
{
    return static_cast<LayerObject&>(*self);
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
    method<"addSublayer:", &LayerObject::addSublayer>(),
    method<"backgroundColor", &backgroundColor>(),
    getter<"borderColor", &LayerObject::borderColor>(),
    getter<"borderWidth", &LayerObject::borderWidth>(),
    method<"bounds", &LayerObject::bounds>(),
    getter<"contents", &LayerObject::contents>(),
    getter<"cornerCurve", &LayerObject::cornerCurve>(),
    getter<"cornerRadius", &LayerObject::cornerRadius>(),
    method<"frame", &frame>(),
    method<"insertSublayer:atIndex:", &LayerObject::insertSublayer>(),
    classMethod<"layer", &layer>(),
    getter<"maskedCorners", &LayerObject::maskedCorners>(),
    getter<"masksToBounds", &LayerObject::masksToBounds>(),
    method<"opacity", &opacity>(),
    method<"removeFromSuperlayer", &LayerObject::removeFromSuperlayer>(),
    method<"renderInContext:", &renderInContext>(),
    method<"setBackgroundColor:", &setBackgroundColor>(),
    setterThatAsks<"setBorderColor:", &LayerObject::borderColor, Asks::Drawing>(),
    setterThatAsks<"setBorderWidth:", &LayerObject::borderWidth, Asks::Drawing>(),
    setterThatAsks<"setContents:", &LayerObject::contents, Asks::Drawing>(),
    setterThatAsks<"setCornerCurve:", &LayerObject::cornerCurve, Asks::Drawing>(),
    method<"setCornerRadius:", &LayerObject::setCornerRadius>(),
    method<"setFrame:", &setFrame>(),
    setterThatAsks<"setHidden:", &LayerObject::hidden, Asks::Drawing>(),
    setterThatAsks<"setMaskedCorners:", &LayerObject::maskedCorners, Asks::Drawing>(),
    setterThatAsks<"setMasksToBounds:", &LayerObject::masksToBounds, Asks::Drawing>(),
    method<"setOpacity:", &setOpacity>(),
    setterThatAsks<"setShadowColor:", &LayerObject::shadowColor, Asks::Drawing>(),
    setterThatAsks<"setShadowOffset:", &LayerObject::shadowOffset, Asks::Drawing>(),
    setterThatAsks<"setShadowOpacity:", &LayerObject::shadowOpacity, Asks::Drawing>(),
    setterThatAsks<"setShadowRadius:", &LayerObject::shadowRadius, Asks::Drawing>(),
    getter<"shadowColor", &LayerObject::shadowColor>(),
    getter<"shadowOffset", &LayerObject::shadowOffset>(),
    getter<"shadowOpacity", &LayerObject::shadowOpacity>(),
    getter<"shadowRadius", &LayerObject::shadowRadius>(),
    method<"sublayers", &sublayers>(),
};

/// Colours that run into each other, from the start point to the end point, in shares of the layer's sides.
class GradientLayerObject : public LayerObject {
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
    getter<"colors", &GradientLayerObject::colors>(),
    setterThatAsks<"setColors:", &GradientLayerObject::colors, Asks::Drawing>(),
    setterThatAsks<"setEndPoint:", &GradientLayerObject::endPoint, Asks::Drawing>(),
    setterThatAsks<"setLocations:", &GradientLayerObject::locations, Asks::Drawing>(),
    setterThatAsks<"setStartPoint:", &GradientLayerObject::startPoint, Asks::Drawing>(),
};

} // namespace

const ClassDefinition LayerObject::definition {
    .name = "CALayer", .allocate = allocate<LayerObject>, .methods = methods
};
const ClassDefinition CAGradientLayer_class { .name = "CAGradientLayer",
    .superclass = &LayerObject::definition,
    .allocate = allocate<GradientLayerObject>,
    .methods = gradientMethods };

} // namespace platform
