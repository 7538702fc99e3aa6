#include "state/app_mute_manager.h"

#include "core/paths.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/values.h"

namespace appledger {

using namespace platform;

std::string GetAppMutePrefPath()
{
    return sideFilePath("/var/mobile/Library/Preferences/com.orbelix.appmute.plist");
}

AppMuteManager& AppMuteManager::sharedManager()
{
    static auto* const manager = new AppMuteManager;
    return *manager;
}

AppMuteManager::AppMuteManager()
    : mutedBundleIDs_(arrayWithContentsOfFile(GetAppMutePrefPath()))
{
}

bool AppMuteManager::isMuted(std::string_view bundleIdentifier)
{
    if (id stored = arrayWithContentsOfFile(GetAppMutePrefPath()))
        mutedBundleIDs_ = std::move(stored);
    const auto muted = asArray(mutedBundleIDs_);
    return muted && muted->contains(bundleIdentifier);
}

} // namespace appledger
