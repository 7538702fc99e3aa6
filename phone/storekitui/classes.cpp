#include "phone/storekitui/classes.h"

// sorted
#define CLASSES(X)                                                                                                     \
    X(SKUIItem)                                                                                                        \
    X(SKUIItemStateCenter)
// end sorted

PHONE_CLASS_LIST(storeKitUIClasses, CLASSES)
