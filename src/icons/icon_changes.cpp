#include "icons/icon_changes.h"

#include "core/policies.h"
#include "icons/home_screen_refresh.h"
#include "icons/icon_cache.h"
#include "icons/icon_drawing.h"
#include "platform/darwin/notify.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/files.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"
#include "platform/screen/framework.h"

namespace appledger {

using namespace platform;

namespace {

void announceChange(const std::string& bundleIdentifier)
{
    const auto defaults = preferences();
    defaults->setObject(string(bundleIdentifier), preference::lastModifiedIcon);
    defaults->synchronize();
    CFNotificationCenterPostNotification(notification::clearCache);
}

/// Off the main queue. What fails leaves the former file.
void writeIconFile(const std::string& bundleIdentifier, const id& image)
{
    id drawn = drawIconForFile(image);
    const auto bytes = asData(UIImagePNGRepresentation(drawn ? drawn : image));
    const auto path = ALCustomIconFilePath(bundleIdentifier);
    if (bytes && path)
        (void)writeFileAtomically(*path, *bytes);
}

} // namespace

void saveCustomIcon(const std::string& bundleIdentifier, const id& image, Then then)
{
    if (!image || bundleIdentifier.empty())
        return;
    (void)createDirectories(customIconDirectory);
    dispatch_async(dispatch_get_global_queue(QueuePriority::High), [bundleIdentifier, image, then = std::move(then)] {
        writeIconFile(bundleIdentifier, image);
        dispatch_async(dispatch_get_main_queue(), [bundleIdentifier, then] {
            announceChange(bundleIdentifier);
            then();
        });
    });
}

void resetCustomIcon(const std::string& bundleIdentifier, const Then& then)
{
    const auto path = ALCustomIconFilePath(bundleIdentifier);
    if (!path)
        return;
    (void)removeFile(*path);
    announceChange(bundleIdentifier);
    then();
}

void refreshAllIcons(const std::string& bundleIdentifier, Then then)
{
    dispatch_async(dispatch_get_global_queue(QueuePriority::High), [bundleIdentifier, then = std::move(then)] {
        // Without a name in the domain every process forgets all that it has.
        const auto defaults = preferences();
        defaults->removeObject(preference::lastModifiedIcon);
        defaults->synchronize();
        CFNotificationCenterPostNotification(notification::clearCache);
        dispatch_async(dispatch_get_main_queue(), [bundleIdentifier, then] {
            purgeApplication(bundleIdentifier);
            layOutEveryIcon();
            announceRefresh();
            const id feedback = askObject<"new">(id(classNamed<"UINotificationFeedbackGenerator">()));
            ask<"notificationOccurred:", void>(feedback, NSInteger { 0 });
            then();
        });
    });
}

} // namespace appledger
