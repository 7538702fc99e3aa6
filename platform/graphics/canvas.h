#pragma once

#include "platform/graphics/bitmap.h"
#include "platform/graphics/geometry.h"

#include <functional>
#include <memory>
#include <span>
#include <vector>

struct _cairo; // NOLINT(bugprone-reserved-identifier): as the drawing library names it

namespace platform {

/// Which corners of a rectangle are round, by the system's numbers.
enum Corner : unsigned { TopLeft = 1, TopRight = 2, BottomLeft = 4, BottomRight = 8, AllCorners = 15 };

enum class CornerCurve {
    Circular,
    Continuous ///< without a jump of the curvature where it leaves the sides
};

/// The corners of a box.
struct RoundCorners {
    double radius = 0; ///< held to half the shorter side; 0: none is round
    unsigned corners = AllCorners;
    CornerCurve curve = CornerCurve::Circular;
};

/// An outline of straight lines and cubic curves.
class Path {
public:
    enum class Verb { Move, Line, Curve, Close };
    struct Element {
        Verb verb;
        CGPoint points[3]; ///< a curve's two control points and its end; else the first alone
    };

    void moveTo(CGPoint point) { elements_.push_back({ Verb::Move, { point } }); }
    void lineTo(CGPoint point) { elements_.push_back({ Verb::Line, { point } }); }
    void curveTo(CGPoint end, CGPoint control1, CGPoint control2)
    {
        elements_.push_back({ Verb::Curve, { control1, control2, end } });
    }
    void close() { elements_.push_back({ Verb::Close, {} }); }
    void append(const Path& other)
    {
        elements_.insert(elements_.end(), other.elements_.begin(), other.elements_.end());
    }
    void addRect(const CGRect& rect);
    void addRoundedRect(const CGRect& rect, const RoundCorners& round);
    void addEllipse(const CGRect& rect);
    /// From `start` to `end` in radians, 0 to the right, growing clockwise on the screen.
    void addArc(CGPoint center, double radius, double start, double end);
    void apply(const CGAffineTransform& transform);

    const std::vector<Element>& elements() const noexcept { return elements_; }

    static Path roundedRect(const CGRect& rect, const RoundCorners& round);
    static Path roundedRect(const CGRect& rect, double radius) { return roundedRect(rect, { .radius = radius }); }

private:
    std::vector<Element> elements_;
};

struct GradientStop {
    double offset;
    Color color;
};

/// Drawing that can be repeated at any scale.
class Recording;

/// Where drawing goes: a bitmap, or a recording. One thread at a time.
class Canvas {
public:
    /// Draws into the bitmap, which must outlive the canvas; `scale` pixels make one unit.
    Canvas(Bitmap& target, double scale);
    /// Draws into a recording of that size.
    Canvas(const std::shared_ptr<Recording>& target);
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    ~Canvas();

    static std::shared_ptr<Recording> makeRecording(CGSize size);

    void save();
    void restore();
    void concat(const CGAffineTransform& transform);
    void clip(const Path& path);

    void fill(const Path& path, const Color& color);
    /// What has been drawn so far, blurred by about a Gauss curve of that deviation and with its colours that much
    /// stronger, and the tint over it. In a recording, which knows nothing of what it is drawn on, the tint alone.
    void fillWithBackdrop(const Path& path, double radius, double saturation, const Color& tint);
    void fillGradient(const Path& path, CGPoint start, CGPoint end, std::span<const GradientStop> stops);
    void stroke(const Path& path, const Color& color, double width);
    void clear(const CGRect& rect);
    void draw(const Bitmap& bitmap, const CGRect& rect, double alpha = 1);
    void draw(const Recording& recording, CGSize size, const CGRect& rect, double alpha = 1);

    /// What is drawn until endGroup() is put together first and then shown with that alpha.
    void beginGroup();
    void endGroup(double alpha);
    /// The group as a stencil: its colour gives way to this one.
    void endGroup(const Color& tint);
    /// The group's shadow: its outline in `color`, moved and blurred. `radius` as a layer's shadowRadius.
    void endGroupAsShadow(const Color& color, CGSize offset, double radius);

    /// How many pixels one unit takes here.
    double scale() const;

    _cairo* native() const noexcept { return context_; }

private:
    void tracePath(const Path& path);
    void paint(const Bitmap& bitmap, const CGRect& rect, double width, double height, double alpha);

    _cairo* context_;
};

} // namespace platform
