#include "phone/uikit/classes.h"

// sorted
#define CLASSES(X)                                                                                                     \
    X(UIImage)                                                                                                         \
    X(UIImpactFeedbackGenerator)
// end sorted

PHONE_CLASS_LIST(uiKitClasses, CLASSES)
