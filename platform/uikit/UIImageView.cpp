#include "platform/runtime/message.h"
#include "platform/uikit/views.h"

namespace platform {

namespace {

/// How a picture fills a box, by the system's numbers.
enum class ContentMode : long {
    ScaleToFill = 0,
    ScaleAspectFit = 1,
    ScaleAspectFill = 2,
    Center = 4,
    Top = 5,
    Bottom = 6,
    Left = 7,
    Right = 8,
    TopLeft = 9,
    TopRight = 10,
    BottomLeft = 11,
    BottomRight = 12,
};

CGRect pictureRect(ContentMode mode, CGSize picture, const CGRect& box)
{
    if (mode == ContentMode::ScaleToFill || picture.width <= 0 || picture.height <= 0)
        return box;
    const double across = box.size.width / picture.width;
    const double down = box.size.height / picture.height;
    double scale = 1;
    if (mode == ContentMode::ScaleAspectFit)
        scale = std::min(across, down);
    else if (mode == ContentMode::ScaleAspectFill)
        scale = std::max(across, down);
    const CGSize size { picture.width * scale, picture.height * scale };
    double x = 0.5;
    double y = 0.5;
    using enum ContentMode;
    if (mode == Left || mode == TopLeft || mode == BottomLeft)
        x = 0;
    if (mode == Right || mode == TopRight || mode == BottomRight)
        x = 1;
    if (mode == Top || mode == TopLeft || mode == TopRight)
        y = 0;
    if (mode == Bottom || mode == BottomLeft || mode == BottomRight)
        y = 1;
    return { { box.origin.x + (box.size.width - size.width) * x, box.origin.y + (box.size.height - size.height) * y },
        size };
}

class ImageViewObject : public ViewObject {
public:
    id image {};

    ImageViewObject() { userInteractionEnabled = false; }

    void setImage(const id& newImage)
    {
        if (std::exchange(image, newImage) == newImage)
            return;
        send<"invalidateIntrinsicContentSize", void>(id(this));
    }

    id initWithImage(const id& newImage)
    {
        image = newImage;
        return send<"initWithFrame:">(id(this), CGRect { {}, sizeThatFits({}) });
    }

    CGSize sizeThatFits(CGSize) const override
    {
        const auto* const shown = as<ImageObject>(image);
        return shown ? shown->size : CGSize {};
    }

    CGSize intrinsicContentSize() const override { return image ? sizeThatFits({}) : CGSize { -1, -1 }; }

    void drawContent(Canvas& canvas, const CGRect& seen) const override
    {
        if (const auto* const shown = as<ImageObject>(image))
            shown->draw(canvas, pictureRect(static_cast<ContentMode>(contentMode), shown->size, seen), effectiveTint());
    }
};

constexpr MethodDefinition methods[] {
    getter<"image", &ImageViewObject::image>(),
    method<"initWithImage:", &ImageViewObject::initWithImage>(),
    method<"setImage:", &ImageViewObject::setImage>(),
};

} // namespace

const ClassDefinition UIImageView_class { .name = "UIImageView",
    .superclass = &ViewObject::definition,
    .allocate = allocate<ImageViewObject>,
    .methods = methods };

} // namespace platform
