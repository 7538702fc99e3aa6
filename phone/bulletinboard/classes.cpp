#include "phone/bulletinboard/classes.h"

// sorted
#define CLASSES(X)                                                                                                     \
    X(BBBulletin)                                                                                                      \
    X(BBBulletinRequest)                                                                                               \
    X(BBServer)
// end sorted

PHONE_CLASS_LIST(bulletinBoardClasses, CLASSES)
