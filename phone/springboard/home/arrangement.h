#pragma once

#include "platform/graphics/geometry.h"

#include <cstddef>
#include <string>
#include <vector>

/// Where icons stand on the Home Screen: plain values, in points of a screen 390 wide.

namespace phone {

/// A place on a page: an application, or a folder of several.
struct HomeItem {
    std::string identifier; ///< "" for a folder
    std::string folderName {};
    std::vector<std::string> folderContent {}; ///< bundle identifiers
    friend bool operator==(const HomeItem&, const HomeItem&) = default;
};

struct HomeArrangement {
    std::vector<std::string> dock; ///< at most four
    std::vector<std::vector<HomeItem>> pages; ///< at least one
};

constexpr std::size_t columnsOfPage = 4;
constexpr std::size_t rowsOfPage = 6;
constexpr std::size_t columnsOfFolder = 3;

/// Arranges the applications (in the order in which they shall stand): favourites into the dock, the utilities into
/// their folder as long as there is one of them, the rest onto pages.
HomeArrangement arrangeHome(const std::vector<std::string>& identifiers);

constexpr platform::CGSize iconViewSize { 88, 82 };

/// The frame of an icon view on a page, in its folder's panel, or in the dock.
platform::CGRect frameOnPage(std::size_t index);
platform::CGRect frameInFolder(std::size_t index);
platform::CGRect frameInDock(std::size_t index, std::size_t count, double dockWidth);

} // namespace phone
