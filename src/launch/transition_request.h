#pragma once

#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <optional>

/// What several hooks read of the system's transition requests, by probing.

namespace appledger {

inline std::optional<platform::StringValue> bundleIdentifierOfEntity(const platform::id& sceneEntity)
{
    return platform::asString(platform::ask<"bundleIdentifier">(platform::askObject<"application">(sceneEntity)));
}

/// The application that the request brings to front.
inline std::optional<platform::StringValue> destinationOfRequest(const platform::id& request)
{
    return bundleIdentifierOfEntity(
        platform::askObject<"anyObject">(platform::askObject<"toApplicationSceneEntities">(request)));
}

} // namespace appledger
