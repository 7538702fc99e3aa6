#include "platform/graphics/objects.h"

#include "platform/foundation/files.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace platform {

std::shared_ptr<const Bitmap> ImageObject::bitmap() const
{
    const std::lock_guard lock(mutex_);
    if (!bitmap_ && drawing) {
        auto pixels = Bitmap::make(std::lround(size.width * scale), std::lround(size.height * scale));
        if (pixels) {
            Canvas(*pixels, scale).draw(*drawing, size, { {}, size });
            bitmap_ = std::make_shared<const Bitmap>(std::move(*pixels));
        }
    } else if (!bitmap_ && file) {
        if (auto pixels = file->whole())
            bitmap_ = std::make_shared<const Bitmap>(std::move(*pixels));
    }
    return bitmap_;
}

void ImageObject::setBitmap(Bitmap pixels)
{
    size = { pixels.width / scale, pixels.height / scale };
    bitmap_ = std::make_shared<const Bitmap>(std::move(pixels));
}

void ImageObject::copyTo(ImageObject& other) const
{
    other.size = size;
    other.scale = scale;
    other.renderingMode = renderingMode;
    other.isSymbol = isSymbol;
    other.accessibilityIdentifier = accessibilityIdentifier;
    other.tint = tint;
    other.drawing = drawing;
    other.file = file;
    const std::lock_guard lock(mutex_);
    other.bitmap_ = bitmap_;
}

/// When the copy has enough pixels for it, or is all there is.
bool ImageObject::drawSmallCopy(Canvas& canvas, const CGRect& rect, double alpha) const
{
    if (!file)
        return false;
    const Bitmap& copy = file->smallCopy();
    const bool isEnough
        = canvas.scale() * rect.size.width <= copy.width && canvas.scale() * rect.size.height <= copy.height;
    if (!isEnough && bitmap())
        return false;
    canvas.draw(copy, rect, alpha);
    return true;
}

void ImageObject::draw(Canvas& canvas, const CGRect& rect, const Color& tintColor, double alpha) const
{
    if (CGRectIsEmpty(rect))
        return;
    const bool stencil = isTemplate();
    if (stencil)
        canvas.beginGroup();
    const double pixelsAPoint = size.width > 0 ? canvas.scale() * rect.size.width / size.width : 0;
    if (drawing && pixelsAPoint > scale)
        canvas.draw(*drawing, size, rect, stencil ? 1 : alpha);
    else if (!drawSmallCopy(canvas, rect, stencil ? 1 : alpha))
        if (const auto pixels = bitmap())
            canvas.draw(*pixels, rect, stencil ? 1 : alpha);
    if (stencil) {
        Color color = asColor(tint).value_or(tintColor);
        color.alpha *= alpha;
        canvas.endGroup(color);
    }
}

id imageObject(Bitmap bitmap, double scale)
{
    if (bitmap.pixels.empty())
        return nil;
    const Ref<ImageObject> image = make<ImageObject>();
    image->scale = scale > 0 ? scale : 1;
    image->setBitmap(std::move(bitmap));
    return image;
}

id imageObject(std::shared_ptr<const PictureFile> file, double scale)
{
    const Ref<ImageObject> image = make<ImageObject>();
    image->size = { file->width() / scale, file->height() / scale };
    image->scale = scale;
    image->file = std::move(file);
    return image;
}

id imageObject(std::shared_ptr<const Recording> drawing, CGSize size, double scale)
{
    const Ref<ImageObject> image = make<ImageObject>();
    image->size = size;
    image->scale = scale > 0 ? scale : 1;
    image->drawing = std::move(drawing);
    return image;
}

