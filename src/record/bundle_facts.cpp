#include "record/bundle_facts.h"

#include "platform/foundation/values.h"

namespace appledger {

using namespace platform;

namespace {

id arrayOrNil(const id& value)
{
    return asArray(value) ? value : nil;
}

/// Of the first kind of URL alone.
id schemesOf(const id& urlTypes)
{
    const ArrayValue types = itemsOf(arrayOrNil(urlTypes));
    return types.empty() ? nil : arrayOrNil(pairsOf(types[0])["CFBundleURLSchemes"]);
}

} // namespace

BundleFacts readBundleFacts(
    const id& information, const std::function<bool(const std::string& executableName)>& isEncrypted)
{
    const DictionaryValue pairs = pairsOf(information);
    BundleFacts facts {
        .minimumOSVersion = pairs["MinimumOSVersion"],
        .internalVersion = pairs["CFBundleVersion"],
        .platformVersion = pairs["DTPlatformVersion"],
        .urlSchemes = schemesOf(pairs["CFBundleURLTypes"]),
        .queriesSchemes = arrayOrNil(pairs["LSApplicationQueriesSchemes"]),
        .activityTypes = arrayOrNil(pairs["NSUserActivityTypes"]),
        .backgroundModes = arrayOrNil(pairs["UIBackgroundModes"]),
    };
    if (const auto name = asString(pairs["CFBundleExecutable"]); name && !name->empty())
        facts.isEncrypted = isEncrypted(name->text());
    return facts;
}

} // namespace appledger
