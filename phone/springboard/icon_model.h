#pragma once

#include "platform/runtime/class_definition.h"

namespace phone {

/// The icons of the Home Screen: what SBHIconModel is, and on older versions SBIconModel.
class IconModel : public platform::NSObject {
public:
    platform::id applicationIconForBundleIdentifier(const platform::id& identifier);
    platform::id leafIcons();

    /// Looks anew which icons there are; those that stay are the same objects.
    void reloadIcons();

    /// Has the Home Screen show what there is and isn't hidden.
    void layout();

private:
    platform::id icons_; ///< dictionary, bundle identifier to icon; nil until the first request
};

inline constexpr platform::MethodDefinition iconModelMethods[] {
    platform::method<"applicationIconForBundleIdentifier:", &IconModel::applicationIconForBundleIdentifier>(),
    platform::method<"layout", &IconModel::layout>(),
    platform::method<"leafIcons", &IconModel::leafIcons>(),
    platform::method<"reloadIcons", &IconModel::reloadIcons>(),
};

} // namespace phone
