#include "platform/foundation/block.h"
#include "platform/foundation/values.h"
#include "platform/graphics/objects.h"
#include "platform/runtime/message.h"

#include <memory>
#include <vector>

/// The current context of a thread, and the two ways of drawing an image: a context that is begun and ended, and a
/// renderer that is given a block.

namespace platform {

namespace {

struct Level {
    Canvas* canvas;
    Ref<GraphicsContext> object;
    Color fill {};
    Color stroke {};
};

struct ImageContext {
    Bitmap bitmap; ///< empty when it was begun with a size that no image can have
    double scale;
    std::unique_ptr<Canvas> canvas {};
};

std::vector<Level>& levels()
{
    thread_local std::vector<Level> stack;
    return stack;
}

std::vector<std::unique_ptr<ImageContext>>& imageContexts()
{
    thread_local std::vector<std::unique_ptr<ImageContext>> stack;
    return stack;
}

double screenScale()
{
    return ask<"scale", double>(askObject<"mainScreen">(id(classNamed<"UIScreen">()))).value_or(1);
}

void push(Canvas& canvas)
{
    const Ref<GraphicsContext> object = make<GraphicsContext>();
    object->canvas = &canvas;
    levels().push_back({ &canvas, object });
}

void pop()
{
    levels().back().object->canvas = nullptr;
    levels().pop_back();
}

void beginImageContext(const id&, SEL, CGSize size, bool opaque, double scale)
{
    auto context = std::make_unique<ImageContext>();
    context->scale = scale > 0 ? scale : screenScale();
    constexpr double most = mostPixels;
    const double width = std::ceil(size.width * context->scale);
    const double height = std::ceil(size.height * context->scale);
    // Where the comparison fails, one of them isn't a number.
    if (width <= most && height <= most)
        if (auto bitmap = Bitmap::make(static_cast<long>(width), static_cast<long>(height)))
            context->bitmap = std::move(*bitmap);
    if (context->bitmap.pixels.empty())
        context->bitmap = *Bitmap::make(1, 1);
    if (opaque)
        std::ranges::fill(context->bitmap.pixels, 0xFF000000U);
    context->canvas = std::make_unique<Canvas>(context->bitmap, context->scale);
    push(*context->canvas);
    imageContexts().push_back(std::move(context));
}

id imageFromCurrentContext(const id&, SEL)
{
    if (imageContexts().empty() || levels().back().canvas != imageContexts().back()->canvas.get())
        return nil;
    const ImageContext& context = *imageContexts().back();
    return imageObject(context.bitmap, context.scale);
}

void endImageContext(const id&, SEL)
{
    if (imageContexts().empty() || levels().back().canvas != imageContexts().back()->canvas.get())
        return;
    pop();
    imageContexts().pop_back();
}

id currentContext(const id&, SEL)
{
    return levels().empty() ? nil : id(levels().back().object);
}

constexpr MethodDefinition functions[] {
    classMethod<"beginImageContextWithSize:opaque:scale:", &beginImageContext>(),
    classMethod<"currentContext", &currentContext>(),
    classMethod<"endImageContext", &endImageContext>(),
    classMethod<"imageFromCurrentContext", &imageFromCurrentContext>(),
};

/// Draws images that stay sharp at every scale.
class GraphicsImageRendererObject : public NSObject {
public:
    CGSize size {};

    id initWithSize(CGSize newSize)
    {
        size = newSize;
        return this;
    }

    id imageWithActions(const id& actions) const
    {
        const std::shared_ptr<Recording> recording = Canvas::makeRecording(size);
        {
            Canvas canvas(recording);
            const CurrentCanvas current(canvas);
            callBlock(actions, id(levels().back().object));
        }
        return imageObject(recording, size, screenScale());
    }
};

constexpr MethodDefinition rendererMethods[] {
    method<"imageWithActions:", &GraphicsImageRendererObject::imageWithActions>(),
    method<"initWithSize:", &GraphicsImageRendererObject::initWithSize>(),
};

void saveState(const id& self, SEL)
{
    if (Canvas* const canvas = static_cast<GraphicsContext&>(*self).canvas)
        canvas->save();
}

void restoreState(const id& self, SEL)
{
    if (Canvas* const canvas = static_cast<GraphicsContext&>(*self).canvas)
        canvas->restore();
}

void concatTransform(const id& self, SEL, CGAffineTransform transform)
{
    if (Canvas* const canvas = static_cast<GraphicsContext&>(*self).canvas)
        canvas->concat(transform);
}

void drawLinearGradient(const id& self, SEL, const id& colors, CGPoint start, CGPoint end)
{
    Canvas* const canvas = static_cast<GraphicsContext&>(*self).canvas;
    const ArrayValue items = itemsOf(colors);
    if (!canvas || items.empty())
        return;
    std::vector<GradientStop> stops;
    for (std::size_t index = 0; index < items.size(); ++index)
        stops.push_back({ items.size() == 1 ? 0 : static_cast<double>(index) / static_cast<double>(items.size() - 1),
            asColor(items[index]).value_or(Color {}) });
    constexpr double everywhere = 1e5;
    Path all;
    all.addRect(CGRectMake(-everywhere, -everywhere, 2 * everywhere, 2 * everywhere));
    canvas->fillGradient(all, start, end, stops);
}

constexpr MethodDefinition contextMethods[] {
    method<"concatTransform:", &concatTransform>(),
    method<"drawLinearGradient:from:to:", &drawLinearGradient>(),
    method<"restoreState", &restoreState>(),
    method<"saveState", &saveState>(),
};

} // namespace

const ClassDefinition UIGraphicsFunctions_class { .name = "UIGraphicsFunctions", .methods = functions };
const ClassDefinition UIGraphicsImageRenderer_class {
    .name = "UIGraphicsImageRenderer", .allocate = allocate<GraphicsImageRendererObject>, .methods = rendererMethods
};
const ClassDefinition GraphicsContext::definition {
    .name = "UIGraphicsContext", .allocate = allocate<GraphicsContext>, .methods = contextMethods
};

CurrentCanvas::CurrentCanvas(Canvas& canvas)
{
    push(canvas);
}

CurrentCanvas::~CurrentCanvas()
{
    pop();
}

Canvas* currentCanvas() noexcept
{
    return levels().empty() ? nullptr : levels().back().canvas;
}

Color currentFillColor() noexcept
{
    return levels().empty() ? Color {} : levels().back().fill;
}

Color currentStrokeColor() noexcept
{
    return levels().empty() ? Color {} : levels().back().stroke;
}

void setCurrentFillColor(const Color& color) noexcept
{
    if (!levels().empty())
        levels().back().fill = color;
}

void setCurrentStrokeColor(const Color& color) noexcept
{
    if (!levels().empty())
        levels().back().stroke = color;
}

} // namespace platform
