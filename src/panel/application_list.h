#pragma once

#include "platform/runtime/object.h"

#include <string>
#include <string_view>
#include <vector>

/// The applications of a list that are picked from it and searched in it, as values.

namespace appledger {

struct ListedApplication {
    platform::id record {}; ///< the system's object
    platform::id identifier {};
    platform::id name {}; ///< by which it is sorted and found
    std::string lowerName {};
    std::string lowerIdentifier {};
};

/// Those of the records that have an identifier. One without a name goes by its identifier.
std::vector<ListedApplication> listedApplications(const platform::id& records);

/// Those that are selected first, and each part by name.
void sortBySelectionAndName(std::vector<ListedApplication>& applications, const platform::id& selectedIdentifiers);

/// The records of those whose name or identifier has the text in it, which is in small letters. All for "".
platform::id recordsContaining(const std::vector<ListedApplication>& applications, std::string_view lowerText);

/// The text in small letters; "" for nil.
std::string lowerCase(const platform::id& text);

} // namespace appledger
