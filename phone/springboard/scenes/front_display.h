#pragma once

#include "platform/runtime/object.h"

#include <vector>

/// Which application is in front, and what the system sends when that changes. Main thread.

namespace phone {

/// The SBApplication in front, of several on one card the primary one; nil on the Home Screen.
platform::id applicationInFront();

/// Whether the application's own scene believes that it is in front. False without a scene.
bool isSceneInForeground(const platform::id& application);

/// Puts the application in front, or with nil the Home Screen: its scene comes to the foreground, SpringBoard
/// hears of the display and of the processes whose state changes, and the scene that was in front goes to
/// the background. Nothing happens to what is in front already but that SpringBoard hears of it.
void bringToFront(const platform::id& application);

/// The same for the applications of one card, the primary one first: each has its scene, and is told of.
void bringCardToFront(const std::vector<platform::id>& applications);

/// The application runs in the background from now on. `context` is that of the transition that starts it.
void startInBackground(const platform::id& application, const platform::id& context);

/// The application's process has ended: it has no scene any more, and where it was in front alone, the Home Screen is.
void applicationDidExit(const platform::id& application);

} // namespace phone
