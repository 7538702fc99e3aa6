#pragma once

#include "platform/graphics/geometry.h"

#include <cstddef>

/// What stands around the icons.

namespace phone {

platform::id makePlainView(const platform::CGRect& frame);

/// A pane through which the wallpaper shimmers.
platform::id makeGlass(const platform::CGRect& frame, double cornerRadius);

/// The window at the back, with the wallpaper.
platform::id makeHomeWindow();

/// A row of dots above the dock, one for each page, the first lit.
platform::id makePageDots(const platform::CGRect& screen);
void showPageDots(const platform::id& dots, std::size_t pages);

/// The window at the top with the time and the signs of the device's state. Keeps the time by itself.
void showStatusBar();

/// An application's scene as its launch shows it, over the Home Screen; nil takes it away.
void showScene(const platform::id& application);

} // namespace phone
