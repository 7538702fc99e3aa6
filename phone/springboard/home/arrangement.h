#pragma once

#include "platform/graphics/geometry.h"

#include <cstddef>
#include <string>
#include <vector>

/// Where icons stand on the Home Screen: plain values, in points of a screen 390 wide.

namespace phone {

/// A place on a page: an application, a web clip, a folder of several, or a widget, which takes two by two.
struct HomeItem {
    std::string identifier; ///< "" for a folder
    std::string folderName {};
    std::vector<std::string> folderContent {}; ///< bundle identifiers
    bool isWidget = false;
    std::size_t place = 0; ///< on its page, from the top left, row by row; of a widget its first
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
/// their folder as long as there is one of them, the rest onto pages, and then the widgets where there is room.
HomeArrangement arrangeHome(const std::vector<std::string>& identifiers, const std::vector<std::string>& widgets = {});

constexpr platform::CGSize iconViewSize { 88, 82 };
constexpr platform::CGSize widgetSize { 152, 162 }; ///< of its picture
constexpr platform::CGSize widgetViewSize { 180, 184 };

/// The frame of an icon view on a page, in its folder's panel, or in the dock.
platform::CGRect frameOnPage(std::size_t index);
platform::CGRect widgetFrameOnPage(std::size_t index);
platform::CGRect frameInFolder(std::size_t index);
platform::CGRect frameInDock(std::size_t index, std::size_t count, double dockWidth);

} // namespace phone
