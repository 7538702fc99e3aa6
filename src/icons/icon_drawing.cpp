#include "icons/icon_drawing.h"

#include "platform/runtime/message.h"
#include "platform/screen/framework.h"

#include <algorithm>
#include <cmath>

namespace appledger {

using namespace platform;

namespace {

enum class Background { Transparent, Opaque };

/// An image context that ends with its scope, whatever the drawing raises.
class ImageContext {
public:
    ImageContext(const CGSize& size, Background background, double scale)
    {
        UIGraphicsBeginImageContextWithOptions(size, background == Background::Opaque, scale);
    }
    ~ImageContext() { UIGraphicsEndImageContext(); }
    ImageContext(const ImageContext&) = delete;
    ImageContext& operator=(const ImageContext&) = delete;

    id image() const { return UIGraphicsGetImageFromCurrentImageContext(); }
};

void clipToRoundedRect(const CGSize& size, double radius)
{
    const id path = askObject<"bezierPathWithRoundedRect:cornerRadius:">(
        id(classNamed<"UIBezierPath">()), CGRect { {}, size }, radius);
    ask<"addClip", void>(path);
}

CGSize sizeOf(const id& image)
{
    return ask<"size", CGSize>(image).value_or(CGSizeZero);
}

} // namespace

CGRect fillingRect(const CGSize& picture, const CGSize& box, double zoom)
{
    const double factor = std::max(box.width / picture.width, box.height / picture.height) * zoom;
    const CGSize size { factor * picture.width, factor * picture.height };
    return { { (box.width - size.width) * 0.5, (box.height - size.height) * 0.5 }, size };
}

id drawMaskedIcon(const id& image, const CGSize& size, double scale, double cornerRadius)
{
    const ImageContext context(size, Background::Transparent, scale);
    clipToRoundedRect(size, cornerRadius);
    ask<"drawInRect:", void>(image, fillingRect(sizeOf(image), size));
    return context.image();
}

id drawUnmaskedIcon(const id& image, const CGSize& size, double scale)
{
    constexpr double underlay = 1.3;
    const ImageContext context(size, Background::Opaque, scale);
    ask<"drawInRect:", void>(image, fillingRect(sizeOf(image), size, underlay));
    ask<"drawInRect:", void>(image, fillingRect(sizeOf(image), size));
    return context.image();
}

id drawIconForFile(const id& image)
{
    constexpr float cornerFactor = 0.224F; // single precision, so that every version writes the same corners
    const CGSize size = sizeOf(image);
    const double side = std::min(size.width, size.height);
    const CGSize square { side, side };
    const ImageContext context(square, Background::Transparent, ask<"scale", double>(image).value_or(1));
    clipToRoundedRect(square, std::round(side * static_cast<double>(cornerFactor)));
    ask<"drawAtPoint:", void>(image, CGPointMake(-(size.width - side) / 2, -(size.height - side) / 2));
    return context.image();
}

} // namespace appledger
