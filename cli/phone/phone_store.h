#pragma once

#include "cli/command/output.h"
#include "phone/supervisor/phone_directory.h"

#include <string>
#include <vector>

/// `appledger phone store …`: what a visit to the store shows and brings.

namespace cli {

struct StoreOptions {
    std::vector<std::string> identifiers;
    std::string road = "request";
    std::string process; ///< of the phone's; "" for the one in which the road usually begins
};

/// The updates of the installed applications, as a process of the store shows them.
ExitStatus phoneStoreUpdates(const phone::PhoneDirectory& directory, const StoreOptions& options);

/// Buys what is named on one of the store's roads, and says what was kept, what was refused, and what the
/// completion received. Done also when all was refused: the refusal is the answer.
ExitStatus phoneStoreBuy(const phone::PhoneDirectory& directory, const StoreOptions& options);

std::vector<std::string> storeRoadNames();

} // namespace cli