namespace {

/// "picture@3x.png" holds three pixels a point.
double scaleInName(std::string_view path)
{
    const std::string_view stem = path.substr(0, path.rfind('.'));
    for (const auto& [suffix, scale] : { std::pair("@2x", 2.0), std::pair("@3x", 3.0) })
        if (stem.ends_with(suffix))
            return scale;
    return 1;
}

id imageFromBytes(std::string_view bytes, double scale)
{
    auto bitmap = decodePicture(bytes);
    return bitmap ? imageObject(std::move(*bitmap), scale) : nil;
}

id imageFromFile(std::string_view path)
{
    const double scale = scaleInName(path);
    if (auto file = PictureFile::open(path))
        return imageObject(std::move(file), scale);
    const auto bytes = readFile(path);
    return bytes ? imageFromBytes(*bytes, scale) : nil;
}

id imageWithContentsOfFile(const id&, SEL, const id& path)
{
    const auto text = asString(path);
    return text ? imageFromFile(*text) : nil;
}

id imageWithDataAndScale(const id&, SEL, const id& data, double scale)
{
    const auto bytes = asData(data);
    return bytes ? imageFromBytes(*bytes, scale) : nil;
}

id imageWithData(const id& self, SEL cmd, const id& data)
{
    return imageWithDataAndScale(self, cmd, data, 1);
}

/// The picture for the screen's scale, or the nearest sharper one, or what there is.
id imageNamedInBundle(const id&, SEL, const id& name, const id& bundle)
{
    const auto text = asString(name);
    if (!text || !bundle)
        return nil;
    const double screen = send<"scale", double>(send<"mainScreen">(id(classNamed<"UIScreen">())));
    id best;
    double bestScale = 0;
    for (const char* const suffix : { "", "@2x", "@3x" }) {
        const auto path
            = asString(askObject<"pathForResource:ofType:">(bundle, string(text->text() + suffix), string("png")));
        if (!path || bestScale >= screen)
            continue;
        if (id image = imageFromFile(*path)) {
            as<ImageObject>(image)->accessibilityIdentifier = name;
            best = std::move(image);
            bestScale = scaleInName(*path);
        }
    }
    return best;
}

id systemImageNamed(const id&, SEL, const id& name)
{
    const auto text = asString(name);
    CGSize size;
    auto symbol = text ? systemSymbol(*text, size) : nullptr;
    if (!symbol)
        return nil;
    constexpr double scale = 3;
    const id image = imageObject(std::move(symbol), size, scale);
    as<ImageObject>(image)->isSymbol = true;
    as<ImageObject>(image)->accessibilityIdentifier = name;
    return image;
}

ImageObject& imageIn(const id& self)
{
    return static_cast<ImageObject&>(*self);
}

id imageWithRenderingMode(const id& self, SEL, long mode)
{
    const Ref<ImageObject> image = make<ImageObject>();
    imageIn(self).copyTo(*image);
    image->renderingMode = static_cast<RenderingMode>(mode);
    return image;
}

id imageWithTintColor(const id& self, SEL, const id& color)
{
    const Ref<ImageObject> image = make<ImageObject>();
    imageIn(self).copyTo(*image);
    image->tint = color;
    return image;
}

void drawInRect(const id& self, SEL, CGRect rect)
{
    if (Canvas* const canvas = currentCanvas())
        imageIn(self).draw(*canvas, rect, Color {});
}

void drawInRectBlended(const id& self, SEL, CGRect rect, int, double alpha)
{
    if (Canvas* const canvas = currentCanvas())
        imageIn(self).draw(*canvas, rect, Color {}, alpha);
}

void drawAtPoint(const id& self, SEL cmd, CGPoint point)
{
    drawInRect(self, cmd, { point, imageIn(self).size });
}

id itself(const id& self, SEL)
{
    return self;
}

id pngRepresentation(const id& self, SEL)
{
    const auto pixels = imageIn(self).bitmap();
    std::string bytes = pixels ? encodePng(*pixels) : "";
    return bytes.empty() ? id() : dataTaking(std::move(bytes));
}

constexpr MethodDefinition methods[] {
    method<"CGImage", &itself>(),
    method<"PNGRepresentation", &pngRepresentation>(),
    getter<"accessibilityIdentifier", &ImageObject::accessibilityIdentifier>(),
    method<"drawAtPoint:", &drawAtPoint>(),
    method<"drawInRect:", &drawInRect>(),
    method<"drawInRect:blendMode:alpha:", &drawInRectBlended>(),
    classMethod<"imageNamed:inBundle:", &imageNamedInBundle>(),
    classMethod<"imageWithContentsOfFile:", &imageWithContentsOfFile>(),
    classMethod<"imageWithData:", &imageWithData>(),
    classMethod<"imageWithData:scale:", &imageWithDataAndScale>(),
    method<"imageWithRenderingMode:", &imageWithRenderingMode>(),
    method<"imageWithTintColor:", &imageWithTintColor>().since(13),
    getter<"renderingMode", &ImageObject::renderingMode>(),
    getter<"scale", &ImageObject::scale>(),
    setter<"setAccessibilityIdentifier:", &ImageObject::accessibilityIdentifier>(),
    getter<"size", &ImageObject::size>(),
    classMethod<"systemImageNamed:", &systemImageNamed>().since(13),
};

} // namespace

const ClassDefinition ImageObject::definition {
    .name = "UIImage", .allocate = allocate<ImageObject>, .methods = methods
};

} // namespace platform
