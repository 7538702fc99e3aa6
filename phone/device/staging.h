#pragma once

#include <string>
#include <string_view>

/// Where applications are put together before they are installed.

namespace phone {

inline constexpr std::string_view stagingPlace = "/var/mobile/Media/PublicStaging";

/// A name for a new container: in the form of a UUID, by chance.
std::string newContainerName();

/// A folder in which a bundle's container is put together: on the device, where nobody takes it for an application's.
/// It goes when this object does, unless it was installed.
class StagedContainer {
public:
    StagedContainer();
    ~StagedContainer();
    StagedContainer(const StagedContainer&) = delete;
    StagedContainer& operator=(const StagedContainer&) = delete;

    /// "" when the folder is there, else why not, for people.
    const std::string& problem() const noexcept { return problem_; }
    const std::string& path() const noexcept { return path_; } ///< device path

private:
    std::string path_;
    std::string problem_;
};

/// Removes what killed installers have left.
void clearStaging();

} // namespace phone
