#pragma once

#include "platform/runtime/class_definition.h"
#include "platform/runtime/object.h"

#include <cstddef>
#include <list>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>

namespace platform {

/// NSCache with string keys: past its count limit it drops what was used longest ago. Any thread.
class NSCache final : public NSObject {
public:
    static const ClassDefinition definition;

    /// 0: no limit.
    void setCountLimit(std::size_t limit);
    std::size_t countLimit() const;
    id objectForKey(std::string_view key);
    /// A nil object removes the entry.
    void setObject(const id& object, std::string_view key);
    void removeAllObjects();
    std::size_t count() const;

private:
    using Entry = std::pair<std::string, id>;

    /// Takes out what stands past the limit; the caller holds the lock.
    std::list<Entry> takePastLimit();

    mutable std::mutex mutex_;
    std::size_t limit_ = 0;
    std::list<Entry> entries_; ///< last used first
    std::unordered_map<std::string_view, std::list<Entry>::iterator> index_;
};

} // namespace platform
