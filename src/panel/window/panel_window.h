#pragma once

#include "platform/runtime/class_definition.h"

namespace appledger {

/// The window that the panel has to itself, above the status bar, since other windows of the system may cover those of
/// the Home Screen. It keeps keyboards above itself. Main thread.
extern const platform::ClassDefinition ALPanelWindow_class;

/// Shows the controller in a window of its own; one that is there already goes at once.
void presentInDedicatedWindow(const platform::id& controller);

/// Hides the window and lets it and all in it go. Nothing where there is none.
void takeDownPanelWindow();

/// The window of the present panel, or nil.
platform::id panelWindow();

} // namespace appledger
