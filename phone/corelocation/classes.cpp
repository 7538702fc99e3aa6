#include "phone/corelocation/classes.h"

// sorted
#define CLASSES(X) X(CLLocationManager)
// end sorted

PHONE_CLASS_LIST(coreLocationClasses, CLASSES)
