#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Pages of the web that the owner keeps on the Home Screen: folders with an Info.plist.

namespace phone {

inline constexpr std::string_view webClipFolder = "/var/mobile/Library/WebClips";

struct WebClip {
    std::string identifier; ///< the folder's name without its ending
    std::string title;
    std::string url;
    std::string folder; ///< device path
};

/// Those of the device whose Info.plist can be read, sorted by title.
std::vector<WebClip> webClips();

/// Those that every phone comes with, which are written where they are missing: "" or, for people, what couldn't be.
std::string installSampleWebClips();

} // namespace phone
