#pragma once

#include "platform/graphics/geometry.h"
#include "platform/runtime/object.h"

#include <string_view>
#include <vector>

/// What icons look like on a stock phone. Pictures stay sharp at every scale.

namespace phone {

constexpr double iconSide = 60;
constexpr double iconCornerRadius = 13.5;

/// The application's own picture, from the file that its Info.plist names; else one drawn for its identifier. A square
/// of `iconSide` points that knows of no corners.
platform::id squarePicture(std::string_view identifier, std::string_view name, std::string_view bundlePath);

/// A web clip's: the "icon.png" of its folder, or its title's initial.
platform::id squarePictureOfWebClip(std::string_view identifier, std::string_view title, std::string_view folder);

/// The icon that is made of a square picture; a rim of light sets it off. Nil for nil.
platform::id iconOfPicture(const platform::id& picture, const platform::CGSize& size, double cornerRadius);

/// A folder with small copies of what is in it: up to nine images.
platform::id pictureOfFolder(const std::vector<platform::id>& images);
constexpr double iconSideInFolder = 13;

/// A widget that shows the day.
platform::id pictureOfWidget(const platform::CGSize& size);

} // namespace phone
