#include "phone/appstoredaemon/classes.h"

// sorted
#define CLASSES(X)                                                                                                     \
    X(ASDApp)                                                                                                          \
    X(ASDJob)                                                                                                          \
    X(ASDJobManager)                                                                                                   \
    X(ASDPurchase)                                                                                                     \
    X(ASDPurchaseManager)                                                                                              \
    X(ASDPurchaseRequest)                                                                                              \
    X(ASDPurchaseRequestOptions)
// end sorted

PHONE_CLASS_LIST(appStoreDaemonClasses, CLASSES)
