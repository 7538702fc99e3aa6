#include "phone/celestial/classes.h"

// sorted
#define CLASSES(X) X(AVSystemController)
// end sorted

PHONE_CLASS_LIST(celestialClasses, CLASSES)
