#pragma once

#include "platform/runtime/object.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The ways in which something is bought in the processes of the store, each from the method at which it begins.

namespace phone {

/// What the buyer is told.
struct StoreReceipt {
    bool requestExists = true; ///< false where the store made no request
    std::vector<std::vector<platform::id>> completions {}; ///< the arguments of each call, a bool as a number
};

struct StoreRoad {
    std::string_view name; ///< what a person calls it: "jobs"
    std::string_view method; ///< "ASDJobManager addJobs:withCompletionBlock:"
    std::string_view process; ///< where it is taken unless somebody says otherwise
    StoreReceipt (*enter)(const std::vector<std::string>& identifiers);
};

std::span<const StoreRoad> storeRoads() noexcept;

/// Null when there is none of that name.
const StoreRoad* storeRoadNamed(std::string_view name) noexcept;

/// Whether this process has the class and the method with which the road begins.
bool existsHere(const StoreRoad& road);

/// Buys these; what was installed is in the journal.
StoreReceipt buy(const StoreRoad& road, const std::vector<std::string>& identifiers);

/// What this process shows of the updates of one installed application.
struct ShownUpdate {
    std::string bundleIdentifier;
    bool isUpdateAvailable = false;
    bool updateAvailable = false;
    std::string newestVersion {}; ///< of the metadata; "" when there is none
};

/// Of every installed application that isn't the system's: the store has a newer version of each.
std::vector<ShownUpdate> shownUpdates();

} // namespace phone
