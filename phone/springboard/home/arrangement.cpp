#include "phone/springboard/home/arrangement.h"

#include "phone/springboard/home/icon_pictures.h"

#include <algorithm>
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

} // namespace

HomeArrangement arrangeHome(const std::vector<std::string>& identifiers)
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
    for (std::size_t start = 0; start < items.size(); start += pageSize)
        arrangement.pages.emplace_back(items.begin() + static_cast<std::ptrdiff_t>(start),
            items.begin() + static_cast<std::ptrdiff_t>(std::min(start + pageSize, items.size())));
    if (arrangement.pages.empty())
        arrangement.pages.emplace_back();
    return arrangement;
}

CGRect frameOnPage(std::size_t index)
{
    const std::size_t column = index % columnsOfPage;
    const std::size_t row = index / columnsOfPage;
    return frameAt(pageMargin + static_cast<double>(column) * columnStep, pageTop + static_cast<double>(row) * rowStep);
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
