#pragma once

namespace platform {

/// Has all windows lay out what has asked for it, before the next work of the main queue. What asks while a pass runs
/// waits for the next frame, so that a view that never rests doesn't hold up the run loop.
void scheduleLayoutPass();

/// The same at once.
void layoutAllWindows();

} // namespace platform
