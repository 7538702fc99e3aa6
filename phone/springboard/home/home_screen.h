#pragma once

#include "platform/runtime/object.h"

#include <functional>
#include <string_view>

/// What SpringBoard shows: the wallpaper, the icons on pages, in the dock and in folders, the status bar, and the
/// application in front. Main thread; before showHomeScreen() nothing does anything.

namespace phone {

/// Makes the windows. Once, at SpringBoard's start.
void showHomeScreen();

/// Puts up the icons that the model has now and doesn't hide, in an open folder too. Icons that stay keep their views.
void layOutHomeScreen();

/// Every icon view that there is, or those that can be seen now.
void forEachKnownIconView(const std::function<void(const platform::id&)>& visit);
void forEachDisplayedIconView(const std::function<void(const platform::id&)>& visit);

/// The view of the application's or web clip's icon; nil when it stands nowhere on the Home Screen.
platform::id iconViewOf(std::string_view leafIdentifier);

enum class IconPart { Accessories, Image };
/// Shows anew what has changed about an icon.
void refreshIcon(const platform::id& icon, IconPart part);

/// Opens the folder, if none is open, no application is in front, and something is in it; closes the open one. False
/// when there was nothing to do.
bool openFolder(const platform::id& folder);
bool openFolderNamed(std::string_view name);
bool closeFolder();
bool closeFolder(std::string_view name);

/// The application whose picture fills the screen; nil for the Home Screen.
void showApplication(const platform::id& application);

} // namespace phone
