#pragma once

#include "platform/runtime/object.h"

#include <string_view>
#include <vector>

/// What icons look like, each a square of `iconSide` points with rounded corners.

namespace phone {

constexpr double iconSide = 60;
constexpr double iconCornerRadius = 13.5;

/// The application's own picture, from the file that its Info.plist names, cut to the form of an icon; else one drawn
/// for its identifier.
platform::id pictureOfApplication(std::string_view identifier, std::string_view name, std::string_view bundlePath);

/// A folder with small copies of what is in it: up to nine images.
platform::id pictureOfFolder(const std::vector<platform::id>& images);

} // namespace phone
