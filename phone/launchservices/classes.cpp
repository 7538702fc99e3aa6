#include "phone/launchservices/classes.h"

// sorted
#define CLASSES(X) X(LSApplicationProxy) X(LSApplicationWorkspace)
// end sorted

PHONE_CLASS_LIST(launchServicesClasses, CLASSES)
