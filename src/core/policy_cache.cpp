#include "core/policy_cache.h"

#include <algorithm>

namespace appledger {

using namespace platform;

bool IdentifierList::contains(std::string_view identifier) const noexcept
{
    return index_ ? index_->contains(identifier) : std::ranges::find(identifiers_, identifier) != identifiers_.end();
}

bool IdentifierList::contains(const HashedText& identifier) const noexcept
{
    return index_ ? index_->contains(identifier)
                  : std::ranges::find(identifiers_, identifier.text()) != identifiers_.end();
}

IdentifierArray::IdentifierArray(id value)
    : value_(std::move(value))
{
    const auto items = asArray(value_);
    if (!items)
        return;
    identifiers_.reserve(items->size());
    for (const id& item : *items)
        if (const auto identifier = asString(item))
            identifiers_.push_back(identifier->view());
}

PolicyCache::Snapshot::Snapshot(id value)
    : array(std::move(value))
    , index(array.identifiers())
{
}

void PolicyCache::assign(const id& value)
{
    present_.assign(value ? new Snapshot(value) : nullptr);
}

id PolicyCache::value() const
{
    const ReadSection section;
    const Snapshot* const snapshot = present_.load();
    return snapshot ? snapshot->array.value() : nil;
}

} // namespace appledger
