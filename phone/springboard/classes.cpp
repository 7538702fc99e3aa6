#include "phone/springboard/classes.h"

// sorted
#define CLASSES(X)                                                                                                     \
    X(SBAppLayout)                                                                                                     \
    X(SBApplication)                                                                                                   \
    X(SBApplicationController)                                                                                         \
    X(SBApplicationIcon)                                                                                               \
    X(SBApplicationInfo)                                                                                               \
    X(SBApplicationSceneEntity)                                                                                        \
    X(SBDeviceApplicationSceneEntity)                                                                                  \
    X(SBFluidSwitcherItemContainer)                                                                                    \
    X(SBFluidSwitcherViewController)                                                                                   \
    X(SBFolder)                                                                                                        \
    X(SBFolderIcon)                                                                                                    \
    X(SBFolderView)                                                                                                    \
    X(SBHIconManager)                                                                                                  \
    X(SBHIconModel)                                                                                                    \
    X(SBIcon)                                                                                                          \
    X(SBIconController)                                                                                                \
    X(SBIconImageView)                                                                                                 \
    X(SBIconModel)                                                                                                     \
    X(SBIconView)                                                                                                      \
    X(SBLayoutElement)                                                                                                 \
    X(SBLayoutState)                                                                                                   \
    X(SBLeafIcon)                                                                                                      \
    X(SBMainWorkspace)                                                                                                 \
    X(SBMainWorkspaceTransitionRequest)                                                                                \
    X(SBNCAlertingController)                                                                                          \
    X(SBSApplicationShortcutItem)                                                                                      \
    X(SBWorkspaceApplicationSceneTransitionContext)                                                                    \
    X(SBWorkspaceTransitionRequest)                                                                                    \
    X(SpringBoard)
// end sorted

PHONE_CLASS_LIST(springBoardClasses, CLASSES)
