#include "phone/device/decisions.h"

#include "platform/foundation/property_list.h"
#include "platform/foundation/property_list_file.h"
#include "platform/foundation/values.h"

#include <optional>

namespace phone {

using namespace platform;

namespace {

constexpr PropertyListFileKind fileKind { PropertyListRoot::Dictionary, PropertyListFormat::Binary, 0600 };

std::string_view fileOf(DecisionKind kind)
{
    return kind == DecisionKind::Access ? "/var/mobile/Library/TCC/TCC.plist" : "/var/db/locationd/clients.plist";
}

bool change(DecisionKind kind, std::string_view bundleIdentifier, const std::function<id(const id& former)>& next)
{
    return changePropertyListFile(std::string(fileOf(kind)), fileKind, [&](const id& content) -> std::optional<id> {
        return dictionaryBySetting(content, bundleIdentifier, next(pairsOf(content)[bundleIdentifier]));
    }).isDone();
}

} // namespace

Decisions decisionsAbout(DecisionKind kind, std::string_view bundleIdentifier)
{
    Decisions decisions;
    const id content = dictionaryWithContentsOfFile(fileOf(kind));
    for (const auto& [about, decision] : pairsOf(pairsOf(content)[bundleIdentifier]))
        if (const auto name = asString(about))
            if (const auto number = asInteger(decision))
                decisions[name->text()] = *number;
    return decisions;
}

bool decide(DecisionKind kind, std::string_view bundleIdentifier, std::string_view about, long decision)
{
    return change(kind, bundleIdentifier, [&](const id& former) {
        return dictionaryBySetting(asDictionary(former) ? former : nil, about, number(decision));
    });
}

bool forgetDecisions(DecisionKind kind, std::string_view bundleIdentifier, std::string_view about)
{
    return change(kind, bundleIdentifier, [&](const id& former) {
        if (about.empty() || !asDictionary(former))
            return id();
        return dictionaryBySetting(former, about, nil);
    });
}

} // namespace phone
