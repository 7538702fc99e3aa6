#pragma once

#include "platform/foundation/property_list_file.h"
#include "platform/foundation/user_defaults.h"

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// One suite as this process knows it: what its instances share. Lives as long as the process. Any thread.
class DefaultsDomain {
public:
    /// The domain of that suite; the same object at each request.
    static std::shared_ptr<DefaultsDomain> named(std::string_view suite);
    explicit DefaultsDomain(std::string_view suite);

    /// Takes over what the file holds now.
    void refresh();

    /// The functions of NSUserDefaults that they are named after.
    bool synchronize();
    WriteOutcome change(std::string_view key, const NSUserDefaults::Change& change);
    std::string readProblem();
    int lastError() const noexcept { return lastError_.load(std::memory_order_relaxed); }
    id value(std::string_view key) const;
    void setValue(std::string_view key, const id& value);
    id values() const; ///< of all keys, a dictionary
    std::uint64_t addObserver(std::string_view key, NSUserDefaults::Observer changed);
    void removeObserver(std::uint64_t number);

    /// What the file holds under that key now, whatever the instances have read or written.
    id valueInFile(std::string_view key);

private:
    /// Keys with the values that they are to have; nil removes.
    using Changes = std::map<std::string, id, std::less<>>;

    struct Observation {
        std::uint64_t number;
        std::string key;
        std::shared_ptr<const NSUserDefaults::Observer> changed;
    };

    /// An observer that is to hear of a new value.
    struct Call {
        Observation observation;
        id value;
    };

    WriteOutcome publish(std::string_view key, const NSUserDefaults::Change* change);
    WriteOutcome merge(
        const FileLock& lock, Changes& changes, std::string_view key, const NSUserDefaults::Change* change);
    Changes pending() const;
    const id& fileContent();
    id storedValue(std::string_view key) const;

    /// Makes a change of what the instances see, and gives the calls that it asks for; the caller holds no
    /// lock when it makes them.
    template <class Change> [[nodiscard]] std::vector<Call> callsFor(const Change& change);
    void makeCalls(const std::vector<Call>& calls) const;
    bool isObserving(std::uint64_t number) const;

    const bool isValid_;

    /// Held while the disk is waited for, but never while the file's lock is; `mutex_` may be taken inside it.
    std::mutex fileMutex_;
    PropertyListFile file_;

    mutable std::mutex mutex_; ///< never held while the disk or an observer is waited for
    id stored_; ///< what the instances have read
    Changes pending_;
    std::vector<Observation> observations_;
    std::uint64_t lastObservation_ = 0;

    std::atomic<int> lastError_ { 0 };
};

} // namespace platform
