#include "platform/foundation/cache.h"

#include "platform/foundation/value_objects.h"

namespace platform {

namespace {

NSCache& cacheOf(const id& self)
{
    return static_cast<NSCache&>(*self);
}

id NSCache_objectForKey(const id& self, SEL, const id& key)
{
    const auto text = asString(key);
    return text ? cacheOf(self).objectForKey(*text) : nil;
}

void NSCache_setObject(const id& self, SEL, const id& object, const id& key)
{
    detail::requireObject(object, "setObject:forKey:");
    if (const auto text = asString(key))
        cacheOf(self).setObject(object, *text);
}

void NSCache_removeObjectForKey(const id& self, SEL, const id& key)
{
    if (const auto text = asString(key))
        cacheOf(self).setObject(nil, *text);
}

constexpr MethodDefinition methods[] {
    method<"countLimit", &NSCache::countLimit>(),
    method<"objectForKey:", &NSCache_objectForKey>(),
    method<"removeAllObjects", &NSCache::removeAllObjects>(),
    method<"removeObjectForKey:", &NSCache_removeObjectForKey>(),
    method<"setCountLimit:", &NSCache::setCountLimit>(),
    method<"setObject:forKey:", &NSCache_setObject>(),
};

} // namespace

const ClassDefinition NSCache::definition { .name = "NSCache", .allocate = allocate<NSCache>, .methods = methods };

// What is dropped goes after the lock: its `dealloc` may use this cache.

void NSCache::setCountLimit(std::size_t limit)
{
    std::list<Entry> dropped;
    const std::lock_guard lock(mutex_);
    limit_ = limit;
    dropped = takePastLimit();
}

std::size_t NSCache::countLimit() const
{
    const std::lock_guard lock(mutex_);
    return limit_;
}

id NSCache::objectForKey(std::string_view key)
{
    const std::lock_guard lock(mutex_);
    const auto found = index_.find(key);
    if (found == index_.end())
        return nil;
    entries_.splice(entries_.begin(), entries_, found->second);
    return found->second->second;
}

void NSCache::setObject(const id& object, std::string_view key)
{
    std::list<Entry> dropped;
    const std::lock_guard lock(mutex_);
    if (const auto found = index_.find(key); found != index_.end()) {
        const auto entry = found->second;
        index_.erase(found);
        dropped.splice(dropped.end(), entries_, entry);
    }
    if (!object)
        return;
    entries_.emplace_front(std::string(key), object);
    index_.emplace(entries_.front().first, entries_.begin());
    dropped.splice(dropped.end(), takePastLimit());
}

void NSCache::removeAllObjects()
{
    std::list<Entry> dropped;
    const std::lock_guard lock(mutex_);
    index_.clear();
    dropped.swap(entries_);
}

std::size_t NSCache::count() const
{
    const std::lock_guard lock(mutex_);
    return entries_.size();
}

std::list<NSCache::Entry> NSCache::takePastLimit()
{
    std::list<Entry> dropped;
    while (limit_ > 0 && entries_.size() > limit_) {
        index_.erase(entries_.back().first);
        dropped.splice(dropped.end(), entries_, std::prev(entries_.end()));
    }
    return dropped;
}

} // namespace platform
