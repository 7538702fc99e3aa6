#pragma once

#include "core/preference_domain.h"
#include "platform/runtime/class_definition.h"

#include <string_view>

/// The settings of the panel and of its gestures.

namespace appledger {

/// How the panel looks, as `kAppearance` says it.
enum class AppearanceStyle : std::int64_t { Dark = 0, Light = 1, Auto = 2 };

/// `ALSettings`: one instance, made in the process that first asks for it.
///
/// Its defaults are registered with it alone: who reads the domain by an instance of its own sees none of them. It
/// observes its keys. A change of one posts the key's notification, whoever made it: at once for a write by any
/// instance in this process; for a write by another process, as that of the `policy` command, when any instance here
/// synchronizes or is made, which the reload of a policy and every writer do. The notification is posted on the thread
/// that made or found the change. Nothing that is malformed is reported; its default holds.
///
/// The class methods of the same names stand for the functions here.
class ALSettings : public platform::NSObject {
public:
    static const platform::ClassDefinition definition;
    static ALSettings& sharedInstance();

    void initialize();
    void observeValueForKeyPath(
        const platform::id& keyPath, const platform::id& object, const platform::id& change, void* context);

    static platform::id objectForKey(const platform::id& key);
    static bool boolForKey(const platform::id& key);
    static platform::NSInteger integerForKey(const platform::id& key);
    static void setObject(const platform::id& value, const platform::id& key);
    static void setInteger(platform::NSInteger value, const platform::id& key);

    static bool swipeUpEnabled();
    static bool swipeDownEnabled();
    static bool forceTouchMenuEnabled();
    static bool hidePanelSeparatorsEnabled();
    static bool runningIndicatorEnabled();

    /// Auto isn't kept where the system has no appearance of its own to follow, before 13: it becomes Dark.
    static platform::NSInteger appearanceStyle();
    static platform::id appearanceValues(); ///< numbers as strings
    static platform::id appearanceTitles();
    static platform::id titleForAppearanceStyle(platform::NSInteger style);

    /// The name that the owner has given to an application, or nil. A nil name takes it back; nobody is told.
    static platform::id customAppNameForBundleIdentifier(const platform::id& bundleIdentifier);
    static void setCustomAppName(const platform::id& name, const platform::id& bundleIdentifier);

    /// The file manager in which folders are opened: "fila", or "filza" for whatever else is stored or set.
    static platform::id directoryOpener();
    static void setDirectoryOpener(const platform::id& opener);
    static platform::id directoryOpenerDisplayName();
    static platform::id openInDirectoryOpenerTitle();
    static platform::id directoryOpenerTitles();
    static platform::id directoryOpenerValues();

    platform::id userDefaults;
};

} // namespace appledger
