#pragma once

#include <string>
#include <vector>

namespace phone {

/// An application that a search has found.
struct SearchResult {
    std::string bundleIdentifier;
    std::string name;
};

/// Installed applications whose name holds the text, whatever the case, in their names' order; all for an empty text.
std::vector<SearchResult> searchApplications(const std::string& text);

/// Shows the results as Spotlight does: the text in its field and, below it, a row for each that there is room for,
/// its icon before its name. Main thread.
void showSearch(const std::string& text, const std::vector<SearchResult>& results);

} // namespace phone
