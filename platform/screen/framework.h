#pragma once

#include "platform/graphics/geometry.h"
#include "platform/runtime/class_definition.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

/// The framework of views and pixels. Its classes stand in a library of their own, which a process loads when it first
/// asks for them, so that a process that draws nothing doesn't carry what draws. Everything of it is reached by
/// messages, and by the functions here, which do nothing in a process that hasn't loaded it.

namespace platform {

/// The framework's classes, sorted by name; loads it. None, with a line on standard error, when it can't be loaded.
std::span<const ClassDefinition* const> uiKitFrameworkClasses() noexcept;

/// Draws into an image from here on; `scale` 0 stands for the screen's. Every beginning has its end. A size that no
/// image can have gives one of a pixel.
void UIGraphicsBeginImageContextWithOptions(CGSize size, bool opaque, CGFloat scale);
/// What has been drawn since the beginning; nil outside of an image context.
id UIGraphicsGetImageFromCurrentImageContext();
void UIGraphicsEndImageContext();
/// What is being drawn into now, or nil: answers `saveState`, `restoreState`, `concatTransform:` and
/// `drawLinearGradient:from:to:`.
id UIGraphicsGetCurrentContext();

/// The bytes of a PNG file as data; nil for nil.
id UIImagePNGRepresentation(const id& image);

/// The keys of a string's attributes.
id NSFontAttributeName();
id NSForegroundColorAttributeName();

/// How the system shows itself, by its numbers.
enum class InterfaceStyle : long { Light = 1, Dark = 2 };

enum class TouchKind : long { Began = 0, Moved = 1, Ended = 3, Cancelled = 4 };

/// For the host of the process. The first two give "" in a process without views.

/// All windows as the bytes of a PNG file, `scale` pixels a point; "" also for a scale that no picture can have.
std::string pictureOfScreen(double scale);
/// All windows as text, one view a line.
std::string descriptionOfScreen();
/// All windows from the back to the front, laid out: dictionaries with "class", "frame" (on the screen: x, y, width and
/// height), "visible" (neither it nor what it stands in is hidden), "enabled", and where there are such "role",
/// "identifier", "label" (or the text that is shown), "value", "picture" (the image's name) and "children".
id elementsOfScreen();
/// What a finger there would touch, or nil.
id viewOnScreenAt(CGPoint point);
/// A finger on the screen.
void touchScreenAt(CGPoint point, TouchKind kind);
/// Enters the text as if it were typed on the keyboard, character by character; a line's end is the return key. False
/// where nothing on the screen is being edited.
bool typeOnKeyboard(std::string_view text);
/// "return", "delete", "space", "left", "right", or "dismiss", which ends the editing. False for another name, and
/// where nothing is being edited.
bool pressKey(std::string_view name);
void setScreen(CGSize size, double scale);
void setScreenStyle(InterfaceStyle style);

} // namespace platform
