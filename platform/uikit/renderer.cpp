#include "platform/uikit/renderer.h"

#include "platform/graphics/appearance.h"
#include "platform/runtime/message.h"
#include "platform/uikit/animation.h"
#include "platform/uikit/layout.h"
#include "platform/uikit/traits.h"
#include "platform/uikit/window.h"

namespace platform {

namespace {

class SavedState {
public:
    explicit SavedState(Canvas& canvas)
        : canvas_(canvas)
    {
        canvas_.save();
    }
    SavedState(const SavedState&) = delete;
    SavedState& operator=(const SavedState&) = delete;
    ~SavedState() { canvas_.restore(); }

private:
    Canvas& canvas_;
};

void drawBorder(Canvas& canvas, const LayerObject& layer, const CGRect& bounds, double cornerRadius)
{
    if (layer.borderWidth <= 0)
        return;
    const double inset = layer.borderWidth / 2;
    canvas.stroke(layer.outline(CGRectInset(bounds, inset, inset), cornerRadius - inset),
        asColor(layer.borderColor).value_or(Color {}), layer.borderWidth);
}

void drawSublayers(Canvas& canvas, const LayerObject& layer)
{
    for (const Ref<LayerObject>& sublayer : layer.sublayers) {
        const SavedState saved(canvas);
        canvas.concat(CGAffineTransformMakeTranslation(sublayer->frame.origin.x, sublayer->frame.origin.y));
        renderLayer(canvas, *sublayer, { {}, sublayer->frame.size });
    }
}

Path outlineOf(const LayerObject* layer, const Presentation& seen)
{
    return layer ? layer->outline(seen.bounds, seen.cornerRadius) : Path::roundedRect(seen.bounds, 0);
}

/// The view in its own coordinates, without its shadow and at full alpha.
void drawBody(Canvas& canvas, const ViewObject& view, const Presentation& seen)
{
    const LayerObject* const layer = view.layerIfMade();
    const Path outline = outlineOf(layer, seen);
    if (seen.backgroundColor)
        canvas.fill(outline, *seen.backgroundColor);
    {
        const SavedState saved(canvas);
        if (layer && layer->masksToBounds)
            canvas.clip(outline);
        if (layer) {
            layer->drawContents(canvas, seen.bounds);
            drawSublayers(canvas, *layer);
        }
        view.drawContent(canvas, seen.bounds);
        const id self(const_cast<ViewObject*>(&view));
        if (respondsTo<"drawRect:">(self)) {
            const SavedState drawing(canvas);
            const CurrentCanvas current(canvas);
            canvas.clip(Path::roundedRect(seen.bounds, 0));
            send<"drawRect:", void>(self, seen.bounds);
        }
        for (const Ref<ViewObject>& subview : view.subviews)
            renderView(canvas, *subview);
    }
    if (layer)
        drawBorder(canvas, *layer, seen.bounds, seen.cornerRadius);
}

CGRect unionOf(const CGRect& left, const CGRect& right)
{
    const double x = std::min(left.origin.x, right.origin.x);
    const double y = std::min(left.origin.y, right.origin.y);
    return CGRectMake(x, y, std::max(CGRectGetMaxX(left), CGRectGetMaxX(right)) - x,
        std::max(CGRectGetMaxY(left), CGRectGetMaxY(right)) - y);
}

/// Where the shadow of what takes up that rectangle can reach.
CGRect reachOfShadow(const CGRect& rect, const LayerObject& layer)
{
    const double reach = 3 * layer.shadowRadius + 1;
    return unionOf(
        rect, CGRectOffset(CGRectInset(rect, -reach, -reach), layer.shadowOffset.width, layer.shadowOffset.height));
}

CGAffineTransform outwards(const Presentation& seen)
{
    const CGAffineTransform toCenter
        = CGAffineTransformMakeTranslation(-CGRectGetMidX(seen.bounds), -CGRectGetMidY(seen.bounds));
    return CGAffineTransformConcat(CGAffineTransformConcat(toCenter, seen.transform),
        CGAffineTransformMakeTranslation(seen.center.x, seen.center.y));
}

/// Where the view and what stands in it can leave a mark, in its own coordinates: what is put together first needs no
/// more room than that.
CGRect extentOf(const ViewObject& view, const Presentation& seen)
{
    const LayerObject* const layer = view.layerIfMade();
    CGRect extent = seen.bounds;
    if (layer && layer->masksToBounds)
        return extent;
    if (layer)
        for (const Ref<LayerObject>& sublayer : layer->sublayers)
            extent = unionOf(extent, sublayer->frame);
    for (const Ref<ViewObject>& subview : view.subviews)
        if (!subview->hidden) {
            const Presentation inside = presentationOf(*subview);
            extent = unionOf(extent, CGRectApplyAffineTransform(extentOf(*subview, inside), outwards(inside)));
        }
    return layer && layer->shadowOpacity > 0 ? reachOfShadow(extent, *layer) : extent;
}

void drawShadow(Canvas& canvas, const ViewObject& view, const Presentation& seen)
{
    const LayerObject* const layer = view.layerIfMade();
    if (!layer || layer->shadowOpacity <= 0 || layer->masksToBounds)
        return;
    const SavedState saved(canvas);
    canvas.clip(Path::roundedRect(extentOf(view, seen), 0));
    canvas.beginGroup();
    if (seen.backgroundColor && seen.backgroundColor->alpha > 0)
        canvas.fill(outlineOf(layer, seen), *seen.backgroundColor);
    else
        drawBody(canvas, view, seen);
    Color color = asColor(layer->shadowColor).value_or(Color {});
    color.alpha *= layer->shadowOpacity;
    canvas.endGroupAsShadow(color, layer->shadowOffset, layer->shadowRadius);
}

} // namespace

void renderView(Canvas& canvas, const ViewObject& view)
{
    std::optional<AppearanceScope> appearance;
    if (const long asked = styleAskedBy(view); asked != 0)
        appearance.emplace(static_cast<InterfaceStyle>(asked) == InterfaceStyle::Dark);
    const Presentation seen = presentationOf(view);
    if (view.hidden || seen.alpha <= 0)
        return;
    const SavedState saved(canvas);
    canvas.concat(outwards(seen));
    const bool together = seen.alpha < 1;
    if (together) {
        canvas.clip(Path::roundedRect(extentOf(view, seen), 0));
        canvas.beginGroup();
    }
    drawShadow(canvas, view, seen);
    drawBody(canvas, view, seen);
    if (together)
        canvas.endGroup(seen.alpha);
}

void renderLayer(Canvas& canvas, const LayerObject& layer, const CGRect& bounds)
{
    if (layer.hidden || layer.opacity <= 0)
        return;
    const SavedState saved(canvas);
    const bool together = layer.opacity < 1;
    if (together)
        canvas.beginGroup();
    {
        const SavedState clipped(canvas);
        const Path outline = layer.outline(bounds, layer.cornerRadius);
        if (const auto color = asColor(layer.backgroundColor))
            canvas.fill(outline, *color);
        if (layer.masksToBounds)
            canvas.clip(outline);
        layer.drawContents(canvas, bounds);
        drawSublayers(canvas, layer);
    }
    drawBorder(canvas, layer, bounds, layer.cornerRadius);
    if (together)
        canvas.endGroup(layer.opacity);
}

std::optional<Bitmap> renderScreen(double scale)
{
    layoutAllWindows();
    const CGSize size = screenFacts().size;
    constexpr double most = mostPixels;
    if (!(scale > 0) || size.width * scale * size.height * scale > most)
        return std::nullopt;
    auto bitmap = Bitmap::make(std::lround(size.width * scale), std::lround(size.height * scale));
    if (!bitmap)
        return std::nullopt;
    std::ranges::fill(bitmap->pixels, 0xFF000000U);
    Canvas canvas(*bitmap, scale);
    for (const Ref<WindowObject>& window : allWindows())
        renderView(canvas, *window);
    return bitmap;
}

} // namespace platform
