#include "phone/frontboard/classes.h"

// sorted
#define CLASSES(X)                                                                                                     \
    X(FBProcess)                                                                                                       \
    X(FBProcessManager)                                                                                                \
    X(FBSMutableSceneSettings)                                                                                         \
    X(FBSOpenApplicationService)                                                                                       \
    X(FBScene)
// end sorted

PHONE_CLASS_LIST(frontBoardClasses, CLASSES)
