#include "phone/device/home_widgets.h"

#include "platform/foundation/files.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/values.h"

#include <cstring>

namespace phone {

using namespace platform;

namespace {

constexpr std::string_view arrangementFile = "/var/mobile/Library/SpringBoard/IconState.plist";
constexpr std::string_view widgetsKey = "widgets";

} // namespace

std::vector<std::string> homeWidgets()
{
    std::vector<std::string> identifiers;
    const id arrangement = dictionaryWithContentsOfFile(arrangementFile);
    const id widgets = pairsOf(arrangement)[widgetsKey];
    for (const id& widget : itemsOf(widgets))
        if (const auto identifier = asString(widget); identifier && !identifier->empty())
            identifiers.push_back(identifier->text());
    return identifiers;
}

std::string installSampleWidgets()
{
    if (fileExists(arrangementFile))
        return "";
    int error = createDirectories(pathByDeletingLastComponent(arrangementFile));
    if (error == 0)
        error = writePropertyList(dictionary({ { widgetsKey, array({ "B0A6D1F2-UP-NEXT" }) } }),
            std::string(arrangementFile), PropertyListFormat::Binary);
    return error == 0 ? "" : "can't write " + std::string(arrangementFile) + " on the phone: " + std::strerror(error);
}

} // namespace phone
