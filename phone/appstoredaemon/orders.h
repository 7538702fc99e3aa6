#pragma once

#include "platform/runtime/object.h"

#include <functional>
#include <string>

namespace phone {

/// How the process comes by what the store has let through: the version that is installed then, or why there is none,
/// for people. A process without one installs nothing.
struct Delivery {
    std::string version {};
    std::string problem {};
};
void setStoreDelivery(std::function<Delivery(const std::string& bundleIdentifier)> delivery);

/// What the store does with what it lets through: each item of a list is delivered, and noted in the journal as
/// installed, with the version. What couldn't be is a note there besides.
void installOrdered(const platform::id& items);
void installOrderedItem(const platform::id& item);

} // namespace phone
