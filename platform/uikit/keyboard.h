#pragma once

#include "platform/runtime/class_definition.h"

#include <string_view>

/// The keyboard: it comes up for a first responder that takes text, in a window of its own above all others, and leaves
/// when there is none. Before and after it comes, leaves or changes its size it posts the six notifications, with its
/// frames on the screen, the duration and the curve. Main thread.

namespace platform {

/// Somebody else may be the first responder.
void followFirstResponder();
/// The text of the one that the keyboard is for, or what it wants, isn't what it was.
void keyboardTextChanged();

/// The screen has another size.
void keyboardScreenChanged();

/// How far it reaches up from the bottom of the screen, once it has arrived; 0 while there is none.
double keyboardHeight() noexcept;

/// Enters the text as if it were typed, character by character; a line's end is the return key. False where the first
/// responder takes no text.
bool enterOnKeyboard(std::string_view text);
/// "return", "delete", "space", "left", "right", or "dismiss", which has the first responder resign. False for another
/// name, and where the first responder takes no text.
bool pressKeyOnKeyboard(std::string_view name);

extern const ClassDefinition UIRemoteKeyboardWindow_class;

} // namespace platform
