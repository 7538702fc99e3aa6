#pragma once

#include "platform/runtime/class_definition.h"

namespace phone {

/// The icons of the Home Screen: what SBHIconModel is, and on older versions SBIconModel.
class IconModel : public platform::NSObject {
public:
    platform::id applicationIconForBundleIdentifier(const platform::id& identifier);
    /// An application's, a web clip's or a widget's.
    platform::id leafIconForIdentifier(const platform::id& identifier);
    platform::id leafIcons();

    /// A set of the leaves' identifiers.
    platform::id visibleIconIdentifiers();
    bool isIconVisible(const platform::id& icon);

    /// The icons that stood on the Home Screen when it was laid out last.
    platform::id laidOutIcons();

    /// Looks anew which icons there are, and lays out; those that stay are the same objects.
    void reloadIcons();

    /// Has the Home Screen show what there is and isn't hidden.
    void layout();

private:
    platform::id icons_; ///< dictionary, leaf identifier to icon; nil until the first request
    platform::id laidOut_; ///< array
};

inline constexpr platform::MethodDefinition iconModelMethods[] {
    platform::method<"applicationIconForBundleIdentifier:", &IconModel::applicationIconForBundleIdentifier>(),
    platform::method<"isIconVisible:", &IconModel::isIconVisible>(),
    platform::method<"laidOutIcons", &IconModel::laidOutIcons>(),
    platform::method<"layout", &IconModel::layout>(),
    platform::method<"leafIconForIdentifier:", &IconModel::leafIconForIdentifier>(),
    platform::method<"leafIcons", &IconModel::leafIcons>(),
    platform::method<"reloadIcons", &IconModel::reloadIcons>(),
    platform::method<"visibleIconIdentifiers", &IconModel::visibleIconIdentifiers>(),
};

} // namespace phone
