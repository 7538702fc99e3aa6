#pragma once

#include "platform/runtime/object.h"

#include <functional>
#include <string>

namespace phone {

/// How the process comes by what the store has let through: installs it, and answers "" or why that can't be, for
/// people. A process without one installs nothing.
void setStoreDelivery(std::function<std::string(const std::string& bundleIdentifier)> delivery);

/// What the store does with what it lets through: each item of a list is delivered, and noted in the journal as
/// installed. What couldn't be is a note there besides.
void installOrdered(const platform::id& items);
void installOrderedItem(const platform::id& item);

} // namespace phone
