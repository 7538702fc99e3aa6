#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Which applications the owner has removed. A removal is one write of one file: from then on its folders count as gone
/// for every process, and whoever was killed before they were is followed by another who removes them. An application
/// that came with the phone doesn't come back with it.

namespace phone {

/// Removes the application that has these folders. "" when it is gone, else why it stays, for people. What of the
/// folders couldn't be removed is left to finishRemovals().
std::string removeForGood(std::string_view bundleIdentifier, const std::vector<std::string>& folders);

bool wasRemoved(std::string_view bundleIdentifier);

/// Folders of removed applications that are still there, and count as gone.
std::vector<std::string> foldersOfRemovedApplications();

/// Removes those. Device paths that stay, each with the reason, for people.
std::vector<std::string> finishRemovals();

} // namespace phone
