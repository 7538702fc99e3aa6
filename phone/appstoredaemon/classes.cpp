#include "phone/appstoredaemon/classes.h"

// sorted
#define CLASSES(X) X(ASDApp)
// end sorted

PHONE_CLASS_LIST(appStoreDaemonClasses, CLASSES)
