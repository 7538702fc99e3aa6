#include "phone/control/preferences.h"

#include "phone/control/answers.h"
#include "phone/control/request_rows.h"
#include "phone/control/value_json.h"
#include "platform/foundation/files.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/values.h"

#include <map>

namespace phone {

using namespace platform;

namespace {

constexpr std::string_view folder = "/var/mobile/Library/Preferences";
constexpr std::size_t largestKept = std::size_t { 4 } << 20; ///< bytes of one file

std::map<std::string, std::string>& kept()
{
    static auto* const files = new std::map<std::string, std::string>;
    return *files;
}

/// "preferences-at-start": what the file of "domain" held when this process started: {"ok", "content"}, an object.
Json preferencesAtStart(const Json& request)
{
    const auto file = kept().find(text(request, "domain") + ".plist");
    const Json content = file == kept().end() ? Json() : toJson(propertyListFromData(file->second));
    return { { "ok", true }, { "content", content.is_object() ? content : Json::object() } };
}

constexpr RequestRow rows[] { { "preferences-at-start", preferencesAtStart, RequestRow::Turn::AtOnce } };

} // namespace

extern const RequestRows preferenceRequests { rows };

void keepPreferencesOfStart()
{
    for (const std::string& name : directoryEntries(folder))
        if (name.ends_with(".plist"))
            if (auto content = readFile(pathByAppending(folder, name), largestKept))
                kept().insert_or_assign(name, std::move(*content));
}

} // namespace phone
