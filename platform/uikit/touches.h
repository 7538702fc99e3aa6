#pragma once

#include "platform/uikit/view.h"

namespace platform {

class WindowObject;

enum class TouchPhase : long { Began = 0, Moved = 1, Stationary = 2, Ended = 3, Cancelled = 4 };

/// A finger on the screen.
class TouchObject : public NSObject {
public:
    static const ClassDefinition definition;
    TouchPhase phase = TouchPhase::Began;
    CGPoint location {}; ///< in the window
    CGPoint formerLocation {};
    double timestamp = 0;
    NSUInteger tapCount = 1;
    Ref<ViewObject> view {}; ///< the one that the touch began in
    Ref<WindowObject> window {};
    Ref<ViewObject> holder {}; ///< the view that holds the touch back from the one that it began in
    bool isKnownToView = false; ///< the view has been told that it began
    bool takenByGesture = false; ///< the view hears nothing more of it than that it was cancelled
    bool isOver = false; ///< ended or cancelled, and everybody knows
};

enum class EventType : long { Touches = 0 };

class EventObject : public NSObject {
public:
    static const ClassDefinition definition;
    EventType type = EventType::Touches;
    double timestamp = 0;
    std::vector<Ref<TouchObject>> touches {};
};

/// A finger does something at that point of the screen: an event for the application, from the top. A touch is one
/// finger's from its beginning to its end; there is one finger. One that begins anew without having ended is cancelled
/// first. Where no window is hit, the event goes to the application all the same.
void touchScreen(CGPoint point, TouchPhase phase);

/// What a window does with an event: gestures look at it first, then the view that was hit gets it.
void deliverTouches(WindowObject& window, const id& event);

} // namespace platform
