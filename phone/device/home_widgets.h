#pragma once

#include <string>
#include <vector>

/// The widgets that the owner has put on the Home Screen, as the system keeps them in its arrangement of icons.

namespace phone {

/// Their identifiers; none where the arrangement can't be read.
std::vector<std::string> homeWidgets();

/// What every phone comes with, where there is no arrangement yet: "" or, for people, what couldn't be written.
std::string installSampleWidgets();

} // namespace phone
