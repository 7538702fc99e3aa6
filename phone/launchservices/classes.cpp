#include "phone/launchservices/classes.h"

// sorted
#define CLASSES(X) X(LSApplicationWorkspace)
// end sorted

PHONE_CLASS_LIST(launchServicesClasses, CLASSES)
