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
    id objectForKey(std::string_view key);
    void setObject(const id& object, std::string_view key);
    void removeAllObjects();
    std::size_t count() const;

private:
    using Entry = std::pair<std::string, id>;

    mutable std::mutex mutex_;
    std::size_t limit_ = 0;
    std::list<Entry> entries_; ///< last used first
    std::unordered_map<std::string_view, std::list<Entry>::iterator> index_;
};

} // namespace platform
