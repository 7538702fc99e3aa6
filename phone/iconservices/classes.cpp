#include "phone/iconservices/classes.h"

// sorted
#define CLASSES(X)                                                                                                     \
    X(ISIconCache)                                                                                                     \
    X(UIImage_application_icons)
// end sorted

PHONE_CLASS_LIST(iconServicesClasses, CLASSES)
