#pragma once

#include "platform/runtime/object.h"

#include <string>

/// How the Home Screen, and then every process, is made to ask for icons anew. Each class and selector of the system is
/// passed over where it is missing. SpringBoard, main thread.

namespace appledger {

/// One application's icon: `iconView` is its view, or nil.
void refreshIcon(const std::string& bundleIdentifier, const platform::id& iconView);

/// An icon's image view; a live icon's is left alone, and is told by the system itself.
void refreshIconOfImageView(const platform::id& imageView);

/// What the system keeps of the application.
void purgeApplication(const std::string& bundleIdentifier);

/// Empties the Home Screen's caches and lays every icon out anew.
void layOutEveryIcon();

/// Tells every process to empty the system's icon caches, and whoever else listens that icons have changed.
void announceRefresh();

} // namespace appledger
