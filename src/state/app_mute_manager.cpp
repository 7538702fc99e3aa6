#include "state/app_mute_manager.h"

#include "core/list_change.h"
#include "core/paths.h"
#include "core/side_file.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

namespace appledger {

using namespace platform;
using namespace std::chrono_literals;

std::atomic<bool> g_isMutingHUD { false };

namespace {

constexpr std::string_view mediaCategory = "Audio/Video";
constexpr float defaultVolume = 0.5F;
constexpr float quietestVolumeWorthKeeping = 0.01F;
constexpr auto hudSuppressionTime = 500ms;

void suppressMediaHUD(bool suppressed)
{
    const id mediaController(classNamed<"SBMediaController">());
    const auto existing = ask<"sharedInstanceIfExists">(mediaController);
    ask<"setSuppressHUD:", void>(existing ? *existing : askObject<"sharedInstance">(mediaController), suppressed);
}

/// Keeps the HUD away from now until the change has settled. Changes aren't counted: the first one's end
/// lets the HUD through again.
void keepHUDAway()
{
    g_isMutingHUD = true;
    suppressMediaHUD(true);
    dispatch_after(hudSuppressionTime, dispatch_get_main_queue(), [] {
        g_isMutingHUD = false;
        suppressMediaHUD(false);
    });
}

id systemController()
{
    return askObject<"sharedAVSystemController">(id(classNamed<"AVSystemController">()));
}

void setMediaVolume(const id& controller, float volume)
{
    ask<"setVolumeTo:forCategory:", bool>(controller, volume, string(mediaCategory));
}

} // namespace

std::string GetAppMutePrefPath()
{
    return sideFilePath("/var/mobile/Library/Preferences/com.orbelix.appmute.plist");
}

WriteOutcome writeMuted(std::string_view bundleIdentifier, bool muted)
{
    const std::string path = GetAppMutePrefPath();
    WriteOutcome outcome = changePropertyListFile(path, sideFileWithArray, [&](const id& present) {
        return changedList(present, muted ? ListChange::Add : ListChange::Remove, bundleIdentifier)->list;
    });
    return openedToEveryWriter(path, std::move(outcome));
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
    return itemsOf(mutedBundleIDs_).contains(bundleIdentifier);
}

void AppMuteManager::processAppForeground(std::string_view bundleIdentifier)
{
    if (bundleIdentifier.empty())
        return;
    dispatch_async(dispatch_get_main_queue(), [this, identifier = std::string(bundleIdentifier)] {
        change(comeToFront(state_, identifier, isMuted(identifier)));
    });
}

void AppMuteManager::processAppBackground(std::string_view bundleIdentifier)
{
    if (bundleIdentifier.empty())
        return;
    dispatch_async(dispatch_get_main_queue(),
        [this, identifier = std::string(bundleIdentifier)] { change(leaveFront(state_, identifier)); });
}

void AppMuteManager::change(VolumeChange change)
{
    switch (change) {
    case VolumeChange::Mute:
        return performVolumeChangeToMute();
    case VolumeChange::Restore:
        return performVolumeRestore();
    case VolumeChange::None:
        break;
    }
}

void AppMuteManager::performVolumeChangeToMute()
{
    keepHUDAway();
    const id controller = systemController();
    float volume = 0.0F;
    if (ask<"getVolume:forCategory:", bool>(controller, &volume, string(mediaCategory))
        && volume > quietestVolumeWorthKeeping)
        savedVolumes_.insert_or_assign(std::string(mediaCategory), volume);
    setMediaVolume(controller, 0.0F);
}

void AppMuteManager::performVolumeRestore()
{
    keepHUDAway();
    const id controller = systemController();
    if (!controller)
        return;
    const auto saved = savedVolumes_.find(mediaCategory);
    setMediaVolume(controller, saved == savedVolumes_.end() ? defaultVolume : saved->second);
    savedVolumes_.clear();
}

} // namespace appledger
