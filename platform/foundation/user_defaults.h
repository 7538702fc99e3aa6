#pragma once

#include "platform/foundation/property_list_file.h"
#include "platform/runtime/class_definition.h"
#include "platform/runtime/encoding.h"
#include "platform/runtime/object.h"
#include "platform/runtime/weak.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

class DefaultsDomain;

/// NSUserDefaults on one suite: the property list
/// "/var/mobile/Library/Preferences/<suite>.plist" of the device.
///
/// All instances of a suite in a process share what they have read and what they haven't yet written. A
/// new instance looks whether the file has changed and reads it again if so; after that only
/// `synchronize` does. A file that is missing, unreadable, malformed or whose root isn't a dictionary
/// reads as empty, and readProblem() tells one from the other; reading never writes. Writes are seen at once in this
/// process, and by others after `synchronize`.
///
/// A key that is set nowhere answers what registerDefaults() says for it, else nil. Any thread.
///
/// Key-value observing: an object that is added by `addObserver:forKeyPath:options:context:` is sent
/// `observeValueForKeyPath:ofObject:change:context:` after every change of that key, in the cases and on the threads of
/// addObserver() below, with the instance that it was added to. The path is one key. Of the options New (1) gives the
/// change a "new", left out where the key has no value any more, and Initial (4) sends once at once; the others do
/// nothing. The observer isn't kept alive, and hears nothing once it or the instance has gone.
class NSUserDefaults final : public NSObject {
public:
    static const ClassDefinition definition;

    /// `initWithSuiteName:`. A suite name is a file name: one that is empty, holds a slash or a NUL byte, or
    /// is longer than 200 bytes gives an instance that is always empty and can't be written.
    static Ref<NSUserDefaults> suite(std::string_view name);
    explicit NSUserDefaults(std::string_view suiteName);
    ~NSUserDefaults() override;

    id objectForKey(std::string_view key) const;
    /// The value if it is of that type, else nil.
    id arrayForKey(std::string_view key) const;
    id dictionaryForKey(std::string_view key) const;
    /// A string, or the text of a number; else nil.
    id stringForKey(std::string_view key) const;
    /// boolValue(); and for the numbers, a string is read as far as it is one. 0 for anything else.
    bool boolForKey(std::string_view key) const;
    std::int64_t integerForKey(std::string_view key) const;
    double doubleForKey(std::string_view key) const;

    /// A nil value removes the key. A value that no property list can hold is refused, as is a key with a
    /// NUL byte or that isn't UTF-8: nothing changes. A mutable collection is copied.
    void setObject(const id& value, std::string_view key);
    void setBool(bool value, std::string_view key);
    void setInteger(std::int64_t value, std::string_view key);
    void setDouble(double value, std::string_view key);
    void removeObject(std::string_view key);

    /// Publishes pending writes and reads what others have published. Writes are merged into the file key
    /// by key under a lock among processes and put in place by a rename, so that writers of different keys
    /// lose nothing and a process that dies at any moment leaves the old file or the new one. What is written
    /// over and what isn't, property_list_file.h says. False when writing failed: the pending writes stay
    /// pending, and lastError() tells the `errno`.
    bool synchronize();
    int lastError() const noexcept;

    /// Gets the value that the key has, a pending write included and registered defaults left out, and gives the one
    /// that it is to have (nil removes), or nothing to leave it. It must not use user defaults itself.
    using Change = std::function<std::optional<id>(const id& present)>;

    /// Changes a value in the light of the present one, in one operation among all threads and processes: no change
    /// of the same key by another comes between. Publishes what is pending besides. When it fails, the key and the
    /// file are as they were.
    WriteOutcome change(std::string_view key, const Change& change);

    /// Why what the file holds can't be read, for people: "it isn't a property list, or is damaged". "" when it can
    /// be, or when there is no file.
    std::string readProblem() const;

    /// What absent keys answer here; other instances of the suite don't know of it. Adds to what was registered before.
    void registerDefaults(const id& dictionary);

    /// Every key that has a value, registered defaults included.
    id dictionaryRepresentation() const;

    /// Calls `changed` (with the new value, nil when removed; registered defaults don't count) after every
    /// change of the key's value, made by this process or found in the file by `synchronize` or by a new
    /// instance; on the thread that made or found it. The number ends it again.
    using Observer = std::function<void(const id& value)>;
    std::uint64_t addObserver(std::string_view key, Observer changed);
    void removeObserver(std::uint64_t number);

    void addKeyValueObserver(const id& observer, const id& keyPath, NSUInteger options, void* context);
    void removeKeyValueObserver(const id& observer, const id& keyPath);

private:
    struct KeyValueObservation {
        Weak<NSObject> observer;
        std::string key;
        std::uint64_t number;
    };

    const std::shared_ptr<DefaultsDomain> domain_;

    mutable std::mutex mutex_;
    id registered_;
    std::vector<KeyValueObservation> observations_;
};

/// The value of the key in the file of that domain as it stands now, registered defaults left out; nil
/// when there is none.
id CFPreferencesCopyAppValue(std::string_view key, std::string_view applicationID);

} // namespace platform
