#include "phone/usernotifications/classes.h"

// sorted
#define CLASSES(X)                                                                                                     \
    X(NCNotificationRequest)                                                                                           \
    X(NCNotificationRequestContentProvider)                                                                            \
    X(UNSUserNotificationServer)
// end sorted

PHONE_CLASS_LIST(userNotificationsClasses, CLASSES)
