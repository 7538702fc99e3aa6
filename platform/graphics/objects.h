#pragma once

#include "platform/graphics/canvas.h"
#include "platform/graphics/picture_file.h"
#include "platform/graphics/text.h"
#include "platform/runtime/class_definition.h"

#include <mutex>
#include <optional>

/// The C++ classes behind colours, fonts, images and paths, for the files of this folder and of the view tree alone.
/// Colours, fonts and images don't change and may be used on any thread; a path belongs to one.

namespace platform {

class ColorObject final : public NSObject {
public:
    static const ClassDefinition definition;
    Color color { 0, 0, 0, 1 };
    std::optional<Color> darkColor {}; ///< in the dark appearance, where it is another one
    id provider {}; ///< a block that is given the traits in force and gives the colour; nil for most

    /// As it is now.
    Color resolved() const;

    bool isEqualTo(const NSObject& other) const noexcept override;
    std::size_t hashValue() const noexcept override;
};

id colorObject(const Color& color);
/// As it is now; empty for nil and for what isn't a colour.
std::optional<Color> asColor(const id& object);

class FontObject final : public NSObject {
public:
    static const ClassDefinition definition;
    Font font;

    bool isEqualTo(const NSObject& other) const noexcept override;
    std::size_t hashValue() const noexcept override { return static_cast<std::size_t>(font.size * 1000); }
};

id fontObject(const Font& font);
std::optional<Font> asFont(const id& object);

enum class RenderingMode : long { Automatic = 0, Original = 1, Template = 2 };

/// A picture: pixels; a drawing that can be made at any scale, of which pixels are made when they are asked for; or a
/// file, which is read when it isn't enough to show the small copy that it brings.
class ImageObject : public NSObject {
public:
    static const ClassDefinition definition;

    CGSize size {};
    double scale = 1;
    RenderingMode renderingMode = RenderingMode::Automatic;
    bool isSymbol = false;
    id accessibilityIdentifier {}; ///< the name that it was asked for by, or nil
    id tint {}; ///< the colour that the image brings along, or nil
    std::shared_ptr<const Recording> drawing {};
    std::shared_ptr<const PictureFile> file {};

    /// The pixels at the image's own scale; null for an image of no size, and for a file that turns out to be damaged.
    std::shared_ptr<const Bitmap> bitmap() const;
    void setBitmap(Bitmap pixels);
    void copyTo(ImageObject& other) const;

    bool isTemplate() const noexcept
    {
        return renderingMode == RenderingMode::Template || (isSymbol && renderingMode == RenderingMode::Automatic);
    }

    /// Fills the rectangle. A template takes the tint where it has no colour of its own.
    void draw(Canvas& canvas, const CGRect& rect, const Color& tintColor, double alpha = 1) const;

private:
    bool drawSmallCopy(Canvas& canvas, const CGRect& rect, double alpha) const;

    mutable std::mutex mutex_;
    mutable std::shared_ptr<const Bitmap> bitmap_ {};
};

/// Nil for an empty bitmap.
id imageObject(Bitmap bitmap, double scale);
id imageObject(std::shared_ptr<const PictureFile> file, double scale);
id imageObject(std::shared_ptr<const Recording> drawing, CGSize size, double scale);

class BezierPathObject final : public NSObject {
public:
    static const ClassDefinition definition;
    Path path;
    CGPoint current {};
    double lineWidth = 1;
};

/// Structures of geometry as objects.
extern const ClassDefinition NSValue_class;

extern const ClassDefinition UIGraphicsImageRenderer_class;
extern const ClassDefinition UIGraphicsFunctions_class;

/// A drawing context as an object, what `drawRect:` and the block of an image renderer draw into.
class GraphicsContext final : public NSObject {
public:
    static const ClassDefinition definition;
    Canvas* canvas = nullptr; ///< null when the drawing is over
};

/// Makes the canvas the current one of this thread while it lives.
class CurrentCanvas {
public:
    explicit CurrentCanvas(Canvas& canvas);
    CurrentCanvas(const CurrentCanvas&) = delete;
    CurrentCanvas& operator=(const CurrentCanvas&) = delete;
    ~CurrentCanvas();
};

/// Null when nothing is being drawn on this thread.
Canvas* currentCanvas() noexcept;
Color currentFillColor() noexcept;
Color currentStrokeColor() noexcept;
void setCurrentFillColor(const Color& color) noexcept;
void setCurrentStrokeColor(const Color& color) noexcept;

/// The drawing of that name, black on nothing, 20 points wide or high; null when there is none.
std::shared_ptr<const Recording> systemSymbol(std::string_view name, CGSize& size);

/// Gives strings `sizeWithAttributes:`, `drawAtPoint:withAttributes:` and `drawInRect:withAttributes:`.
void addStringDrawing();

} // namespace platform
