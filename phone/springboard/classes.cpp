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
    X(SBBannerWindow)                                                                                                  \
    X(SBBookmarkIcon)                                                                                                  \
    X(SBBrightnessController)                                                                                          \
    X(SBCalendarApplicationIconImageView)                                                                              \
    X(SBClockApplicationIconImageView)                                                                                 \
    X(SBDeviceApplicationSceneEntity)                                                                                  \
    X(SBDeviceApplicationSceneHandle)                                                                                  \
    X(SBDisplayBrightnessController)                                                                                   \
    X(SBDisplayItem)                                                                                                   \
    X(SBFluidSwitcherItemContainer)                                                                                    \
    X(SBFluidSwitcherViewController)                                                                                   \
    X(SBFolder)                                                                                                        \
    X(SBFolderIcon)                                                                                                    \
    X(SBFolderIconImageView)                                                                                           \
    X(SBFolderView)                                                                                                    \
    X(SBHBookmarkIcon)                                                                                                 \
    X(SBHIconImageCache)                                                                                               \
    X(SBHIconLabelImageCache)                                                                                          \
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
    X(SBLiveIconImageView)                                                                                             \
    X(SBMainDisplaySceneManager)                                                                                       \
    X(SBMainWorkspace)                                                                                                 \
    X(SBMainWorkspaceTransitionRequest)                                                                                \
    X(SBMediaController)                                                                                               \
    X(SBNCAlertingController)                                                                                          \
    X(SBNotificationBannerDestination)                                                                                 \
    X(SBSApplicationShortcutItem)                                                                                      \
    X(SBVolumeControl)                                                                                                 \
    X(SBWidgetIcon)                                                                                                    \
    X(SBWorkspaceApplicationSceneTransitionContext)                                                                    \
    X(SBWorkspaceTransitionRequest)                                                                                    \
    X(SpringBoard)
// end sorted

PHONE_CLASS_LIST(springBoardClasses, CLASSES)
