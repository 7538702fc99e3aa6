#include "state/app_brightness_manager.h"

#include "core/notification_names.h"
#include "core/paths.h"
#include "core/side_file.h"
#include "platform/darwin/images.h"
#include "platform/darwin/notify.h"
#include "platform/dispatch/queue.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <algorithm>

namespace appledger {

using namespace platform;

namespace {

constexpr double nudge = 0.01;

double heldToRange(double level)
{
    return std::max(std::min(level, 1.0), 0.0);
}

id mainScreen()
{
    return askObject<"mainScreen">(id(classNamed<"UIScreen">()));
}

void setInBackBoard(double level)
{
    using DisplayBrightnessSet = void (*)(float level, int);
    const ImageHandle backBoard
        = dlopen("/System/Library/PrivateFrameworks/BackBoardServices.framework/BackBoardServices", RTLD_LAZY_MODE);
    IMP symbol = dlsym(backBoard, "BKSDisplayBrightnessSet");
    if (!symbol)
        symbol = dlsym(backBoard, "PSBKSDisplayBrightnessSet");
    if (symbol)
        reinterpret_cast<DisplayBrightnessSet>(symbol)(static_cast<float>(level), 1);
}

void setEverywhere(double level)
{
    setInBackBoard(level);
    const id displayController = askObject<"new">(id(classNamed<"SBDisplayBrightnessController">()));
    ask<"setBrightnessLevel:", void>(displayController, real(level));
    const id controller = askObject<"sharedBrightnessController">(id(classNamed<"SBBrightnessController">()));
    ask<"_setBrightnessLevel:showHUD:", void>(controller, static_cast<float>(level), false);
    // A screen that is told the level that it believes to have does nothing.
    const id screen = mainScreen();
    ask<"setBrightness:", void>(screen, level < 1.0 ? level + nudge : level - nudge);
    ask<"setBrightness:", void>(screen, level);
}

} // namespace

std::string appBrightnessPreferencePath()
{
    return sideFilePath("/var/mobile/Library/Preferences/com.orbelix.appbrightness.plist");
}

WriteOutcome writeBrightness(std::string_view bundleIdentifier, std::optional<double> level)
{
    const std::string path = appBrightnessPreferencePath();
    const id value = level && *level >= 0.0 ? real(static_cast<float>(heldToRange(*level))) : nil;
    WriteOutcome outcome = openedToEveryWriter(path,
        changePropertyListFile(path, sideFileWithDictionary,
            [&](const id& present) { return dictionaryBySetting(present, bundleIdentifier, value); }));
    if (outcome.isDone())
        CFNotificationCenterPostNotification(notification::brightnessChanged);
    return outcome;
}

AppBrightnessManager& AppBrightnessManager::sharedManager()
{
    static auto* const manager = new AppBrightnessManager;
    return *manager;
}

AppBrightnessManager::AppBrightnessManager()
{
    reloadConfig();
}

void AppBrightnessManager::reloadConfig()
{
    Levels levels;
    for (const auto& [identifier, level] : pairsOf(dictionaryWithContentsOfFile(appBrightnessPreferencePath())))
        if (const auto key = asString(identifier))
            if (const auto value = asDouble(level))
                levels.insert_or_assign(key->text(), *value);
    levels_.assign(new Levels(std::move(levels)));
}

std::optional<double> AppBrightnessManager::levelFor(std::string_view bundleIdentifier) const
{
    const ReadSection section;
    const Levels* const levels = levels_.load();
    const auto found = levels->find(bundleIdentifier);
    return found == levels->end() ? std::nullopt : std::optional<double>(found->second);
}

void AppBrightnessManager::processAppForeground(std::string_view bundleIdentifier)
{
    if (bundleIdentifier.empty())
        return;
    dispatch_async(dispatch_get_main_queue(), [this, identifier = std::string(bundleIdentifier)] {
        const double present = ask<"brightness", double>(mainScreen()).value_or(0.0);
        if (const auto level = comeToFront(state_, identifier, levelFor(identifier), present))
            setSystemBrightness(*level);
    });
}

void AppBrightnessManager::processAppBackground(std::string_view bundleIdentifier)
{
    if (bundleIdentifier.empty())
        return;
    dispatch_async(dispatch_get_main_queue(), [this, identifier = std::string(bundleIdentifier)] {
        if (const auto level = leaveFront(state_, identifier))
            setSystemBrightness(*level);
    });
}

void setSystemBrightness(double level)
{
    dispatch_async(dispatch_get_main_queue(), [level = heldToRange(level)] { setEverywhere(level); });
}

void BrightnessChangedCallback()
{
    AppBrightnessManager::sharedManager().reloadConfig();
}

} // namespace appledger
