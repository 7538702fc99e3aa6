#pragma once

#include "platform/runtime/class_definition.h"

#include <string>

namespace phone {

/// The icon of a web clip: what SBHBookmarkIcon is, and on versions before 14 SBBookmarkIcon.
class BookmarkIcon : public platform::NSObject {
public:
    std::string identifier; ///< of the web clip
    std::string title;
    std::string folder; ///< device path

    platform::id leafIdentifier() const;
    platform::id displayName() const;
    platform::id displayNameForLocation(const platform::id& location) const;
    platform::id squareImage() const;
    bool isUninstallSupported() const { return false; } ///< it isn't an application
    bool isVisible() const { return true; }
};

extern const std::span<const platform::MethodDefinition> bookmarkIconMethods;

/// The icon of each web clip of the device.
std::vector<platform::id> makeBookmarkIcons();

} // namespace phone
