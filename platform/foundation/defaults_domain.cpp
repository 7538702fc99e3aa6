#include "platform/foundation/defaults_domain.h"

#include "platform/foundation/property_list.h"
#include "platform/foundation/property_list_guard.h"
#include "platform/foundation/utf8.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <algorithm>
#include <cerrno>
#include <chrono>

namespace platform {

namespace {

constexpr std::string_view preferences = "/var/mobile/Library/Preferences";
constexpr std::size_t longestSuiteName = 200;
constexpr unsigned newFileMode = 0600;

/// Two changes of a file within this time may leave the same stamp.
constexpr std::chrono::nanoseconds stampPrecision = std::chrono::milliseconds(20);

bool isSuiteName(std::string_view name)
{
    return !name.empty() && name.size() <= longestSuiteName
        && name.find_first_of(std::string_view("/\0", 2)) == std::string_view::npos;
}

std::string preferencesPath(std::string_view prefix, std::string_view suite, std::string_view suffix)
{
    return pathByAppending(preferences, std::string(prefix) + std::string(suite) + std::string(suffix));
}

id valueIn(const id& dictionary, std::string_view key)
{
    const auto pairs = asDictionary(dictionary);
    return pairs ? (*pairs)[key] : nil;
}

id mutableCopyOf(const id& dictionary)
{
    return dictionary ? send<"mutableCopy">(dictionary) : mutableDictionary();
}

} // namespace

std::shared_ptr<DefaultsDomain> DefaultsDomain::named(std::string_view suite)
{
    struct Domains {
        std::mutex mutex;
        std::map<std::string, std::shared_ptr<DefaultsDomain>, std::less<>> bySuite;
    };
    // Never destroyed: defaults are read until the last thread ends.
    static auto* const domains = new Domains;
    const std::lock_guard lock(domains->mutex);
    auto found = domains->bySuite.find(suite);
    if (found == domains->bySuite.end())
        found = domains->bySuite.emplace(suite, std::make_shared<DefaultsDomain>(suite)).first;
    return found->second;
}

DefaultsDomain::DefaultsDomain(std::string_view suite)
    : isValid_(isSuiteName(suite))
    , path_(preferencesPath("", suite, ".plist"))
    , lockPath_(preferencesPath(".", suite, ".plist.lock"))
{
}

const id& DefaultsDomain::readFileIfChanged()
{
    if (!isValid_)
        return nil;
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const auto stamp = fileStamp(path_);
    if (stamp == stamp_ && (!stamp || isSettled_))
        return fileContent_;
    stamp_.reset();
    FileStamp read;
    auto bytes = readFile(path_, detail::largestPropertyList, &read);
    if (bytes) {
        stamp_ = read;
        isSettled_ = now - std::chrono::nanoseconds(read.modifiedNanoseconds) > stampPrecision;
    }
    remember(std::move(bytes).value_or(std::string()));
    return fileContent_;
}

void DefaultsDomain::remember(std::string bytes)
{
    if (bytes == fileBytes_)
        return;
    const id value = propertyListFromData(bytes);
    fileContent_ = asDictionary(value) ? value : nil;
    fileBytes_ = std::move(bytes);
}

void DefaultsDomain::refresh()
{
    std::unique_lock files(fileMutex_);
    const id content = readFileIfChanged();
    const auto calls = callsFor([&] { stored_ = content; });
    files.unlock();
    makeCalls(calls);
}

bool DefaultsDomain::synchronize()
{
    std::unique_lock files(fileMutex_);
    Changes changes;
    {
        const std::lock_guard lock(mutex_);
        changes = pending_;
    }
    const int error = !isValid_ ? EINVAL : changes.empty() ? 0 : publish(changes);
    lastError_.store(error, std::memory_order_relaxed);
    const id content = readFileIfChanged();
    const auto calls = callsFor([&] {
        stored_ = content;
        if (error != 0)
            return;
        // A key that was set again meanwhile is pending still.
        std::erase_if(pending_, [&](const auto& change) {
            const auto published = changes.find(change.first);
            return published != changes.end() && published->second == change.second;
        });
    });
    files.unlock();
    makeCalls(calls);
    return error == 0;
}

int DefaultsDomain::publish(const Changes& changes)
{
    if (const int error = createDirectories(preferences))
        return error;
    const FileLock lock(lockPath_);
    if (lock.error() != 0)
        return lock.error();
    const id former = readFileIfChanged();
    // Others' keys are in there, though this process can't read them.
    if (!stamp_ && fileExists(path_))
        return EIO;

    const id merged = mutableCopyOf(former);
    bool differs = false;
    for (const auto& [key, value] : changes) {
        differs = differs || value || valueIn(former, key);
        send<"setObject:forKeyedSubscript:", void>(merged, value, string(key));
    }
    if (!differs)
        return 0;
    auto bytes = dataFromPropertyList(merged, PropertyListFormat::Binary);
    if (!bytes)
        return EINVAL;
    if (const int error = writeFileAtomically(path_, *bytes, newFileMode))
        return error;
    fileBytes_ = std::move(*bytes);
    fileContent_ = propertyListCopy(merged);
    return 0;
}

id DefaultsDomain::storedValue(std::string_view key) const
{
    const auto changed = pending_.find(key);
    return changed != pending_.end() ? changed->second : valueIn(stored_, key);
}

id DefaultsDomain::value(std::string_view key) const
{
    const std::lock_guard lock(mutex_);
    const id stored = storedValue(key);
    return stored ? stored : valueIn(registered_, key);
}

void DefaultsDomain::setValue(std::string_view key, const id& value)
{
    // A property list has no way to write other keys.
    if (!isValid_ || key.find('\0') != std::string_view::npos || detail::wellFormedUtf8(key) != key)
        return;
    const id copied = propertyListCopy(value);
    if (value && !copied)
        return;
    makeCalls(callsFor([&] { pending_.insert_or_assign(std::string(key), copied); }));
}

void DefaultsDomain::registerDefaults(const id& dictionary)
{
    const id copied = propertyListCopy(dictionary);
    const std::lock_guard lock(mutex_);
    const id merged = mutableCopyOf(registered_);
    send<"addEntriesFromDictionary:", void>(merged, copied);
    registered_ = send<"copy">(merged);
}

id DefaultsDomain::dictionaryRepresentation() const
{
    const std::lock_guard lock(mutex_);
    const id merged = mutableCopyOf(registered_);
    send<"addEntriesFromDictionary:", void>(merged, stored_);
    for (const auto& [key, value] : pending_)
        send<"setObject:forKeyedSubscript:", void>(merged, value ? value : valueIn(registered_, key), string(key));
    return send<"copy">(merged);
}

id DefaultsDomain::valueInFile(std::string_view key)
{
    const std::lock_guard files(fileMutex_);
    return valueIn(readFileIfChanged(), key);
}

std::uint64_t DefaultsDomain::addObserver(std::string_view key, NSUserDefaults::Observer changed)
{
    auto shared = std::make_shared<const NSUserDefaults::Observer>(std::move(changed));
    const std::lock_guard lock(mutex_);
    observations_.push_back({ ++lastObservation_, std::string(key), std::move(shared) });
    return lastObservation_;
}

void DefaultsDomain::removeObserver(std::uint64_t number)
{
    std::vector<Observation> removed;
    const std::lock_guard lock(mutex_);
    const auto found = std::ranges::find(observations_, number, &Observation::number);
    if (found == observations_.end())
        return;
    removed.push_back(std::move(*found));
    observations_.erase(found);
}

template <class Change> std::vector<DefaultsDomain::Call> DefaultsDomain::callsFor(const Change& change)
{
    const std::lock_guard lock(mutex_);
    std::vector<id> before;
    before.reserve(observations_.size());
    for (const Observation& observation : observations_)
        before.push_back(storedValue(observation.key));
    change();
    std::vector<Call> calls;
    for (std::size_t index = 0; index < observations_.size(); ++index) {
        const id after = storedValue(observations_[index].key);
        if (!isEqual(before[index], after))
            calls.push_back({ observations_[index], after });
    }
    return calls;
}

void DefaultsDomain::makeCalls(const std::vector<Call>& calls) const
{
    for (const Call& call : calls)
        if (isObserving(call.observation.number))
            (*call.observation.changed)(call.value);
}

bool DefaultsDomain::isObserving(std::uint64_t number) const
{
    const std::lock_guard lock(mutex_);
    return std::ranges::find(observations_, number, &Observation::number) != observations_.end();
}

} // namespace platform
