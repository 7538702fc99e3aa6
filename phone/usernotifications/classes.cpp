#include "phone/usernotifications/classes.h"

// sorted
#define CLASSES(X) X(NCNotificationRequestContentProvider)
// end sorted

PHONE_CLASS_LIST(userNotificationsClasses, CLASSES)
