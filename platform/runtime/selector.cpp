#include "platform/runtime/selector.h"

#include <memory>
#include <mutex>
#include <shared_mutex>
#include <unordered_map>

namespace platform {

namespace {

struct SelectorTable {
    std::shared_mutex mutex;
    std::unordered_map<std::string_view, std::unique_ptr<const Selector>> selectors;
};

SelectorTable& table()
{
    // Never destroyed: selectors are read until the last thread ends.
    static auto* const shared = new SelectorTable;
    return *shared;
}

} // namespace

SEL sel_registerName(std::string_view name)
{
    SelectorTable& known = table();
    {
        const std::shared_lock lock(known.mutex);
        if (const auto found = known.selectors.find(name); found != known.selectors.end())
            return found->second.get();
    }
    const std::unique_lock lock(known.mutex);
    if (const auto found = known.selectors.find(name); found != known.selectors.end())
        return found->second.get();
    auto selector = std::make_unique<const Selector>(Selector { std::string(name), selectorHash(name) });
    const std::string_view key = selector->name;
    return known.selectors.emplace(key, std::move(selector)).first->second.get();
}

std::string_view sel_getName(SEL selector) noexcept
{
    return selector ? std::string_view(selector->name) : "";
}

} // namespace platform
