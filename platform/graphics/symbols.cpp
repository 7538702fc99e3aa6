#include "platform/graphics/objects.h"

#include <algorithm>
#include <numbers>

namespace platform {

namespace {

constexpr Color ink { 0, 0, 0, 1 };

Path polygon(std::initializer_list<CGPoint> points)
{
    Path path;
    for (const CGPoint& point : points)
        path.elements().empty() ? path.moveTo(point) : path.lineTo(point);
    path.close();
    return path;
}

Path line(std::initializer_list<CGPoint> points)
{
    Path path;
    for (const CGPoint& point : points)
        path.elements().empty() ? path.moveTo(point) : path.lineTo(point);
    return path;
}

Path disc(double x, double y, double radius)
{
    Path path;
    path.addEllipse(CGRectMake(x - radius, y - radius, 2 * radius, 2 * radius));
    return path;
}

// An inner outline that runs the other way leaves a hole.

Path reversedCapsule(double x, double top, double bottom, double radius)
{
    Path path;
    path.moveTo({ x - radius, top + radius });
    path.lineTo({ x - radius, bottom - radius });
    path.addArc({ x, bottom - radius }, radius, std::numbers::pi, 0);
    path.lineTo({ x + radius, top + radius });
    path.addArc({ x, top + radius }, radius, 0, -std::numbers::pi);
    path.close();
    return path;
}

Path reversedDisc(double x, double y, double radius)
{
    Path path;
    path.moveTo({ x + radius, y });
    path.addArc({ x, y }, radius, 0, -2 * std::numbers::pi);
    path.close();
    return path;
}

void drawWarning(Canvas& canvas)
{
    Path triangle;
    triangle.moveTo({ 8.4, 2 });
    triangle.curveTo({ 11.6, 2 }, { 9.1, 0.75 }, { 10.9, 0.75 });
    triangle.lineTo({ 19.2, 15.2 });
    triangle.curveTo({ 17.6, 18 }, { 19.9, 16.5 }, { 19.1, 18 });
    triangle.lineTo({ 2.4, 18 });
    triangle.curveTo({ 0.8, 15.2 }, { 0.9, 18 }, { 0.1, 16.5 });
    triangle.close();
    triangle.append(reversedCapsule(10, 5.8, 12.4, 1));
    triangle.append(reversedDisc(10, 14.8, 1.15));
    canvas.fill(triangle, ink);
}

void drawLock(Canvas& canvas)
{
    canvas.fill(Path::roundedRect(CGRectMake(3, 9, 14, 10.5), 2.2), ink);
    Path shackle;
    shackle.moveTo({ 6, 10 });
    shackle.lineTo({ 6, 6 });
    shackle.addArc({ 10, 6 }, 4, -std::numbers::pi, 0);
    shackle.lineTo({ 14, 10 });
    canvas.stroke(shackle, ink, 2);
}

void drawCheckmark(Canvas& canvas)
{
    canvas.stroke(line({ { 2.5, 11 }, { 7.5, 16.5 }, { 17.5, 3.5 } }), ink, 2.4);
}

void drawCross(Canvas& canvas)
{
    canvas.stroke(line({ { 4, 4 }, { 16, 16 } }), ink, 2.4);
    canvas.stroke(line({ { 16, 4 }, { 4, 16 } }), ink, 2.4);
}

void drawChevron(Canvas& canvas)
{
    canvas.stroke(line({ { 7, 3 }, { 14, 10 }, { 7, 17 } }), ink, 2.4);
}

void drawMagnifier(Canvas& canvas)
{
    canvas.stroke(disc(8.5, 8.5, 6.2), ink, 2);
    canvas.stroke(line({ { 13, 13 }, { 18, 18 } }), ink, 2.4);
}

void drawStar(Canvas& canvas)
{
    Path star;
    for (int point = 0; point < 10; ++point) {
        const double radius = point % 2 == 0 ? 9.5 : 4;
        const double angle = -std::numbers::pi / 2 + point * std::numbers::pi / 5;
        const CGPoint at { 10 + radius * std::cos(angle), 10.5 + radius * std::sin(angle) };
        point == 0 ? star.moveTo(at) : star.lineTo(at);
    }
    star.close();
    canvas.fill(star, ink);
}

void drawBolt(Canvas& canvas)
{
    canvas.fill(polygon({ { 12, 0.5 }, { 3, 11.5 }, { 9, 11.5 }, { 7.5, 19.5 }, { 17, 8 }, { 10.8, 8 } }), ink);
}

void drawTrash(Canvas& canvas)
{
    canvas.fill(Path::roundedRect(CGRectMake(2.5, 3, 15, 2), 1), ink);
    canvas.fill(Path::roundedRect(CGRectMake(7, 1, 6, 3), 1), ink);
    canvas.fill(polygon({ { 4, 6.5 }, { 16, 6.5 }, { 15, 19 }, { 5, 19 } }), ink);
}

void drawPlus(Canvas& canvas)
{
    canvas.stroke(line({ { 10, 3 }, { 10, 17 } }), ink, 2.2);
    canvas.stroke(line({ { 3, 10 }, { 17, 10 } }), ink, 2.2);
}

/// A disc that the sign is cut out of.
void drawCrossInDisc(Canvas& canvas)
{
    Path disc10 = disc(10, 10, 9);
    constexpr double arm = 3.6;
    constexpr double half = 0.8;
    // One outline around both bars, against the disc's direction.
    const auto at = [](double along, double across) {
        constexpr double root = std::numbers::sqrt2 / 2;
        return CGPoint { 10 + (along - across) * root, 10 + (along + across) * root };
    };
    const CGPoint corners[] { at(arm, half), at(arm, -half), at(half, -half), at(half, -arm), at(-half, -arm),
        at(-half, -half), at(-arm, -half), at(-arm, half), at(-half, half), at(-half, arm), at(half, arm),
        at(half, half) };
    Path cross;
    for (const CGPoint& corner : corners)
        cross.elements().empty() ? cross.moveTo(corner) : cross.lineTo(corner);
    cross.close();
    disc10.append(cross);
    canvas.fill(disc10, ink);
}

void drawDeletion(Canvas& canvas)
{
    Path tag = line({ { 7, 3.5 }, { 18, 3.5 }, { 18, 16.5 }, { 7, 16.5 }, { 1.2, 10 } });
    tag.close();
    canvas.stroke(tag, ink, 1.5);
    canvas.stroke(line({ { 9.5, 7 }, { 15, 13 } }), ink, 1.5);
    canvas.stroke(line({ { 15, 7 }, { 9.5, 13 } }), ink, 1.5);
}

Path arrowUp()
{
    return polygon(
        { { 10, 2 }, { 18, 10.4 }, { 13.4, 10.4 }, { 13.4, 16.6 }, { 6.6, 16.6 }, { 6.6, 10.4 }, { 2, 10.4 } });
}

void drawShift(Canvas& canvas)
{
    canvas.stroke(arrowUp(), ink, 1.5);
}

void drawFilledShift(Canvas& canvas)
{
    canvas.fill(arrowUp(), ink);
}

void drawCapsLock(Canvas& canvas)
{
    canvas.save();
    canvas.concat(CGAffineTransformMakeTranslation(0, -1.5));
    canvas.fill(arrowUp(), ink);
    canvas.restore();
    canvas.fill(Path::roundedRect(CGRectMake(6.6, 16.8, 6.8, 1.8), 0), ink);
}

constexpr struct {
    std::string_view name;
    void (*draw)(Canvas& canvas);
} symbols[] {
    // sorted
    { "bolt.fill", drawBolt }, { "capslock.fill", drawCapsLock }, { "checkmark", drawCheckmark },
    { "chevron.right", drawChevron }, { "delete.left", drawDeletion }, { "exclamationmark.triangle.fill", drawWarning },
    { "lock.fill", drawLock }, { "magnifyingglass", drawMagnifier }, { "plus", drawPlus }, { "shift", drawShift },
    { "shift.fill", drawFilledShift }, { "star.fill", drawStar }, { "trash.fill", drawTrash }, { "xmark", drawCross },
    { "xmark.circle.fill", drawCrossInDisc },
    // end sorted
};

} // namespace

std::shared_ptr<const Recording> systemSymbol(std::string_view name, CGSize& size)
{
    const auto found = std::ranges::find(symbols, name, [](const auto& symbol) { return symbol.name; });
    if (found == std::end(symbols))
        return nullptr;
    size = { 20, 20 };
    const std::shared_ptr<Recording> recording = Canvas::makeRecording(size);
    Canvas canvas(recording);
    found->draw(canvas);
    return recording;
}

} // namespace platform
