#include "phone/localauthentication/classes.h"

// sorted
#define CLASSES(X) X(LAContext)
// end sorted

PHONE_CLASS_LIST(localAuthenticationClasses, CLASSES)
