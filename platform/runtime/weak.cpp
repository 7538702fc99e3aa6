#include "platform/runtime/weak.h"

#include <unordered_map>

namespace platform::detail {

namespace {

struct WeakTable {
    std::mutex mutex;
    std::unordered_map<const NSObject*, std::shared_ptr<WeakCell>> cells;
};

WeakTable& table()
{
    static auto* const shared = new WeakTable;
    return *shared;
}

} // namespace

std::shared_ptr<WeakCell> WeakCell::of(const id& object)
{
    if (!object || !object->retainUnlessGoing())
        return nullptr;
    const id kept = id::adopt(object.get());
    WeakTable& weak = table();
    const std::lock_guard lock(weak.mutex);
    object->weaklyReferenced_.store(true, std::memory_order_relaxed);
    std::shared_ptr<WeakCell>& cell = weak.cells[object.get()];
    if (!cell)
        cell = std::make_shared<WeakCell>(*object);
    return cell;
}

void WeakCell::clear(const NSObject& object) noexcept
{
    std::shared_ptr<WeakCell> cell;
    {
        WeakTable& weak = table();
        const std::lock_guard lock(weak.mutex);
        if (auto entry = weak.cells.extract(&object))
            cell = std::move(entry.mapped());
    }
    if (!cell)
        return;
    const std::lock_guard lock(cell->mutex_);
    cell->object_ = nullptr;
}

id WeakCell::load() noexcept
{
    // What holds the lock sees the object before it is cleared here, and so before it is deleted.
    const std::lock_guard lock(mutex_);
    return object_ && object_->retainUnlessGoing() ? id::adopt(object_) : nil;
}

} // namespace platform::detail
