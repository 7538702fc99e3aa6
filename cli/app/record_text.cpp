#include "cli/app/record_text.h"

#include "cli/command/output.h"

#include <iomanip>
#include <nlohmann/json.hpp>
#include <sstream>

namespace cli {

using Json = nlohmann::json;

namespace {

struct Line {
    const char* field;
    const char* title;
};

constexpr Line lines[] {
    { "name", "Name" },
    { "customIconName", "Custom name" },
    { "bundleIdentifier", "Identifier" },
    { "version", "Version" },
    { "internalVersion", "Build" },
    { "minimumOSVersion", "Min OS" },
    { "platformVersion", "SDK" },
    { "isApplication", "Application" },
    { "appStoreVendable", "From the store" },
    { "hasAppStoreApp", "In the store" },
    { "isDeletable", "Deletable" },
    { "isEncrypted", "Encrypted" },
    { "diskUsageString", "Size" },
    { "diskUsage", "Bytes" },
    { "bundleURL", "Bundle" },
    { "dataContainerURL", "Data" },
    { "appGroups", "Groups" },
    { "urlSchemes", "URL schemes" },
    { "queriesSchemes", "Queries schemes" },
    { "activityTypes", "Activity types" },
    { "backgroundModes", "Background modes" },
    { "entitlements", "Entitlements" },
};

std::string textOf(const Json& value);

std::string joined(const Json& list)
{
    std::string text;
    for (const Json& item : list)
        text += (text.empty() ? "" : ", ") + textOf(item);
    return text.empty() ? "none" : text;
}

std::string textOf(const Json& value)
{
    if (value.is_null())
        return "-";
    if (value.is_boolean())
        return value.get<bool>() ? "yes" : "no";
    if (value.is_string())
        return onOneLine(value.get_ref<const std::string&>());
    if (value.is_array())
        return joined(value);
    if (value.is_object() && value.contains("identifier") && value.contains("url"))
        return textOf(value["identifier"]) + " (" + textOf(value["url"]) + ")";
    return onOneLine(value.dump());
}

} // namespace

std::string describeRecord(const Json& record)
{
    constexpr int titleWidth = 18;
    std::ostringstream text;
    for (const auto& [field, title] : lines) {
        const Json& value = record.at(field);
        if (value.is_object()) {
            text << title << '\n';
            for (const auto& [key, item] : value.items())
                text << "  " << onOneLine(key) << ": " << textOf(item) << '\n';
            continue;
        }
        text << std::left << std::setw(titleWidth) << title << textOf(value) << '\n';
    }
    return text.str();
}

} // namespace cli
