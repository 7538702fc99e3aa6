#pragma once

#include "platform/runtime/object.h"

#include <string_view>

namespace phone {

/// What the store does with what it lets through: each item of a list is noted in the journal as installed.
void installOrdered(const platform::id& items);
void installOrderedItem(const platform::id& item);

} // namespace phone
