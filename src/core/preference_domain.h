#pragma once

#include "core/list_change.h"
#include "core/preference_ranges.h"
#include "platform/foundation/user_defaults.h"
#include "platform/runtime/reclamation.h"

#include <atomic>
#include <span>
#include <string>
#include <string_view>

/// The preference domain: what its keys are, and where it is read. The table of the keys stands in core/policies.h.

namespace appledger {

inline constexpr std::string_view preferenceSuite = "com.merrowlane.appledger";

/// Where the domain's file lies, and where it lies first on a rootless layout.
inline constexpr std::string_view preferenceFile = "/var/mobile/Library/Preferences/com.merrowlane.appledger.plist";
inline constexpr std::string_view rootlessPreferenceFile
    = "/var/jb/var/mobile/Library/Preferences/com.merrowlane.appledger.plist";

enum class PreferenceType {
    IdentifierList, ///< array of bundle identifiers
    NumberTable, ///< dictionary, bundle identifier to number
    StringTable, ///< dictionary, bundle identifier to string
    Boolean,
    String,
    Integer,
    RowList, ///< array of row or item keys of the panel
};

class PolicyCache;
struct Policy;

/// Where a process keeps a copy of a key's value: in one of these, or nowhere.
struct PreferenceCache {
    constexpr PreferenceCache() = default;
    constexpr PreferenceCache(PolicyCache* cache)
        : value(cache)
    {
    }
    constexpr PreferenceCache(std::atomic<bool>* cache)
        : flag(cache)
    {
    }
    constexpr PreferenceCache(platform::Published<std::string>* cache)
        : text(cache)
    {
    }

    PolicyCache* value = nullptr;
    std::atomic<bool>* flag = nullptr;
    platform::Published<std::string>* text = nullptr;
};

struct PreferenceKey {
    std::string_view name; ///< for a prefix-shaped key the prefix with its slash
    PreferenceType type;
    std::string_view defaultText; ///< what a reader sees when the key is absent
    std::string_view notification {}; ///< the Darwin name that a writer posts; "" when none is
    std::string_view reloadName {}; ///< of what rereads it; "" when it is read at each use
    const Policy* policy = nullptr; ///< with which it is reread, or null
    PreferenceCache cache {};
    bool isPrefix = name.ends_with('/'); ///< the key goes on with a bundle identifier
    PreferenceRange range {};
};

/// Every key of the domain, in the order of documentation.
std::span<const PreferenceKey> preferenceKeys() noexcept;

/// The row of a key, for a prefix-shaped one by the whole key ("ShouldSimulateSuccess/com.example.app") or
/// by the bare prefix, with or without its slash. Null for an unknown key.
const PreferenceKey* preferenceKey(std::string_view key) noexcept;

/// A new defaults instance on the suite.
inline platform::Ref<platform::NSUserDefaults> preferences()
{
    return platform::NSUserDefaults::suite(preferenceSuite);
}

/// The same after `synchronize`, as a reload begins.
platform::Ref<platform::NSUserDefaults> synchronizedPreferences();

/// What came of a change, and whether the identifier is on the list, or the flag on, now.
struct PreferenceChange {
    platform::WriteOutcome outcome;
    bool isOn = false;
};

/// Puts an identifier on the list of that key or takes it off, in one operation among all processes: of writers of one
/// list none loses another's change. A value that isn't a list is refused (EINVAL). Posts nothing.
PreferenceChange changePreferenceList(std::string_view key, ListChange change, std::string_view identifier);

/// The same for a flag: Add sets it, Remove clears it. A value that no flag is read from, such as a list, is refused.
PreferenceChange changePreferenceFlag(std::string_view key, ListChange change);

/// Changes the value of a key in one operation among all processes, and publishes that: `change` gets the present value
/// and gives the next, or nothing to leave it. What can't be written stays pending and is seen in this process; what no
/// file can hold changes nothing.
void changePreference(
    platform::NSUserDefaults& preferences, std::string_view key, const platform::NSUserDefaults::Change& change);

} // namespace appledger
