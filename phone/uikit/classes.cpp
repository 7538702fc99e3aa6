#include "phone/uikit/classes.h"

// sorted
#define CLASSES(X)                                                                                                     \
    X(UIActivityContinuationAction)                                                                                    \
    X(UIImage)                                                                                                         \
    X(UIImpactFeedbackGenerator)                                                                                       \
    X(UIOpenURLAction)                                                                                                 \
    X(UIScreen)
// end sorted

PHONE_CLASS_LIST(uiKitClasses, CLASSES)
