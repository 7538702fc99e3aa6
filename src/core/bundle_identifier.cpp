#include "core/bundle_identifier.h"

#include "platform/runtime/message.h"

#include <exception>

namespace appledger {

using namespace platform;

id ALSafeExtractBundleID(const id& object)
{
    try {
        if (const auto identifier = ask<"bundleID">(object))
            return *identifier;
        return askObject<"bundleIdentifier">(object);
    } catch (const std::exception&) {
        return nil; // raised by the system's object
    }
}

std::optional<StringValue> applicationOfIcon(const id& icon)
{
    if (const auto identifier = ask<"applicationBundleIdentifier">(icon))
        return asString(*identifier);
    return asString(ask<"applicationBundleID">(icon));
}

} // namespace appledger
