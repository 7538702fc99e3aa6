#include "phone/installcoordination/classes.h"

// sorted
#define CLASSES(X) X(IXAppInstallCoordinator)
// end sorted

PHONE_CLASS_LIST(installCoordinationClasses, CLASSES)
