#pragma once

#include <span>
#include <string>
#include <string_view>

namespace phone {

struct SearchRoad {
    std::string_view name;
    std::string_view method;
    std::string_view description;
    void (*enter)(const std::string& identifier);
};

/// The ways in which Spotlight opens a search result, the usual one first.
std::span<const SearchRoad> searchRoads() noexcept;

/// Opens it as a tap on the result would. False when there is no such road.
bool openSearchResult(std::string_view road, const std::string& identifier);

} // namespace phone
