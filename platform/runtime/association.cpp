#include "platform/runtime/association.h"

#include "platform/runtime/class.h"
#include "platform/runtime/message.h"

#include <mutex>
#include <unordered_map>
#include <utility>

namespace platform {

void markAssociated(NSObject& object) noexcept
{
    object.associated_.store(true, std::memory_order_relaxed);
}

namespace {

struct Association {
    id held;
    NSObject* value = nullptr;
};

using Associations = std::unordered_map<const void*, Association>;

struct AssociationTable {
    std::mutex mutex;
    std::unordered_map<const NSObject*, Associations> objects;
};

AssociationTable& table()
{
    static auto* const shared = new AssociationTable;
    return *shared;
}

Association association(const id& value, AssociationPolicy policy)
{
    switch (policy) {
    case AssociationPolicy::Assign:
        return { nil, value.get() };
    case AssociationPolicy::CopyNonatomic:
    case AssociationPolicy::Copy: {
        id copy = ask<"copy">(value).value_or(value);
        NSObject* const object = copy.get();
        return { std::move(copy), object };
    }
    case AssociationPolicy::RetainNonatomic:
    case AssociationPolicy::Retain:
        break;
    }
    return { value, value.get() };
}

} // namespace

id objc_getAssociatedObject(const id& object, const void* key)
{
    AssociationTable& associations = table();
    const std::lock_guard lock(associations.mutex);
    const auto ofObject = associations.objects.find(object.get());
    if (ofObject == associations.objects.end())
        return nil;
    const auto found = ofObject->second.find(key);
    return found == ofObject->second.end() ? nil : id(found->second.value);
}

void objc_setAssociatedObject(const id& object, const void* key, const id& value, AssociationPolicy policy)
{
    if (!object)
        return;
    Association replacement = value ? association(value, policy) : Association {};
    Association former; // released after the lock, since its dealloc may come back here
    AssociationTable& associations = table();
    const std::lock_guard lock(associations.mutex);
    if (value) {
        markAssociated(*object);
        former = std::exchange(associations.objects[object.get()][key], std::move(replacement));
    } else if (const auto ofObject = associations.objects.find(object.get()); ofObject != associations.objects.end()) {
        if (const auto found = ofObject->second.find(key); found != ofObject->second.end()) {
            former = std::move(found->second);
            ofObject->second.erase(found);
        }
    }
}

namespace detail {

void removeAssociations(const NSObject& object)
{
    Associations removed; // released after the lock
    AssociationTable& associations = table();
    const std::lock_guard lock(associations.mutex);
    if (const auto found = associations.objects.find(&object); found != associations.objects.end()) {
        removed = std::move(found->second);
        associations.objects.erase(found);
    }
}

} // namespace detail

} // namespace platform
