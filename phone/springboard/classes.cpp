#include "phone/springboard/classes.h"

// sorted
#define CLASSES(X)                                                                                                     \
    X(SBAppLayout)                                                                                                     \
    X(SBApplication)                                                                                                   \
    X(SBApplicationController)                                                                                         \
    X(SBApplicationIcon)                                                                                               \
    X(SBApplicationInfo)                                                                                               \
    X(SBApplicationProcessState)                                                                                       \
    X(SBApplicationSceneEntity)                                                                                        \
    X(SBBrightnessController)                                                                                          \
    X(SBDeviceApplicationSceneEntity)                                                                                  \
    X(SBDeviceApplicationSceneHandle)                                                                                  \
    X(SBDisplayBrightnessController)                                                                                   \
    X(SBDisplayItem)                                                                                                   \
    X(SBFluidSwitcherItemContainer)                                                                                    \
    X(SBFluidSwitcherViewController)                                                                                   \
    X(SBFolder)                                                                                                        \
    X(SBFolderIcon)                                                                                                    \
    X(SBFolderView)                                                                                                    \
    X(SBHIconImageCache)                                                                                               \
    X(SBHIconManager)                                                                                                  \
    X(SBHIconModel)                                                                                                    \
    X(SBIcon)                                                                                                          \
    X(SBIconController)                                                                                                \
    X(SBIconImageView)                                                                                                 \
    X(SBIconModel)                                                                                                     \
    X(SBIconView)                                                                                                      \
    X(SBIdleTimerDisableAssertion)                                                                                     \
    X(SBIdleTimerGlobalCoordinator)                                                                                    \
    X(SBLayoutElement)                                                                                                 \
    X(SBLayoutState)                                                                                                   \
    X(SBLeafIcon)                                                                                                      \
    X(SBMainDisplaySceneManager)                                                                                       \
    X(SBMainWorkspace)                                                                                                 \
    X(SBMainWorkspaceTransitionRequest)                                                                                \
    X(SBMediaController)                                                                                               \
    X(SBNCAlertingController)                                                                                          \
    X(SBSApplicationShortcutItem)                                                                                      \
    X(SBVolumeControl)                                                                                                 \
    X(SBWorkspaceApplicationSceneTransitionContext)                                                                    \
    X(SBWorkspaceTransitionRequest)                                                                                    \
    X(SpringBoard)
// end sorted

PHONE_CLASS_LIST(springBoardClasses, CLASSES)
