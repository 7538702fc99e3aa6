#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The ways in which an application is opened in SpringBoard, each from the method at which the system
/// enters it.

namespace phone {

struct Road {
    std::string_view name; ///< what a person calls it: "tap"
    std::string_view method; ///< "SBIconView _handleTap"
    std::string_view description;
    void (*enter)(const std::vector<std::string>& identifiers);
    /// View services have cards, and no icons.
    bool takesServices = false;
    /// Whether the classes that the finger meets note themselves that the message is sent.
    bool isNotedOnItsWay = false;
};

/// In the order of the documentation.
std::span<const Road> springBoardRoads() noexcept;

enum class RoadOutcome { Entered, UnknownRoad, UnknownApplication, MissingOnThisVersion };

/// Sends the road's first message, as a finger would, for an installed application (several for the
/// switcher). What came of it is in the journal.
RoadOutcome enterRoad(std::string_view name, const std::vector<std::string>& identifiers);

/// Puts the application in front into the background.
void pressHome();

/// The bundle identifier of the application in front; "" on the Home Screen.
std::string frontmostApplication();

} // namespace phone
