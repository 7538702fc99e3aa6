#include "phone/springboard/home/arrangement.h"

#include "phone/iconservices/icon_pictures.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace phone {

using namespace platform;

namespace {

constexpr std::string_view favourites[] { "com.apple.mobilesafari", "com.apple.MobileSMS", "com.apple.mobilemail",
    "com.example.music" };
constexpr std::string_view utilities[] { "com.apple.mobilecal", "com.apple.mobiletimer", "com.apple.mobilenotes" };

constexpr double pageTop = 76;
constexpr double pageMargin = 27;
constexpr double columnStep = 92;
constexpr double rowStep = 104;

/// The view is wider than its picture, for the label's sake.
constexpr double labelOverhang = (iconViewSize.width - iconSide) / 2;

CGRect frameAt(double x, double y)
{
    return { { x - labelOverhang, y }, iconViewSize };
}

/// The first place of two by two that has nothing at `next` or behind; empty when the page has none.
std::optional<std::size_t> placeForWidget(std::size_t next)
{
    std::size_t column = next % columnsOfPage;
    std::size_t row = next / columnsOfPage;
    // Beside another widget it stands in the same rows; below icons in rows of its own.
    if (column + 2 > columnsOfPage || column % 2 != 0) {
        column = 0;
        ++row;
    }
    if (row + 2 > rowsOfPage)
        return std::nullopt;
    return row * columnsOfPage + column;
}

} // namespace

HomeArrangement arrangeHome(const std::vector<std::string>& identifiers, const std::vector<std::string>& widgets)
{
    const auto present
        = [&](std::string_view identifier) { return std::ranges::find(identifiers, identifier) != identifiers.end(); };
    HomeArrangement arrangement;
    for (const std::string_view identifier : favourites)
        if (present(identifier))
            arrangement.dock.emplace_back(identifier);
    HomeItem folder { "", "Utilities", {} };
    for (const std::string_view identifier : utilities)
        if (present(identifier))
            folder.folderContent.emplace_back(identifier);

    std::vector<HomeItem> items;
    for (const std::string& identifier : identifiers)
        if (std::ranges::find(arrangement.dock, identifier) == arrangement.dock.end()
            && std::ranges::find(folder.folderContent, identifier) == folder.folderContent.end())
            items.push_back({ identifier });
    if (!folder.folderContent.empty())
        items.push_back(std::move(folder));

    constexpr std::size_t pageSize = columnsOfPage * rowsOfPage;
    arrangement.pages.emplace_back();
    for (HomeItem& item : items) {
        if (arrangement.pages.back().size() == pageSize)
            arrangement.pages.emplace_back();
        item.place = arrangement.pages.back().size();
        arrangement.pages.back().push_back(std::move(item));
    }
    std::size_t next = arrangement.pages.back().size();
    for (const std::string& widget : widgets) {
        std::optional<std::size_t> place = placeForWidget(next);
        if (!place) {
            arrangement.pages.emplace_back();
            place = 0;
        }
        arrangement.pages.back().push_back({ .identifier = widget, .isWidget = true, .place = *place });
        const bool endsItsRows = *place % columnsOfPage + 2 == columnsOfPage;
        next = *place + 2 + (endsItsRows ? columnsOfPage : 0);
    }
    return arrangement;
}

CGRect frameOnPage(std::size_t index)
{
    const std::size_t column = index % columnsOfPage;
    const std::size_t row = index / columnsOfPage;
    return frameAt(pageMargin + static_cast<double>(column) * columnStep, pageTop + static_cast<double>(row) * rowStep);
}

CGRect widgetFrameOnPage(std::size_t index)
{
    const double overhang = (widgetViewSize.width - widgetSize.width) / 2;
    const CGPoint corner = frameOnPage(index).origin;
    return { { corner.x + labelOverhang - overhang, corner.y }, widgetViewSize };
}

CGRect frameInFolder(std::size_t index)
{
    constexpr double margin = 34;
    constexpr double step = 96;
    const std::size_t column = index % columnsOfFolder;
    const std::size_t row = index / columnsOfFolder;
    return frameAt(margin + static_cast<double>(column) * step, margin + static_cast<double>(row) * rowStep);
}

CGRect frameInDock(std::size_t index, std::size_t count, double dockWidth)
{
    constexpr double top = 18;
    const double middle = (static_cast<double>(index) - (static_cast<double>(count) - 1) / 2) * columnStep;
    return frameAt(dockWidth / 2 + middle - iconSide / 2, top);
}

} // namespace phone
