#include "state/app_brightness_manager.h"

#include "core/paths.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/values.h"

namespace appledger {

using namespace platform;

std::string appBrightnessPreferencePath()
{
    return sideFilePath("/var/mobile/Library/Preferences/com.orbelix.appbrightness.plist");
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
    if (const auto stored = asDictionary(dictionaryWithContentsOfFile(appBrightnessPreferencePath())))
        for (const auto& [identifier, level] : *stored)
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

void BrightnessChangedCallback()
{
    AppBrightnessManager::sharedManager().reloadConfig();
}

} // namespace appledger
