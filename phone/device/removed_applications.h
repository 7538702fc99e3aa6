#pragma once

#include "platform/foundation/files.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Which applications the owner has removed, and which are being installed. A removal is one write of one file: from
/// then on its folders count as gone for every process, and whoever was killed before they were is followed by another
/// who removes them. An application that came with the phone doesn't come back with it. An installation is one write of
/// that file too: until then the new folders count as gone, and from then on the former ones do.

namespace phone {

/// Held by who installs or removes applications, and by who removes what others have left.
class ApplicationsLock {
public:
    explicit ApplicationsLock(std::chrono::milliseconds patience = platform::lockPatience);

    /// "" while it is held, else why it isn't, for people.
    std::string problem() const;

private:
    std::optional<platform::FileLock> lock_;
    int error_ = 0;
};

/// Has these folders of an application, which needn't be there yet, count as gone until exchangeFolders(). "" or what
/// couldn't be done. With the lock held.
std::string announceFolders(std::string_view bundleIdentifier, const std::vector<std::string>& folders);

/// In one step: these count from now on, and the former ones as gone. "" or what couldn't be done, and then nothing has
/// changed. The former ones are then removed as far as can be; what stays is left to finishRemovals(). With the lock
/// held.
std::string exchangeFolders(
    std::string_view bundleIdentifier, const std::vector<std::string>& folders, const std::vector<std::string>& former);

/// Removes folders that were announced and are not to come. With the lock held.
void withdrawFolders(std::string_view bundleIdentifier, const std::vector<std::string>& folders);

/// Removes the application that has these folders. "" when it is gone, else why it stays, for people. What of the
/// folders couldn't be removed is left to finishRemovals().
std::string removeForGood(std::string_view bundleIdentifier, const std::vector<std::string>& folders);

bool wasRemoved(std::string_view bundleIdentifier);

/// Folders of removed applications that are still there, and count as gone.
std::vector<std::string> foldersOfRemovedApplications();

/// Removes those, unless somebody is installing. Device paths that stay, each with the reason, for people.
std::vector<std::string> finishRemovals();

} // namespace phone
