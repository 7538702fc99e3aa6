#include "platform/foundation/defaults_domain.h"

#include "platform/foundation/property_list.h"
#include "platform/foundation/utf8.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <algorithm>
#include <cerrno>

namespace platform {

namespace {

constexpr std::string_view preferences = "/var/mobile/Library/Preferences";
constexpr std::size_t longestSuiteName = 200;
constexpr PropertyListFileKind kindOfFile { PropertyListRoot::Dictionary, PropertyListFormat::Binary, 0600 };

bool isSuiteName(std::string_view name)
{
    return !name.empty() && name.size() <= longestSuiteName
        && name.find_first_of(std::string_view("/\0", 2)) == std::string_view::npos;
}

/// A property list has no way to write other keys.
bool isKey(std::string_view key)
{
    return key.find('\0') == std::string_view::npos && detail::wellFormedUtf8(key) == key;
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
    , file_(pathByAppending(preferences, std::string(suite) + ".plist"), kindOfFile)
{
}

const id& DefaultsDomain::fileContent()
{
    return isValid_ ? file_.read() : nil;
}

DefaultsDomain::Changes DefaultsDomain::pending() const
{
    const std::lock_guard lock(mutex_);
    return pending_;
}

void DefaultsDomain::refresh()
{
    std::unique_lock files(fileMutex_);
    const id content = fileContent();
    const auto calls = callsFor([&] { stored_ = content; });
    files.unlock();
    makeCalls(calls);
}

bool DefaultsDomain::synchronize()
{
    return publish({}, nullptr).isDone();
}

WriteOutcome DefaultsDomain::change(std::string_view key, const NSUserDefaults::Change& change)
{
    return isKey(key) ? publish(key, &change) : refusedValue(key);
}

std::string DefaultsDomain::readProblem()
{
    const std::lock_guard files(fileMutex_);
    fileContent();
    return file_.problem();
}

WriteOutcome DefaultsDomain::publish(std::string_view key, const NSUserDefaults::Change* change)
{
    WriteOutcome outcome;
    std::optional<FileLock> lock;
    if (!isValid_)
        outcome = { EINVAL, "no file can have the suite's name" };
    else if (change || !pending().empty())
        outcome = file_.takeLock(lock);

    std::unique_lock files(fileMutex_);
    Changes changes;
    if (lock) {
        changes = pending();
        outcome = merge(*lock, changes, key, change);
    }
    lastError_.store(outcome.error, std::memory_order_relaxed);
    const id content = fileContent();
    const auto calls = callsFor([&] {
        stored_ = content;
        if (!outcome.isDone())
            return;
        // A key that was set again meanwhile is pending still.
        std::erase_if(pending_, [&](const auto& each) {
            const auto published = changes.find(each.first);
            return published != changes.end() && published->second == each.second;
        });
    });
    files.unlock();
    lock.reset();
    makeCalls(calls);
    return outcome;
}

WriteOutcome DefaultsDomain::merge(
    const FileLock& lock, Changes& changes, std::string_view key, const NSUserDefaults::Change* change)
{
    bool isRefused = false;
    const auto mergedWith = [&](const id& former) -> std::optional<id> {
        const id merged = mutableCopyOf(former);
        bool differs = false;
        const auto set = [&](std::string_view name, const id& value) {
            differs = differs || value || valueIn(former, name);
            send<"setObject:forKeyedSubscript:", void>(merged, value, string(name));
        };
        for (const auto& [name, value] : changes)
            set(name, value);
        if (change)
            if (const std::optional<id> value = (*change)(valueIn(merged, key))) {
                const id copied = propertyListCopy(*value);
                isRefused = *value && !copied;
                set(key, copied);
            }
        return differs && !isRefused ? std::optional(merged) : std::nullopt;
    };
    WriteOutcome outcome = file_.change(lock, mergedWith);
    return isRefused ? refusedValue(key) : outcome;
}

id DefaultsDomain::storedValue(std::string_view key) const
{
    const auto changed = pending_.find(key);
    return changed != pending_.end() ? changed->second : valueIn(stored_, key);
}

id DefaultsDomain::value(std::string_view key) const
{
    const std::lock_guard lock(mutex_);
    return storedValue(key);
}

void DefaultsDomain::setValue(std::string_view key, const id& value)
{
    if (!isValid_ || !isKey(key))
        return;
    const id copied = propertyListCopy(value);
    if (value && !copied)
        return;
    makeCalls(callsFor([&] { pending_.insert_or_assign(std::string(key), copied); }));
}

id DefaultsDomain::values() const
{
    const std::lock_guard lock(mutex_);
    const id merged = mutableCopyOf(stored_);
    for (const auto& [key, value] : pending_)
        send<"setObject:forKeyedSubscript:", void>(merged, value, string(key));
    return send<"copy">(merged);
}

id DefaultsDomain::valueInFile(std::string_view key)
{
    const std::lock_guard files(fileMutex_);
    return valueIn(fileContent(), key);
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
