#include "panel/window/sheet_frames.h"

namespace appledger {

using namespace platform;

CGSize sheetSize(NSInteger direction, double screenPercentage, CGSize container)
{
    const double share = screenPercentage / 100;
    switch (static_cast<SheetEdge>(direction)) {
    case SheetEdge::Bottom:
    case SheetEdge::Top:
        return { container.width, container.height * share };
    case SheetEdge::Left:
    case SheetEdge::Right:
        return { container.width * share, container.height };
    }
    return {};
}

CGRect shownSheetFrame(NSInteger direction, double screenPercentage, CGSize size, CGSize container)
{
    const double rest = 1 - screenPercentage / 100;
    CGRect frame { {}, size };
    if (direction == static_cast<NSInteger>(SheetEdge::Bottom))
        frame.origin.y = container.height * rest;
    else if (direction == static_cast<NSInteger>(SheetEdge::Right))
        frame.origin.x = container.width * rest;
    return frame;
}

CGRect hiddenSheetFrame(NSInteger direction, const CGRect& shown, CGSize container)
{
    CGRect frame = shown;
    switch (static_cast<SheetEdge>(direction)) {
    case SheetEdge::Bottom:
        frame.origin.y = container.height;
        break;
    case SheetEdge::Top:
        frame.origin.y = -shown.size.height;
        break;
    case SheetEdge::Left:
        frame.origin.x = -shown.size.width;
        break;
    case SheetEdge::Right:
        frame.origin.x = container.width;
        break;
    }
    return frame;
}

} // namespace appledger
